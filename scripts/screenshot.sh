#!/usr/bin/env bash
# Starts the built Vistrel under a virtual X server with a small window
# manager-less screen, waits, and saves a screenshot of the whole screen.
# Usage: scripts/screenshot.sh OUTPUT.png [SECONDS]
# Needs imagemagick (import); openbox is used when installed.
set -euo pipefail
cd "$(dirname "$0")/.."
out=${1:-/tmp/vistrel.png}
wait=${2:-6}
display=:97
Xvfb $display -screen 0 1280x960x24 >/dev/null 2>&1 &
xvfb=$!
vistrel=""
trap 'kill $vistrel $wm $xvfb 2>/dev/null || true' EXIT
sleep 1
# A window manager, when one is installed, gives the windows their frames.
wm=""
if command -v openbox >/dev/null; then DISPLAY=$display openbox >/dev/null 2>&1 & wm=$!; sleep 1; fi
DISPLAY=$display QT_QPA_PLATFORM=xcb ${VISTREL_BUILD:-build}/program/Vistrel &
vistrel=$!
sleep "$wait"
DISPLAY=$display import -window root "$out"
echo "saved $out"
