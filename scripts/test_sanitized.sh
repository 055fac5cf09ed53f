#!/usr/bin/env bash
# Builds Tavrix and its tests once more in ./build-asan with AddressSanitizer
# (and LeakSanitizer) and UndefinedBehaviorSanitizer, and runs the whole test
# suite there. Any sanitizer finding stops the test that hit it, so the run
# fails. Widget tests use Qt's offscreen platform, so no display is needed.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh --no-build --with-test-server

sanitize="-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer"
cmake -S . -B build-asan -G Ninja \
  -DCMAKE_BUILD_TYPE=Debug \
  -DCMAKE_CXX_FLAGS="$sanitize" \
  -DCMAKE_EXE_LINKER_FLAGS="$sanitize" \
  -DCMAKE_SHARED_LINKER_FLAGS="$sanitize" \
  -DCMAKE_MODULE_LINKER_FLAGS="$sanitize" \
  -DTAVRIX_BUILD_BENCH=OFF
cmake --build build-asan --parallel "$(nproc)"

# Leak detection stays on. Qt and the system libraries are not built with the
# sanitizers; scripts/lsan.supp is where a leak of their own would be named.
export ASAN_OPTIONS="halt_on_error=1:abort_on_error=0:detect_leaks=1:strict_init_order=1:check_initialization_order=1:detect_stack_use_after_return=1"
export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1"
export LSAN_OPTIONS="suppressions=$PWD/scripts/lsan.supp:print_suppressions=0"

# The sanitizers' own symbolizer names some frames without their file and
# line ("in f() (binary+0x1234)"); add them for our own programs with addr2line.
add_lines() {
  local line binary offset place
  while IFS= read -r line; do
    if [[ "$line" =~ \ in\ .*\ \(("$PWD"/build-asan/[^+\)]+)\+(0x[0-9a-f]+)\)$ ]]; then
      binary="${BASH_REMATCH[1]}"
      offset="${BASH_REMATCH[2]}"
      place="$(addr2line -e "$binary" "$offset" 2>/dev/null || true)"
      [[ "$place" == /*:[0-9]* ]] && line="$line $place"
    fi
    printf '%s\n' "$line"
  done
}
# The store's tests on PostgreSQL share one throw-away server for the run.
eval "$(bash scripts/pg_test_cluster.sh start)"
trap 'bash scripts/pg_test_cluster.sh stop "$TAVRIX_TEST_PG_DIR"' EXIT
ctest --test-dir build-asan --output-on-failure --parallel "$(nproc)" 2>&1 | add_lines
