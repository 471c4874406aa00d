#!/bin/sh
# Pictures of the panel, of every settings tab and of every rule sheet at scale 1, for a person
# to look at:
#   tools/screenshots/screenshots.sh [build folder] [output folder]
set -eu
cd "$(dirname "$0")/../.."
build="${1:-build}"
out="${2:-screenshots}"
ninja -C "$build" obrinta_ui_screenshots obrinta_rules_screenshots >/dev/null
mkdir -p "$out"
env -u WAYLAND_DISPLAY QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR=1 QT_ENABLE_HIGHDPI_SCALING=0 \
    timeout 120 xvfb-run -a -s "-screen 0 1280x800x24 -dpi 96" \
    "$build/obrinta_ui_screenshots" "$out"
env -u WAYLAND_DISPLAY QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR=1 QT_ENABLE_HIGHDPI_SCALING=0 \
    timeout 120 xvfb-run -a -s "-screen 0 1280x800x24 -dpi 96" \
    "$build/obrinta_rules_screenshots" "$out"
