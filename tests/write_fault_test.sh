#!/usr/bin/env bash
# Fails one write, fsync or rename of the working copy or the pack (write_fault_shim.so under
# LD_PRELOAD) during a run that makes tickets and exits, for the n-th such call, and checks each
# time that the next start opens the state from before the run or from after it, and that a run
# which lost its tickets said so (an ERROR box, a FAILED command or a failing exit status).
#
#   write_fault_test.sh <dovrex-headless> <write_fault_shim.so> <folder with the shipped dovrex.dat>
#
# Every n is tried when there are at most DOVREX_FAULT_TRIALS calls (40 by default); otherwise
# that many, spread evenly over the run. DOVREX_FAULT_TRIALS=0 tries every n.
set -u

headless=$1
shim=$2
shipped=$3
trials=${DOVREX_FAULT_TRIALS:-40}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The run: picks that make 28 tickets, packed after every command, then the exit.
new_folder() {
    rm -rf "$work/program" "$work/temp" "$work/look"
    mkdir -p "$work/program" "$work/temp"
    cp "$shipped/dovrex.dat" "$work/program/"
}
cat >"$work/run.txt" <<EOF
open-folder $work/program $work/temp
checkpoint every 0
pick 1 1-8
pick 1 101
init 2026100
answer yes
exit
EOF

# The tickets of issue 2026100 in the folder's pack; fails when the pack does not open.
tickets() {
    printf 'open-folder %s %s\nsql select count(*) from 日志表 where 期号=2026100\n' \
        "$work/program" "$work/look" >"$work/look.txt"
    "$headless" "$work/look.txt" >"$work/look.out" 2>&1 || return 1
    tail -n 1 "$work/look.out"
}

new_folder
DOVREX_FAULT_AT=0 DOVREX_FAULT_COUNT="$work/count" LD_PRELOAD="$shim" \
    "$headless" "$work/run.txt" >"$work/run.out" 2>&1 || { cat "$work/run.out"; echo "the run fails without a fault"; exit 1; }
calls=$(cat "$work/count")
[[ $(tickets) == 28 ]] || { echo "the run without a fault left no tickets"; exit 1; }
((calls > 0)) || { echo "the shim saw no write of the data files"; exit 1; }

step=1
if ((trials > 0 && calls > trials)); then step=$(((calls + trials - 1) / trials)); fi
tried=0 lost=0
for ((n = 1; n <= calls; n += step)); do
    new_folder
    status=0
    DOVREX_FAULT_AT=$n LD_PRELOAD="$shim" "$headless" "$work/run.txt" >"$work/run.out" 2>&1 || status=$?
    count=$(tickets) || { echo "call $n of $calls failed: the next start does not open"; cat "$work/look.out"; exit 1; }
    case $count in
        28) ;;
        0)
            lost=$((lost + 1))
            if ((status == 0)) && ! grep -qE '^(ERROR|FAILED) ' "$work/run.out"; then
                echo "call $n of $calls failed: the tickets are lost and the run said nothing"
                grep -v '^PROGRESS' "$work/run.out" | tail -n 20
                exit 1
            fi
            ;;
        *) echo "call $n of $calls failed: $count tickets, neither the old state nor the new"; exit 1 ;;
    esac
    tried=$((tried + 1))
done
echo "$tried of $calls calls failed in turn; $lost runs kept the old state and said so"
