#!/usr/bin/env bash
# Makes the Debian package from a built Release folder and checks it:
#
#     scripts/package_check.sh BUILD_DIR
#
# cpack writes BUILD_DIR/package/varnock_<version>_<arch>.deb; then lintian
# looks at it, the desktop entry and AppStream metadata are validated, and the
# package is unpacked into a scratch folder where its programs run and its
# manual pages and bash completion are tried. Nothing is installed into the
# system. Exits non-zero if any check fails; the last line sums up.
set -uo pipefail
cd "$(dirname "$0")/.."
source=$PWD

if [ $# -ne 1 ] || [ ! -f "$1/CPackConfig.cmake" ]; then
    echo "usage: scripts/package_check.sh BUILD_DIR (a configured and built folder)" >&2
    exit 2
fi
build=$(cd "$1" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

passed=0
failed=0
# check NAME COMMAND...: runs the command; its output is shown when it fails.
check() {
    local name=$1 out
    shift
    if out=$("$@" 2>&1); then
        passed=$((passed + 1))
        echo "ok      $name"
    else
        failed=$((failed + 1))
        echo "FAILED  $name"
        [ -n "$out" ] && echo "$out" | sed 's/^/        /'
    fi
    return 0
}
finish() {
    if ((failed)); then
        echo "package check: $failed of $((passed + failed)) checks FAILED"
        exit 1
    fi
    echo "package check: all $passed checks passed ($(basename "${deb:-no package}"))"
    exit 0
}

# The programs run without a display, and away from the user's own settings.
export QT_QPA_PLATFORM=offscreen
export HOME=$scratch/home XDG_DATA_HOME=$scratch/home/.local/share
export XDG_CONFIG_HOME=$scratch/home/.config XDG_RUNTIME_DIR=$scratch/run
mkdir -p "$HOME" "$XDG_RUNTIME_DIR" && chmod 700 "$XDG_RUNTIME_DIR"
unset DISPLAY WAYLAND_DISPLAY

# --- The package --------------------------------------------------------------

rm -rf "$build/package"
make_package() {
    cpack -G DEB --config "$build/CPackConfig.cmake" -B "$build/package" >"$scratch/cpack.log" 2>&1 ||
        { cat "$scratch/cpack.log"; return 1; }
}
check "cpack -G DEB" make_package

version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
arch=$(dpkg --print-architecture)
deb=$build/package/varnock_${version}_${arch}.deb
if [ ! -f "$deb" ]; then
    echo "FAILED  no $(basename "$deb"); cpack made: $(ls "$build/package" 2>/dev/null | tr '\n' ' ')"
    failed=$((failed + 1))
    finish
fi

control_fields() {
    local field
    for field in Package:varnock Version:"$version" Architecture:"$arch" Section:sound \
        Priority:optional Maintainer:"Helmford <varnock@helmford.example>"; do
        [ "$(dpkg-deb -f "$deb" "${field%%:*}")" = "${field#*:}" ] ||
            { echo "${field%%:*} is \"$(dpkg-deb -f "$deb" "${field%%:*}")\", not \"${field#*:}\""; return 1; }
    done
    # Computed from the binaries by dpkg-shlibdeps.
    dpkg-deb -f "$deb" Depends | grep -q 'libqt6widgets6' ||
        { echo "Depends lacks the Qt libraries: $(dpkg-deb -f "$deb" Depends)"; return 1; }
    # The labels' condensed face.
    dpkg-deb -f "$deb" Depends | grep -q 'fonts-dejavu-extra' ||
        { echo "Depends lacks fonts-dejavu-extra: $(dpkg-deb -f "$deb" Depends)"; return 1; }
}
check "control fields, dependencies from the binaries" control_fields

same_versions() {
    local changelog metainfo
    changelog=$(dpkg-parsechangelog -l packaging/changelog -S Version)
    metainfo=$(grep -o -m1 '<release version="[^"]*"' resources/*.metainfo.xml | cut -d'"' -f2)
    [ "$changelog" = "$version" ] && [ "$metainfo" = "$version" ] ||
        { echo "project $version, packaging/changelog $changelog, metainfo release $metainfo"; return 1; }
}
check "changelog and metainfo name version $version" same_versions

run_lintian() {
    # Errors fail; warnings and notes are shown. Lintian's note that it runs
    # as root is no finding.
    lintian --fail-on error --display-info "$deb" 2>&1 | grep -v 'running with root privileges'
    return "${PIPESTATUS[0]}"
}
echo "lintian:"
lintian_out=$(run_lintian)
lintian_status=$?
echo "${lintian_out:-(nothing to report)}" | sed 's/^/        /'
check "lintian reports no error" test "$lintian_status" = 0

# --- What it holds ------------------------------------------------------------

root=$scratch/root
check "dpkg-deb -x" dpkg-deb -x "$deb" "$root"
usr=$root/usr
share=$usr/share
app_id=io.github.helmford.Varnock

files_in_place() {
    local missing=0 f size
    for f in bin/varnock bin/varnock-chart; do
        [ -x "$usr/$f" ] || { echo "missing: usr/$f"; missing=1; }
    done
    for f in varnock/VarnockFrets128b.bmp applications/varnock.desktop \
        metainfo/$app_id.metainfo.xml icons/hicolor/scalable/apps/varnock.svg \
        man/man1/varnock.1.gz man/man1/varnock-chart.1.gz \
        bash-completion/completions/varnock-chart doc/varnock/copyright doc/varnock/changelog.gz; do
        [ -s "$share/$f" ] || { echo "missing: usr/share/$f"; missing=1; }
    done
    for size in 16 32 48 64 128 256; do
        f=$share/icons/hicolor/${size}x${size}/apps/varnock.png
        file -b "$f" 2>/dev/null | grep -q "^PNG image data, $size x $size," ||
            { echo "not a $size x $size PNG: ${f#"$root"/}"; missing=1; }
    done
    # Binaries stripped; man pages and changelog gzipped whole.
    for f in "$usr"/bin/*; do
        file -b "$f" | grep -q ', stripped' || { echo "not stripped: ${f#"$root"/}"; missing=1; }
    done
    for f in "$share"/man/man1/*.gz "$share"/doc/varnock/changelog.gz; do
        gzip -t "$f" || missing=1
    done
    return "$missing"
}
check "files in place (programs, data, desktop entry, icons, metainfo, man pages, completion, docs)" \
    files_in_place

check "desktop-file-validate" desktop-file-validate "$share/applications/varnock.desktop"
check "appstreamcli validate --no-net" appstreamcli validate --no-net \
    "$share/metainfo/$app_id.metainfo.xml"

entries_agree() {
    grep -q '<launchable type="desktop-id">varnock.desktop</launchable>' \
        "$share/metainfo/$app_id.metainfo.xml" &&
        grep -qx 'Icon=varnock' "$share/applications/varnock.desktop" &&
        grep -qx 'Exec=varnock' "$share/applications/varnock.desktop"
}
check "metainfo, desktop entry, icon and program name each other" entries_agree

# --- Running it from the unpacked folder --------------------------------------

chart_version() {
    local out
    out=$("$usr/bin/varnock-chart" --version) || return 1
    [ "$out" = "varnock-chart $version" ] || { echo "printed: $out"; return 1; }
}
check "varnock-chart --version" chart_version

chart_tsv() {
    local args=(--frets Chromatic --tuning D,A,D,G --root D --chord 7 --tsv) out expected
    out=$("$usr/bin/varnock-chart" "${args[@]}") || return 1
    # The heading line, the label row, then a line for each of the 4 strings.
    [ "$(head -n 1 <<<"$out")" = "$(printf '%s\t' {0..21})22" ] && [ "$(wc -l <<<"$out")" = 6 ] ||
        { echo "$out"; return 1; }
    # The same as the build's own, unstripped binary prints.
    expected=$("$build/bin/varnock-chart" "${args[@]}") &&
        [ "$out" = "$expected" ] || { diff <(echo "$expected") <(echo "$out"); return 1; }
}
check "varnock-chart --tsv" chart_tsv

program_runs() {
    # Started and sent SIGTERM, the program closes its window, saves and
    # ends with status 0.
    timeout --preserve-status -s TERM 5 "$usr/bin/varnock" || return 1
    [ -s "$XDG_DATA_HOME/HelmfordVarnock/Varnock.ini" ] || { echo "no settings saved"; return 1; }
}
check "varnock starts and quits on SIGTERM" program_runs

# --- Manual pages and completion ----------------------------------------------

render_page() {
    local page=$1 errors
    errors=$(MANWIDTH=80 man --warnings -l "$page" 2>&1 >/dev/null) && [ -z "$errors" ] ||
        { echo "$errors"; return 1; }
    MANWIDTH=80 man -l "$page" | grep -q "^SYNOPSIS"
}
for page in varnock varnock-chart; do
    check "man -l $page.1.gz" render_page "$share/man/man1/$page.1.gz"
done

complete_words() {
    # complete_words EXPECTED WORD...: the completions of the last word. The
    # completion asks the packaged command for its words.
    local expected=$1 got
    shift
    got=$(PATH=$usr/bin:$PATH bash --norc --noprofile -c '
        source "$1"; shift
        complete -p varnock-chart >/dev/null || exit 1
        COMP_WORDS=(varnock-chart "$@"); COMP_CWORD=$#
        _varnock_chart varnock-chart "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
        echo "${COMPREPLY[*]}"' _ "$share/bash-completion/completions/varnock-chart" "$@") &&
        [ "$got" = "$expected" ] || { echo "\"$*\" completed to \"$got\", not \"$expected\""; return 1; }
}
completion() {
    complete_words "--left-handed" --le &&
        complete_words "--identify --identify-frets" --ident &&
        complete_words 'Diatonic\ with\ 6+ Diatonic\ with\ 1+\ and\ 6+' --frets "Diatonic w" &&
        complete_words "Chromatic" --frets = Ch &&
        complete_words "Gb G G#" --root G &&
        complete_words "6 6/9" --chord 6 &&
        complete_words "D,A,Db D,A,D D,A,D#" --tuning D,A,D &&
        complete_words "sharps" --spelling s &&
        complete_words "colour-blind" --palette c
}
check "bash completion of options and values" completion

finish
