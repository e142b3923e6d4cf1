#!/usr/bin/env bash
# Installs the Debian packages Varnock needs (only those missing), then
# configures and builds.
#   scripts/setup.sh [--check-tools] BUILD_DIR [cmake options...]
# --check-tools also installs what the package checks use (the test script
# passes it; running the program does not need them).
set -euo pipefail
cd "$(dirname "$0")/.."

# fonts-dejavu-extra: the condensed face the window's labels are set in.
# libcairo2-dev: the chord book's PDF, with its outline and linked contents.
packages=(cmake g++ make qt6-base-dev qt6-svg-dev libgtest-dev libgmock-dev fonts-dejavu-core
  fonts-dejavu-extra libcairo2-dev)
# cpack -G DEB (dpkg-shlibdeps), lintian, the desktop entry and AppStream
# validators, the manual page renderer, file for the icon sizes; pdftotext
# for the words and their sizes on the chord book's pages; qpdf to hold every
# PDF to a strict reader, librsvg2-bin (rsvg-convert) to render the SVGs.
check_packages=(dpkg-dev lintian desktop-file-utils appstream man-db groff-base file poppler-utils
  qpdf librsvg2-bin)
if [ "${1-}" = --check-tools ]; then
  packages+=("${check_packages[@]}")
  shift
fi
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
