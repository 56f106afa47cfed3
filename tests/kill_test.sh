#!/usr/bin/env bash
# Kills dovrex-headless with SIGKILL at random moments of its start, its commands, its checkpoints
# and its exit, and checks after every kill that the next start opens a whole pack holding the state
# from before the run or from after it (never no pack, never a damaged one, never half a run).
#
#   kill_test.sh <dovrex-headless> <folder with the shipped dovrex.dat> [trials]
#
# The number of trials comes from the argument, else from DOVREX_KILL_TRIALS, else 30.
set -u

headless=$1
shipped=$2
trials=${3:-${DOVREX_KILL_TRIALS:-30}}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
program=$work/program
temp=$work/temp
mkdir -p "$program" "$temp"
cp "$shipped/dovrex.dat" "$program/"

# One run: two marks set apart by a longer pass, packed after every command, then a clean exit.
# Every other run starts with a tiny size limit, so that the start replaces the pack too.
write_run() {
    local trial=$1
    {
        if ((trial % 2)); then echo "store-size-limit 1000"; fi
        echo "open-folder $program $temp"
        echo "checkpoint every 0"
        echo "sql UPDATE 过滤条件 SET VALUE=$trial WHERE ID=1000"
        echo "recalc 2024001 2026200"
        echo "sql UPDATE 过滤条件 SET VALUE=$trial WHERE ID=1001"
        echo "checkpoint"
        echo "answer yes"
        echo "exit"
    } >"$work/run.txt"
}

# Prints "<mark 1000> <mark 1001>" of the folder's pack; fails when it does not open.
read_marks() {
    local folder=$1
    printf 'open-folder %s %s\nsql select VALUE from 过滤条件 where ID in (1000, 1001) order by ID\n' \
        "$folder" "$work/look" >"$work/look.txt"
    "$headless" "$work/look.txt" >"$work/look.out" 2>&1 || return 1
    tail -n 2 "$work/look.out" | tr '\n' ' '
}

fail() {
    echo "trial $trial (killed after ${delay}s): $*"
    echo "--- the killed run:"
    grep -v '^PROGRESS' "$work/run.out" | tail -n 20
    echo "--- the start after it:"
    tail -n 20 "$work/look.out"
    exit 1
}

# The first run is not killed: it gives the length of a run.
trial=0
delay=none
write_run 0
start=$(date +%s%N)
"$headless" "$work/run.txt" >"$work/run.out" 2>&1 || fail "a whole run failed"
span_ms=$((($(date +%s%N) - start) / 1000000 + 50))
read -r old1000 old1001 <<<"$(read_marks "$program")" || fail "no pack after a clean run"

kills=0
for ((trial = 1; trial <= trials; ++trial)); do
    write_run "$trial"
    delay_ms=$((RANDOM * span_ms / 32768))
    delay=$(printf '%d.%03d' $((delay_ms / 1000)) $((delay_ms % 1000)))
    "$headless" "$work/run.txt" >"$work/run.out" 2>&1 &
    pid=$!
    sleep "$delay"
    kill -KILL "$pid" 2>/dev/null && kills=$((kills + 1))
    wait "$pid" 2>/dev/null

    marks=$(read_marks "$program") || fail "the pack does not open"
    read -r new1000 new1001 <<<"$marks"
    [[ $new1000 == "$old1000" || $new1000 == "$trial" ]] || fail "mark 1000 is $new1000 (before: $old1000)"
    [[ $new1001 == "$old1001" || $new1001 == "$trial" ]] || fail "mark 1001 is $new1001 (before: $old1001)"
    [[ $new1001 != "$trial" || $new1000 == "$trial" ]] || fail "the second mark is there without the first"
    if [[ -f $program/Bak/dovrex.dat ]]; then
        mkdir -p "$work/bak"
        cp "$program/Bak/dovrex.dat" "$work/bak/dovrex.dat"
        read_marks "$work/bak" >/dev/null || fail "Bak/dovrex.dat does not open"
    fi
    old1000=$new1000
    old1001=$new1001
done
echo "$trials trials, $kills killed runs: every start found a whole pack"
