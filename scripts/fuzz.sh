#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (ASan + UBSan) and runs each for a while,
# two at a time, starting from the seed corpus in fuzz/corpus/<target>/.
# usage: scripts/fuzz.sh [--seconds N] [TARGET...]
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
seconds=60
targets=()
while [ $# -gt 0 ]; do
    case "$1" in
        --seconds) seconds="$2"; shift 2 ;;
        *) targets+=("$1"); shift ;;
    esac
done
build="$root/build/fuzz"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DKX_FUZZ=ON \
    -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" -j "$(nproc)"
if [ ${#targets[@]} -eq 0 ]; then
    for f in "$root"/fuzz/fuzz_*.cpp; do
        [ -e "$f" ] && targets+=("$(basename "$f" .cpp)")
    done
fi
[ ${#targets[@]} -eq 0 ] && { echo "no fuzz targets"; exit 0; }

work="$build/runs"
mkdir -p "$work"
run_one() {
    local t="$1"
    local corpus="$work/$t-corpus"
    mkdir -p "$corpus"
    local seeds=()
    [ -d "$root/fuzz/corpus/$t" ] && seeds+=("$root/fuzz/corpus/$t")
    if (cd "$work" && "$build/bin/$t" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
            -print_final_stats=1 "$corpus" "${seeds[@]}" >"$work/$t.log" 2>&1); then
        echo "fuzz $t: clean after ${seconds}s ($(grep -m1 -o 'stat::number_of_executed_units: [0-9]*' "$work/$t.log" | awk '{print $2}') runs)"
    else
        echo "fuzz $t: FAILED"; tail -n 60 "$work/$t.log"; return 1
    fi
}
failed=0
pids=()
names=()
for t in "${targets[@]}"; do
    run_one "$t" &
    pids+=($!)
    names+=("$t")
    if [ ${#pids[@]} -ge 2 ]; then
        wait "${pids[0]}" || failed=1
        pids=("${pids[@]:1}")
    fi
done
for p in "${pids[@]}"; do wait "$p" || failed=1; done
exit $failed
