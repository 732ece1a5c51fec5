#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (ASan + UBSan) and runs them, two at a time.
#
# usage: scripts/fuzz.sh [--seconds N] [--runs N] [--jobs N] [TARGET...]
#
# Without --seconds (the test command and CI): each target replays its seeds
# (fuzz/corpus/<target>/) and every regression input (fuzz/regressions/<target>/), then
# runs a fixed number of inputs from a fixed seed, starting from an empty work corpus, so
# the result depends on the commit alone. --runs changes that number for every target.
#
# With --seconds N (campaigns): each target runs for N seconds (or --runs inputs, whichever
# comes first) from a random seed, keeping what it finds in build/fuzz/runs/<target>-corpus
# for the next campaign. A finding is written to build/fuzz/runs/; keep it in
# fuzz/regressions/<target>/ once it is fixed.
#
# --jobs N runs N targets at a time (default 2); a campaign on a shared machine: --jobs 1.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
seconds=""
runs=""
jobs=2
targets=()
while [ $# -gt 0 ]; do
    case "$1" in
        --seconds) seconds="$2"; shift 2 ;;
        --runs) runs="$2"; shift 2 ;;
        --jobs) jobs="$2"; shift 2 ;;
        *) targets+=("$1"); shift ;;
    esac
done
if [ ${#targets[@]} -eq 0 ]; then
    for f in "$root"/fuzz/fuzz_*.cpp; do
        [ -e "$f" ] && targets+=("$(basename "$f" .cpp)")
    done
fi
[ ${#targets[@]} -eq 0 ] && { echo "no fuzz targets"; exit 0; }
build="$root/build/fuzz"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DKX_FUZZ=ON \
    -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" -j "$(nproc)" --target "${targets[@]}"

# Inputs per target in the fixed run: about 40 s of one core each at most (measured with
# ASan on a 2-core machine), so the ten take no longer than ten one-minute runs two at a
# time did.
fixed_runs() {
    case "$1" in
        fuzz_calc | fuzz_findresponse | fuzz_kxsparser) echo 200000 ;;
        fuzz_hexparser | fuzz_link) echo 80000 ;;
        fuzz_supl_output) echo 50000 ;;
        fuzz_settings) echo 25000 ;;
        *) echo 20000 ;; # firmware, manager, tokenize: the slowest per input
    esac
}

work="$build/runs"
mkdir -p "$work"
export QT_HASH_SEED=0 # the same hashing order in every run
# The fixed run's inputs depend on the addresses of the program's code (libFuzzer files
# the values its comparisons see by where they are made): without address randomisation
# (where the machine allows it) they are the same in every run.
fixed=()
if [ -z "$seconds" ] && setarch "$(uname -m)" -R true 2>/dev/null; then
    fixed=(setarch "$(uname -m)" -R)
fi
run_one() {
    local t="$1" corpus args=()
    local dirs=("$root/fuzz/corpus/$t")
    [ -d "$root/fuzz/regressions/$t" ] && dirs+=("$root/fuzz/regressions/$t")
    if [ -n "$seconds" ]; then
        corpus="$work/$t-corpus"
        # An input may wait for the processor on a shared machine: a longer time limit.
        args=(-max_total_time="$seconds" -runs="${runs:--1}" -timeout=300)
    else
        corpus="$work/$t-fixed"
        rm -rf "$corpus"
        # -reload=0: the work corpus is not read again every second, which would make
        # what runs depend on the time.
        args=(-seed=1 -runs="${runs:-$(fixed_runs "$t")}" -timeout=120 -reload=0)
    fi
    mkdir -p "$corpus"
    if (cd "$work" && "${fixed[@]}" "$build/bin/$t" "${args[@]}" -rss_limit_mb=2048 \
            -print_final_stats=1 -artifact_prefix="$work/$t-" "$corpus" "${dirs[@]}" \
            >"$work/$t.log" 2>&1); then
        echo "fuzz $t: clean, $(grep -m1 -o 'stat::number_of_executed_units: [0-9]*' "$work/$t.log" | awk '{print $2}') inputs," \
            "$(grep -o 'cov: [0-9]* ft: [0-9]*' "$work/$t.log" | tail -n 1)"
    else
        echo "fuzz $t: FAILED"; tail -n 60 "$work/$t.log"; return 1
    fi
}
failed=0
running=0
for t in "${targets[@]}"; do
    if [ "$running" -ge "$jobs" ]; then # the next starts as soon as any one ends
        wait -n || failed=1
        running=$((running - 1))
    fi
    run_one "$t" &
    running=$((running + 1))
done
while [ "$running" -gt 0 ]; do
    wait -n || failed=1
    running=$((running - 1))
done
exit $failed
