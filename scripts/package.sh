#!/usr/bin/env bash
# Builds the Debian package and checks it: the validators (desktop-file-validate,
# appstreamcli, lintian), the files it must hold, the device rule's syntax (udevadm verify
# where udev has it, else the rule must be the file tst_connection's parser test reads) and
# the maintainer scripts that apply it, and a start of the application from the
# unpacked package as an unprivileged user, whose data folder must be made and writable.
# With --install (CI) it also installs the package, starts the application the way the
# desktop menu does (the desktop file's Exec line) and removes the package again.
# usage: scripts/package.sh [--qt 5|6] [--install]
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
qt=6
install=0
while [ $# -gt 0 ]; do
    case "$1" in
        --qt) qt="$2"; shift 2 ;;
        --install) install=1; shift ;;
        *) echo "package.sh: unknown option $1" >&2; exit 1 ;;
    esac
done
"$root/scripts/deps.sh" --qt "$qt" --package
"$root/scripts/build.sh" --qt "$qt"
build="$root/build/qt$qt"
rm -rf "$build/package"
cmake --build "$build" --target package >/dev/null
deb="$(ls "$build"/package/kxsetup_*.deb)"
echo "package: $deb"

fail() { echo "package.sh: $*" >&2; exit 1; }

desktop-file-validate "$root/packaging/kxsetup.desktop"
appstreamcli validate --no-net "$root/packaging/example.tessen_technologies.kxsetup.metainfo.xml" >/dev/null
lintian --fail-on error "$deb" 2>/dev/null ||
    fail "lintian found errors"

contents="$(dpkg-deb -c "$deb" | awk '{print $6}')"
for path in usr/bin/kxsetup usr/bin/kxsetup-cli usr/bin/kx-sim \
            usr/lib/kxsetup/kxsetup usr/lib/kxsetup/serialup.exe \
            usr/share/applications/kxsetup.desktop \
            usr/share/metainfo/example.tessen_technologies.kxsetup.metainfo.xml \
            usr/share/icons/hicolor/scalable/apps/kxsetup.svg \
            usr/share/icons/hicolor/48x48/apps/kxsetup.png \
            usr/share/mime/packages/kxsetup.xml \
            usr/share/man/man1/kxsetup-cli.1.gz usr/share/man/man1/kx-sim.1.gz \
            usr/share/kxsetup/data/device.txt usr/share/kxsetup/data/firmware/kx3/3.10.kxhex \
            usr/share/doc/kxsetup/copyright usr/lib/udev/rules.d/60-kxsetup.rules; do
    grep -qx "./$path" <<<"$contents" || fail "the package lacks /$path"
done

# Runs a command as an unprivileged user with a home of its own; prints the home.
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
chmod 755 "$work"
as_user() {
    local home="$1"; shift
    mkdir -p "$home"
    if [ "$(id -u)" -eq 0 ]; then
        chown nobody "$home"
        env -i HOME="$home" PATH=/usr/bin:/bin QT_QPA_PLATFORM=offscreen KX_QUIT_AFTER_FIRST_PAINT=1 \
            setpriv --reuid=nobody --regid=nogroup --clear-groups "$@"
    else
        env -i HOME="$home" PATH=/usr/bin:/bin QT_QPA_PLATFORM=offscreen KX_QUIT_AFTER_FIRST_PAINT=1 "$@"
    fi
}
check_home() {
    local folder="$1/.local/share/kxsetup"
    for f in data/firmware/kx3/3.10.kxhex data/kxs/KX3-3.10.kxs data/temp.hex; do
        [ -f "$folder/$f" ] || fail "after the start, $folder/$f is missing"
    done
    [ -x "$folder/data/serialup.exe" ] || fail "the helper is not linked into $folder/data"
    [ -d "$folder/setups/backups" ] || fail "$folder/setups/backups was not made"
}

dpkg-deb -x "$deb" "$work/root"
rules="$work/root/usr/lib/udev/rules.d/60-kxsetup.rules"
if command -v udevadm >/dev/null 2>&1 && udevadm verify --help >/dev/null 2>&1; then
    udevadm verify "$rules" >/dev/null || fail "udevadm verify refuses the device rule"
    echo "device rule: udevadm verify accepts it"
else
    cmp -s "$rules" "$root/packaging/udev/60-kxsetup.rules" ||
        fail "the packaged device rule is not packaging/udev/60-kxsetup.rules"
    echo "device rule: no udevadm verify here; it is the file tst_connection parses"
fi
dpkg-deb -e "$deb" "$work/control"
for script in postinst postrm; do
    [ -x "$work/control/$script" ] || fail "the package has no executable $script"
    grep -q 'udevadm trigger --subsystem-match=tty' "$work/control/$script" ||
        fail "$script does not apply the device rule"
done
out="$(as_user "$work/home" "$work/root/usr/bin/kxsetup" 2>"$work/app.log")" ||
    { cat "$work/app.log" >&2; fail "the unpacked application did not start"; }
grep -q '^painted ' <<<"$out" || fail "the unpacked application did not paint its window"
check_home "$work/home"
echo "unpacked package: the application starts and makes its data folder"

if [ $install = 1 ]; then
    export DEBIAN_FRONTEND=noninteractive
    sudo_cmd=()
    [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo -n)
    "${sudo_cmd[@]}" apt-get install -y -q "$deb" </dev/null >/dev/null
    exec_line="$(sed -n 's/^Exec=//p' /usr/share/applications/kxsetup.desktop | sed 's/ %[fFuU]//')"
    read -r -a command <<<"$exec_line"
    out="$(cd / && as_user "$work/installed-home" "${command[@]}" 2>"$work/app.log")" ||
        { cat "$work/app.log" >&2; fail "the installed application did not start from its menu entry"; }
    grep -q '^painted ' <<<"$out" || fail "the installed application did not paint its window"
    check_home "$work/installed-home"
    [ -f /usr/share/mime/application/x-kxsetup-hex.xml ] ||
        fail "the setup file type is not in the MIME database"
    [ -f /usr/lib/udev/rules.d/60-kxsetup.rules ] || fail "the device rule is not installed"
    "${sudo_cmd[@]}" apt-get purge -y -q kxsetup </dev/null >/dev/null
    [ ! -e /usr/lib/udev/rules.d/60-kxsetup.rules ] || fail "the device rule stayed after removal"
    echo "installed package: starts from its menu entry as an unprivileged user; removed again"
fi
