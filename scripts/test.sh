#!/usr/bin/env bash
# Sets everything up, builds, and runs the whole test suite. Widget tests use
# Qt's offscreen platform, so no display is needed.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh --with-test-server
ctest --test-dir build --output-on-failure --parallel "$(nproc)"
