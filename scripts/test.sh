#!/usr/bin/env bash
# Sets everything up and runs the whole test suite twice: a normal build, and a
# build under AddressSanitizer + UndefinedBehaviorSanitizer. Any compiler
# warning fails the build. Needs no display: Qt runs on its offscreen platform.
set -euo pipefail
cd "$(dirname "$0")/.."
export QT_QPA_PLATFORM=offscreen

bash scripts/setup.sh build-test -DCMAKE_BUILD_TYPE=RelWithDebInfo
ctest --test-dir build-test --output-on-failure -j"$(nproc)"

bash scripts/setup.sh build-asan -DCMAKE_BUILD_TYPE=Debug -DVARNOCK_SANITIZE=ON -DVARNOCK_BENCH=OFF
ASAN_OPTIONS=detect_leaks=0:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  ctest --test-dir build-asan --output-on-failure -j"$(nproc)"
