#!/usr/bin/env bash
# Installs what is missing, builds and runs every test.
# usage: scripts/test.sh [--qt 5|6] [--no-fuzz] [--no-bench] [--no-package]
#                        [--install-package]
#   --qt            Qt major version to build and test against (default 6)
#   --no-fuzz       skip the fuzz targets' fixed run (when clang is present, each replays
#                   its seeds and regression inputs, then a fixed number of inputs from a
#                   fixed seed: scripts/fuzz.sh without --seconds)
#   --no-package    skip building and checking the Debian package
#   --install-package  also install the package, start it as the desktop menu would and
#                   remove it again (CI; changes the system's packages)
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
qt=6
fuzz=1
bench=1
package=1
install_package=()
while [ $# -gt 0 ]; do
    case "$1" in
        --qt) qt="$2"; shift 2 ;;
        --no-fuzz) fuzz=0; shift ;;
        --no-bench) bench=0; shift ;;
        --no-package) package=0; shift ;;
        --install-package) install_package=(--install); shift ;;
        *) echo "test.sh: unknown option $1" >&2; exit 1 ;;
    esac
done

deps=(--qt "$qt")
[ $bench = 1 ] && deps+=(--bench)
[ $fuzz = 1 ] && deps+=(--fuzz)
"$root/scripts/deps.sh" "${deps[@]}"

cmake_args=()
[ $bench = 1 ] && cmake_args+=(-DKX_BUILD_BENCH=ON)
"$root/scripts/build.sh" --qt "$qt" -- "${cmake_args[@]}"
(cd "$root/build/qt$qt" && ctest --output-on-failure -j "$(nproc)")

if [ $package = 1 ]; then
    "$root/scripts/package.sh" --qt "$qt" "${install_package[@]}"
fi

if [ $fuzz = 1 ] && command -v clang++ >/dev/null; then
    "$root/scripts/fuzz.sh"
fi
