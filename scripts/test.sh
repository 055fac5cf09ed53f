#!/usr/bin/env bash
# Sets everything up, builds, and runs the whole test suite. Widget tests use
# Qt's offscreen platform, so no display is needed. The store's tests on
# PostgreSQL share one throw-away server, stopped when the run ends.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh --with-test-server
eval "$(bash scripts/pg_test_cluster.sh start)"
trap 'bash scripts/pg_test_cluster.sh stop "$TAVRIX_TEST_PG_DIR"' EXIT
ctest --test-dir build --output-on-failure --parallel "$(nproc)"
