#!/usr/bin/env bash
# Builds the Debian package of a built tree, unpacks it into a scratch root and checks it: the
# files in their places, the control fields, and the installed dovrex-headless starting on a fresh
# per-user folder, which it must seed from the data it finds under share/dovrex.
#
#   package_test.sh <cpack> <build folder> <version> <history .tsv>
#
# Nothing is written outside the build folder and a temporary folder.
set -u

cpack=$1
build=$2
version=$3
history=$4

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0
fail() {
    echo "FAIL: $*"
    failures=$((failures + 1))
}

(cd "$build" && "$cpack" -G DEB -B "$work/out") >"$work/cpack.log" 2>&1 || {
    cat "$work/cpack.log"
    echo "FAIL: cpack"
    exit 1
}
debs=("$work"/out/dovrex_*.deb)
[[ ${#debs[@]} == 1 && -f ${debs[0]} ]] || {
    ls "$work/out"
    echo "FAIL: no single dovrex_*.deb"
    exit 1
}
deb=${debs[0]}

# The control fields: name, version from the project, and the libraries the programs link.
field() { dpkg-deb -f "$deb" "$1"; }
[[ $(field Package) == dovrex ]] || fail "Package is '$(field Package)'"
[[ $(field Version) == "$version" ]] || fail "Version is '$(field Version)', the project's is $version"
for f in Maintainer Section Description Architecture; do
    [[ -n $(field "$f") ]] || fail "no $f field"
done
depends=$(field Depends)
for lib in libqt6core6 libqt6gui6 libqt6widgets6 libqt6charts6 libqt6network6 libsqlite3-0 libnova liberfa; do
    [[ $depends == *"$lib"* ]] || fail "Depends lacks $lib: $depends"
done

root=$work/root
dpkg -x "$deb" "$root" || {
    echo "FAIL: dpkg -x"
    exit 1
}
for f in usr/bin/dovrex usr/bin/dovrex-headless; do
    [[ -x $root/$f ]] || fail "$f is missing or not executable"
    # A run path would point into the build tree, where an installed program has no business.
    readelf -d "$root/$f" 2>/dev/null | grep -qE 'RPATH|RUNPATH' && fail "$f carries a run path"
done
for f in usr/share/dovrex/dovrex.dat usr/share/dovrex/TJmode.tjmod usr/share/dovrex/dovrexhelp/dovrexHelp.html \
    usr/share/applications/dovrex.desktop usr/share/icons/hicolor/256x256/apps/dovrex.png; do
    [[ -s $root/$f ]] || fail "$f is missing"
done
stray=$(find "$root/usr/share/dovrex" -name '*.stamp' -o -name '*.tmp')
[[ -z $stray ]] || fail "build leftovers in share/dovrex: $stray"

# The installed runner on its own per-user folder, in a scratch home: it seeds the folder from
# share/dovrex and opens the shipped history, whose latest issue is the .tsv's last line.
latest=$(tail -n 1 "$history" | cut -f 1)
home=$work/home
mkdir -p "$home" "$work/tmp"
printf '%s\n' 'open-folder' 'sql select top 1 期号 from 历史记录 order by 期号 desc' 'exit' >"$work/run.txt"
env -u XDG_DATA_HOME -u XDG_CONFIG_HOME HOME="$home" TMPDIR="$work/tmp" \
    "$root/usr/bin/dovrex-headless" "$work/run.txt" >"$work/run.out" 2>&1 || fail "the installed runner failed"
grep -qx "$latest" "$work/run.out" || fail "the installed runner did not print the latest issue $latest"
program=$home/.local/share/dovrex
for f in dovrex.dat TJmode.tjmod dovrexhelp/dovrexHelp.html; do
    [[ -s $program/$f ]] || fail "the per-user folder was not seeded with $f"
done

if ((failures)); then
    echo "--- the installed runner:"
    cat "$work/run.out"
    exit 1
fi
echo "$(basename "$deb"): $(du -k "$deb" | cut -f 1) KiB; installed runner seeded its folder and read issue $latest"
