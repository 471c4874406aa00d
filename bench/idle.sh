#!/bin/sh
# Idle cost side by side: Obrinta with 50 rules and udiskie, each in the tray of one Xvfb display,
# measured over 60 s (IDLE_SECONDS overrides).
set -eu
BUILD="${1:-build}"
cd "$(dirname "$0")/.."
exec xvfb-run -a -s "-screen 0 1280x800x24" dbus-run-session -- /usr/bin/python3 bench/idle_measure.py "$BUILD"
