#!/usr/bin/env bash
# Whole-process comparison of loading a ~20 MB Intel HEX file: `kxsetup-cli info FILE`
# against srecord's `srec_info FILE -Intel`. Reports mean wall time (hyperfine, or a
# timing loop when hyperfine is missing), the speed ratio and each program's peak
# resident memory (/usr/bin/time -v).
# usage: bench/compare_srec_info.sh [--build DIR] [--runs N]
#   DIR defaults to build/bench (configured Release with the benchmarks enabled).
# Needs: srec_info (Debian package srecord), /usr/bin/time (package time); hyperfine is
# optional. scripts/deps.sh --bench installs them.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$root/build/bench"
runs=10
while [ $# -gt 0 ]; do
    case "$1" in
        --build) build="$2"; shift 2 ;;
        --runs) runs="$2"; shift 2 ;;
        *) echo "compare_srec_info.sh: unknown option $1" >&2; exit 1 ;;
    esac
done
for tool in srec_info /usr/bin/time; do
    command -v "$tool" >/dev/null || { echo "missing $tool (scripts/deps.sh --bench)" >&2; exit 1; }
done

cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DKX_BUILD_BENCH=ON >/dev/null
cmake --build "$build" --target kxsetup-cli kxhex-make >/dev/null
cli="$build/bin/kxsetup-cli"
make="$build/bin/kxhex-make"

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
# Plain Intel HEX (no metadata records, which srec_info does not know): 7.1 MiB of
# program data in 16-byte lines, extended-address records every 64 KiB.
printf 'line-length 16\nrandom 0 0x720000 1\n' >"$work/large.txt"
"$make" "$work/large.txt" -o "$work/large.hex"
file="$work/large.hex"
size=$(stat -c %s "$file")
echo "file: $size bytes"

# Both programs must accept the file, or the comparison means nothing.
"$cli" info "$file" >/dev/null
srec_info "$file" -Intel >/dev/null

if command -v hyperfine >/dev/null; then
    hyperfine --shell=none --warmup 2 --runs "$runs" --export-json "$work/times.json" \
        "$cli info $file" "srec_info $file -Intel" >"$work/hyperfine.txt"
    cat "$work/hyperfine.txt"
    mean() { python3 -c "import json,sys; r=json.load(open(sys.argv[1]))['results']; print(r[int(sys.argv[2])]['mean'])" "$work/times.json" "$1"; }
    ours=$(mean 0)
    theirs=$(mean 1)
else
    loop() {
        local start end
        start=$(date +%s.%N)
        for _ in $(seq "$runs"); do "$@" >/dev/null; done
        end=$(date +%s.%N)
        echo "($end - $start) / $runs" | bc -l
    }
    ours=$(loop "$cli" info "$file")
    theirs=$(loop srec_info "$file" -Intel)
fi

peak() { /usr/bin/time -v "$@" 2>&1 >/dev/null | awk -F': ' '/Maximum resident set size/ {print $2}'; }
ours_rss=$(peak "$cli" info "$file")
theirs_rss=$(peak srec_info "$file" -Intel)

python3 - "$size" "$ours" "$theirs" "$ours_rss" "$theirs_rss" <<'PY'
import sys
size, ours, theirs, ours_rss, theirs_rss = int(sys.argv[1]), *map(float, sys.argv[2:])
print(f"kxsetup-cli info: {ours * 1000:8.1f} ms   peak RSS {ours_rss / 1024:6.1f} MiB "
      f"({ours_rss * 1024 / size:.2f} x file size)")
print(f"srec_info:        {theirs * 1000:8.1f} ms   peak RSS {theirs_rss / 1024:6.1f} MiB")
print(f"speed ratio (srec_info / kxsetup-cli): {theirs / ours:.2f}")
ok = theirs / ours >= 2 and ours_rss * 1024 < 2 * size
print("targets (>= 2x faster, peak RSS < 2x file size):", "met" if ok else "NOT met")
sys.exit(0 if ok else 3)
PY
