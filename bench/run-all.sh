#!/bin/sh
# Runs every benchmark of bench/ and prints one summary table of their RESULT lines.
set -u
BUILD="${1:-build}"
cd "$(dirname "$0")/.."
results=$(mktemp)
for bench in "$BUILD"/bench_*; do
    [ -x "$bench" ] || continue
    echo "== $(basename "$bench")" >&2
    "$bench" 2>&1 >/dev/null | tee -a "$results" | grep -v '^RESULT' >&2
done
for script in bench/*.sh; do
    case "$script" in */run-all.sh) continue ;; esac
    echo "== $(basename "$script")" >&2
    "$script" "$BUILD" 2>&1 | tee -a "$results" | grep -v '^RESULT' >&2
done
printf '\n%-50s %14s %-6s %s\n' "benchmark" "value" "unit" "target"
grep '^RESULT' "$results" | while read -r _ name value unit target; do
    printf '%-50s %14s %-6s %s\n' "$name" "$value" "$unit" "$target"
done
rm -f "$results"
