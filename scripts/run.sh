#!/usr/bin/env bash
# Sets everything up, builds, and starts Tavrix. Without a display it starts a
# virtual one (Xvfb) so that the program still runs.
set -euo pipefail
cd "$(dirname "$0")/.."
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  bash scripts/setup.sh --with-display
  echo "No display found: running Tavrix on a virtual display (xvfb-run)."
  exec xvfb-run -a -s "-screen 0 1280x1024x24" ./build/tavrix
fi
bash scripts/setup.sh
exec ./build/tavrix
