#!/bin/bash
# Installs the build into a scratch prefix and checks that everything a
# desktop needs arrived where it belongs.
#   install_check.sh <cmake> <build-dir> <scratch-prefix>
set -u

cmake=$1
build=$2
prefix=$3

rm -rf "$prefix"
if ! "$cmake" --install "$build" --prefix "$prefix" >"$prefix.log" 2>&1; then
    cat "$prefix.log"
    echo "install failed"
    exit 1
fi

failed=0
check() {
    if [ ! "$1" "$prefix/$2" ]; then
        echo "missing or wrong: $2"
        failed=1
    fi
}

check -x bin/varnock
check -x bin/varnock-chart
check -s share/varnock/VarnockFrets128b.bmp
check -s share/applications/varnock.desktop
check -s share/metainfo/io.github.helmford.Varnock.metainfo.xml
check -s share/icons/hicolor/scalable/apps/varnock.svg
check -s share/man/man1/varnock.1.gz
check -s share/man/man1/varnock-chart.1.gz
check -s share/bash-completion/completions/varnock-chart
check -s share/doc/varnock/copyright

# One PNG icon per size, each as large as its folder says.
for size in 16 32 48 64 128 256; do
    png=share/icons/hicolor/${size}x${size}/apps/varnock.png
    check -s "$png"
    if [ -s "$prefix/$png" ]; then
        # The signature, then width and height in the IHDR chunk.
        header=$(od -An -tx1 -N24 "$prefix/$png" | tr -d ' \n')
        want=89504e470d0a1a0a0000000d49484452$(printf '%08x%08x' "$size" "$size")
        if [ "$header" != "$want" ]; then
            echo "not a ${size}x${size} PNG: $png"
            failed=1
        fi
    fi
done

desktop=$prefix/share/applications/varnock.desktop
if [ -f "$desktop" ]; then
    for line in '[Desktop Entry]' 'Type=Application' 'Name=Varnock' 'Exec=varnock' \
        'Icon=varnock' 'Terminal=false'; do
        if ! grep -qxF "$line" "$desktop"; then
            echo "varnock.desktop lacks: $line"
            failed=1
        fi
    done
fi

bmp=$prefix/share/varnock/VarnockFrets128b.bmp
if [ -f "$bmp" ] && [ "$(head -c 2 "$bmp")" != "BM" ]; then
    echo "VarnockFrets128b.bmp is not a BMP"
    failed=1
fi

# The companion command runs from where it was installed, with no display.
if [ -x "$prefix/bin/varnock-chart" ]; then
    notes=$(env -u DISPLAY -u WAYLAND_DISPLAY HOME="$prefix/home" \
        "$prefix/bin/varnock-chart" --root D 2>&1 | grep '^Notes:')
    if [ "$notes" != "Notes: D F# A" ]; then
        echo "installed varnock-chart printed: $notes"
        failed=1
    fi
fi

if [ "$failed" = 0 ]; then
    rm -rf "$prefix" "$prefix.log"
    echo "install layout ok"
fi
exit "$failed"
