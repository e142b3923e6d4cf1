#!/usr/bin/env bash
# Sets everything up and runs the whole test suite: a normal build and its
# tests; a Release build made the way Debian's packagers build, packed into
# a .deb that is then checked; and a build under AddressSanitizer +
# UndefinedBehaviorSanitizer with the tests again. Any compiler warning fails
# the build here. Needs no display: Qt runs on its offscreen platform.
set -euo pipefail
cd "$(dirname "$0")/.."
export QT_QPA_PLATFORM=offscreen

bash scripts/setup.sh --check-tools build-test --preset ci
ctest --test-dir build-test --output-on-failure -j"$(nproc)"

# Release with the packagers' compiler and linker flags (hardening included),
# without tests or benchmarks, then the package built from it and checked.
export DEB_BUILD_MAINT_OPTIONS=hardening=+all
bash scripts/setup.sh build-package --preset release -DVARNOCK_WERROR=ON \
  -DVARNOCK_TESTS=OFF -DVARNOCK_BENCH=OFF \
  -DCMAKE_CXX_FLAGS="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS)" \
  -DCMAKE_EXE_LINKER_FLAGS="$(dpkg-buildflags --get LDFLAGS)"
bash scripts/package_check.sh build-package

bash scripts/setup.sh build-asan --preset asan
ASAN_OPTIONS=detect_leaks=0:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  ctest --test-dir build-asan --output-on-failure -j"$(nproc)"

# The tests' share of all the code, in non-blank lines (asked: a quarter to a
# third): tests/ over tests/ plus the product folders.
lines() { find "$@" -type f \( -name '*.cpp' -o -name '*.h' -o -name '*.sh' -o -name '*.py' \) \
  -exec cat {} + | grep -cv '^[[:space:]]*$'; }
tests=$(lines tests)
code=$(lines platform music model settings chart window shell export cli)
awk -v t="$tests" -v c="$code" \
  'BEGIN { printf "Tests: %d of %d non-blank lines of code, a share of %.2f\n", t, t + c, t / (t + c) }'
