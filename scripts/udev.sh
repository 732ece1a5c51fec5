#!/usr/bin/env bash
# Installs the device rule for a build from source (the Debian package brings its own):
# the person logged in at this computer gets access to the USB serial adapters of the
# instrument's cables, and ModemManager leaves them alone. Then udev applies it to the
# ports present. --remove takes it away again.
# usage: sudo scripts/udev.sh [--remove]
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
rule=60-kxsetup.rules
folder=/etc/udev/rules.d
remove=0
case "${1:-}" in
    "") ;;
    --remove) remove=1 ;;
    *) echo "usage: sudo scripts/udev.sh [--remove]" >&2; exit 1 ;;
esac
if [ "$(id -u)" -ne 0 ]; then
    echo "udev.sh: run it as root: sudo scripts/udev.sh" >&2
    exit 1
fi

if [ $remove = 1 ]; then
    rm -f "$folder/$rule"
    echo "removed $folder/$rule"
else
    install -D -m 644 "$root/packaging/udev/$rule" "$folder/$rule"
    echo "installed $folder/$rule"
fi
if [ -d /run/udev ] && command -v udevadm >/dev/null 2>&1; then
    udevadm control --reload-rules
    udevadm trigger --subsystem-match=tty --action=change
    echo "udev has applied the change to the serial ports present"
    [ $remove = 1 ] || echo "if the port still refuses you, unplug the cable and plug it in again"
else
    echo "udev does not run here; it reads its rules when it starts"
fi
