#!/usr/bin/env bash
# Installs the Debian packages the project needs that are not there yet.
# usage: scripts/deps.sh [--qt 5|6] [--gui] [--bench] [--fuzz] [--package]
set -euo pipefail

qt=6
extra=()
while [ $# -gt 0 ]; do
    case "$1" in
        --qt) qt="$2"; shift 2 ;;
        --bench) extra+=(libbenchmark-dev srecord hyperfine); shift ;;
        --fuzz) extra+=(clang libclang-rt-dev); shift ;;
        --package) extra+=(dpkg-dev lintian desktop-file-utils appstream librsvg2-bin); shift ;;
        *) echo "deps.sh: unknown option $1" >&2; exit 1 ;;
    esac
done

pkgs=(build-essential cmake ninja-build pkg-config libgl-dev)
if [ "$qt" = 5 ]; then
    pkgs+=(qtbase5-dev qtbase5-dev-tools libqt5serialport5-dev libquazip1-qt5-dev)
else
    pkgs+=(qt6-base-dev qt6-base-dev-tools qt6-serialport-dev libquazip1-qt6-dev)
fi
pkgs+=("${extra[@]}")

missing=()
for p in "${pkgs[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo_cmd=()
if [ "$(id -u)" -ne 0 ]; then
    sudo_cmd=(sudo -n)
fi
echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -q </dev/null
"${sudo_cmd[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}" </dev/null
