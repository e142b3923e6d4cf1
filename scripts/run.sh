#!/usr/bin/env bash
# Sets everything up and starts Varnock on the user's display.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh build -DVARNOCK_TESTS=OFF -DVARNOCK_BENCH=OFF
exec ./build/bin/varnock "$@"
