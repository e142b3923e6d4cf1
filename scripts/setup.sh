#!/usr/bin/env bash
# Installs the Debian packages Varnock needs (only those missing), then
# configures and builds. Usage: scripts/setup.sh BUILD_DIR [cmake options...]
set -euo pipefail
cd "$(dirname "$0")/.."

packages=(cmake g++ make qt6-base-dev qt6-svg-dev libgtest-dev libgmock-dev fonts-dejavu-core)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "Installing: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

build_dir=$1
shift
cmake -S . -B "$build_dir" "$@" >/dev/null
cmake --build "$build_dir" -j"$(nproc)"
