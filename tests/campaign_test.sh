#!/usr/bin/env bash
# Generated bad input through dovrex-headless, as a careless user or an attacker would give it:
# damaged packs (bytes, and stores whole but wrong: a table, a column or BallColor rows missing, a
# trigger that raises), condition files with missing, extra, moved or out-of-range rows, ticket
# files and draw lists with good and impossible records. It checks that nothing bad is stored,
# that every refused line is counted, and that no good pack or Bak is replaced by a bad store.
#
#   campaign_test.sh <dovrex-headless> <folder with the shipped dovrex.dat and TJmode.tjmod> [seed]
#
# DOVREX_CAMPAIGN_ROUNDS sets the rounds (8 by default, each some forty cases); the seed comes
# from the argument, else DOVREX_CAMPAIGN_SEED, else 1, and is printed with any failure.
set -u

headless=$1
shipped=$2
seed=${3:-${DOVREX_CAMPAIGN_SEED:-1}}
rounds=${DOVREX_CAMPAIGN_ROUNDS:-8}
RANDOM=$seed

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cases=0

fail() {
    echo "seed $seed, round $round, $*"
    [[ -f $work/out ]] && grep -vE '^(PROGRESS|SET|DRESS|GRID) ' "$work/out" | tail -n 25
    exit 1
}

# Runs a script given on stdin; its output is in $work/out. The status is the runner's.
run() {
    cat >"$work/script"
    "$headless" "$work/script" >"$work/out" 2>&1
}

# The plain store inside the shipped pack: the pack's first file.
length=$(od -An -tu4 -N4 "$shipped/dovrex.dat" | tr -d ' ')
tail -c +9 "$shipped/dovrex.dat" | head -c "$length" >"$work/good.dat"

# A copy of the good store changed by statements.
store_with() {
    cp "$work/good.dat" "$work/case.dat"
    { echo "open-store $work/case.dat"; printf 'sql %s\n' "$@"; } | run || fail "cannot make a case: $*"
}

# ---- packs --------------------------------------------------------------------------------------

# True when a pack opens on a folder of its own, without a Bak to fall back on.
opens_alone() {
    rm -rf "$work/alone" && mkdir -p "$work/alone"
    cp "$1" "$work/alone/dovrex.dat"
    printf 'open-folder %s %s\n' "$work/alone" "$work/alone-temp" | run
}

pack_case() {
    local what=$1 answer=$2 limit=$3
    rm -rf "$work/program" "$work/temp" && mkdir -p "$work/program/Bak"
    cp "$work/case.dat" "$work/program/dovrex.dat"
    cp "$shipped/dovrex.dat" "$work/program/Bak/dovrex.dat"
    printf 'store-size-limit %s\nanswer %s\nopen-folder %s %s\ncheckpoint\nanswer yes\nexit\n' \
        "$limit" "$answer" "$work/program" "$work/temp" | run
    cp "$work/out" "$work/run.out"
    cmp -s "$work/program/Bak/dovrex.dat" "$shipped/dovrex.dat" ||
        opens_alone "$work/program/Bak/dovrex.dat" || fail "$what: Bak was replaced by a bad store"
    if ! cmp -s "$work/program/dovrex.dat" "$work/case.dat"; then
        opens_alone "$work/program/dovrex.dat" || fail "$what: the pack was replaced by a bad store"
    fi
    # A damaged pack is never opened as it is: it offers the sound Bak.
    if ! opens_alone "$work/case.dat"; then
        grep -q '^CONFIRM 数据文件已损坏' "$work/run.out" || { cp "$work/run.out" "$work/out"; fail "$what: Bak not offered"; }
    fi
    cases=$((cases + 1))
}

damage_bytes() {
    cp "$work/good.dat" "$work/case.dat"
    local size n
    size=$(stat -c %s "$work/case.dat")
    for ((n = 0; n < 1 + RANDOM % 8; ++n)); do
        printf "\\x$(printf %02x $((RANDOM % 256)))" |
            dd of="$work/case.dat" bs=1 seek=$(((RANDOM * 32768 + RANDOM) % size)) conv=notrunc status=none
    done
    if ((RANDOM % 4 == 0)); then truncate -s $((RANDOM * 32768 % size)) "$work/case.dat"; fi
}

wrong_stores=(
    "DROP TABLE 历史记录"
    "DROP TABLE BallColor"
    "DELETE FROM BallColor WHERE 号码 > 30"
    "ALTER TABLE 过滤条件 DROP COLUMN VALUE"
    "ALTER TABLE 日志表 DROP COLUMN 缩水标记"
    "CREATE TRIGGER t BEFORE INSERT ON 日志表 BEGIN SELECT RAISE(ABORT, 'no'); END"
    "CREATE UNIQUE INDEX u ON 日志表(蓝球)"
    "DROP TABLE 过滤条件使用情况"
)

# ---- condition files ----------------------------------------------------------------------------

# The condition rows of the good store, to compare a refused import against.
condition_sum="select 'S:' || count(*) || ':' || sum(ID * (VALUE + 3)) from 过滤条件"

condition_case() {
    local what=$1 expect=$2
    shift 2
    cp "$shipped/TJmode.tjmod" "$work/case.dovrex"
    { echo "open-store $work/case.dovrex"; printf 'sql %s\n' "$@"; } | run || fail "cannot make $what"
    cp "$work/good.dat" "$work/store.dat"
    printf 'open-store %s\nsql %s\nimport-conditions %s\nsql %s\nsql select VALUE from 过滤条件 where ID in (1, 2, 3902) order by ID\n' \
        "$work/store.dat" "$condition_sum" "$work/case.dovrex" "$condition_sum" | run || fail "$what: the run failed"
    local before after
    before=$(grep '^S:' "$work/out" | head -n 1)
    after=$(grep '^S:' "$work/out" | tail -n 1)
    if [[ $expect == refused ]]; then
        grep -q '文件格式错误无法导入数据' "$work/out" || fail "$what: accepted"
        [[ $before == "$after" ]] || fail "$what: refused but the store changed"
    else
        grep -q '导入完成' "$work/out" || fail "$what: refused"
        [[ $(tail -n 3 "$work/out" | tr '\n' ' ') == "$expect" ]] || fail "$what: rows landed elsewhere"
    fi
    cases=$((cases + 1))
}

# ---- ticket files -------------------------------------------------------------------------------

next_year=$(($(date +%Y) + 1))

# One line of a ticket file in layout 1 and whether it is a ticket the program may store.
ticket_line() {
    local kind=$((RANDOM % 6)) year=$((2003 + RANDOM % 24)) n=$((1 + RANDOM % 150)) reds=() r
    while ((${#reds[@]} < 6)); do
        r=$((1 + RANDOM % 33))
        [[ " ${reds[*]} " == *" $r "* ]] || reds+=("$r")
    done
    local blue=$((1 + RANDOM % 16))
    case $kind in
        1) reds[3]=${reds[1]} ;;                  # a red twice
        2) year=$((next_year + 1 + RANDOM % 50)) ;;  # an issue that cannot exist yet
        3) n=$((201 + RANDOM % 798)) ;;           # more issues than a year has
        4) blue=$((17 + RANDOM % 80)) ;;          # no such blue
    esac
    line=$(printf '%d%03d %02d %02d %02d %02d %02d %02d + %02d' "$year" "$n" "${reds[@]}" "$blue")
    good=$((kind == 0 || kind == 5))
}

ticket_case() {
    local lines=$((1 + RANDOM % 30)) good_count=0 bad_count=0 k
    : >"$work/tickets.txt"
    for ((k = 0; k < lines; ++k)); do
        ticket_line
        echo "$line" >>"$work/tickets.txt"
        if ((good)); then good_count=$((good_count + 1)); else bad_count=$((bad_count + 1)); fi
        ((RANDOM % 5)) || echo >>"$work/tickets.txt"  # blank lines are no records
    done
    cp "$work/good.dat" "$work/store.dat"
    run <<EOF || fail "ticket import failed"
open-store $work/store.dat
sql INSERT INTO 日志表 (序号, 期号, 红球1, 红球2, 红球3, 红球4, 红球5, 红球6, 蓝球) VALUES (1, 2026001, 1, 2, 3, 4, 5, 6, 7)
answer-fromfile 1
answer no
import $work/tickets.txt
sql select 'N:' || count(*) from 日志表
sql select 'I:' || count(*) from 日志表 where 期号 / 1000 > $next_year or 期号 % 1000 > 200 or 蓝球 > 16 or 红球1 in (红球2, 红球3, 红球4, 红球5, 红球6) or 红球2 in (红球3, 红球4, 红球5, 红球6) or 红球3 in (红球4, 红球5, 红球6) or 红球4 in (红球5, 红球6) or 红球5 = 红球6
EOF
    grep -q "^imported $good_count\$" "$work/out" || fail "tickets: $good_count good lines, $(grep '^imported' "$work/out")"
    if ((bad_count > 0)); then
        grep -q "已拒绝 $bad_count 行：第 " "$work/out" || fail "tickets: $bad_count refused lines not counted"
    fi
    local stored impossible
    stored=$(grep '^N:' "$work/out" | cut -d: -f2)
    impossible=$(grep '^I:' "$work/out" | cut -d: -f2)
    ((impossible == 0)) || fail "tickets: $impossible impossible tickets stored"
    # No valid line: the question is never asked and the table keeps its ticket.
    if ((good_count == 0)); then ((stored == 1)) || fail "tickets: a file with no valid line emptied the table"; fi
    cases=$((cases + 1))
}

# ---- draw lists ---------------------------------------------------------------------------------

draw_case() {
    local lines=$((1 + RANDOM % 20)) bad_count=0 k
    : >"$work/draws.txt"
    for ((k = 0; k < lines; ++k)); do
        ticket_line
        local month=$((1 + RANDOM % 12)) day=$((1 + RANDOM % 28)) dyear=${line:0:4}
        ((RANDOM % 6)) || dyear=$((dyear + 1))  # dated outside its issue's year
        [[ ${line:0:4} == "$dyear" ]] || good=0
        # The first draw was on 2003/02/23; nothing is drawn after today.
        local date
        date=$(printf '%04d-%02d-%02d' "$dyear" "$month" "$day")
        [[ $date < 2003-02-23 || $date > $(date +%Y-%m-%d) ]] && good=0
        printf '%s %s %s\n' "${line:0:7}" "$date" "${line:8}" | tr '+' ' ' >>"$work/draws.txt"
        ((good)) || bad_count=$((bad_count + 1))
    done
    cp "$work/good.dat" "$work/store.dat"
    run <<EOF || fail "draw list failed"
open-store $work/store.dat
answer yes
download-file $work/draws.txt
sql select 'D:' || count(*) from 历史记录 where 开奖日期 > $(($(date +%s) / 86400 + 25569)) or 蓝球 > 16 or 红球6 > 33 or 期号 % 1000 > 200 or 红球1 >= 红球2
EOF
    ((bad_count == 0)) || grep -q "已拒绝 $bad_count 行" "$work/out" ||
        grep -q "所选文件中没有可读的开奖数据" "$work/out" || fail "draws: $bad_count refused records not counted"
    [[ $(grep '^D:' "$work/out") == D:0 ]] || fail "draws: impossible draws stored"
    cases=$((cases + 1))
}

for ((round = 1; round <= rounds; ++round)); do
    store_with "${wrong_stores[RANDOM % ${#wrong_stores[@]}]}"
    pack_case "a whole but wrong store" $([[ $((RANDOM % 2)) == 1 ]] && echo yes || echo no) $((RANDOM % 2 ? 1000 : 100000000))
    damage_bytes
    pack_case "a damaged store" yes 1000

    condition_case "row 1 missing" refused "DELETE FROM 过滤条件 WHERE ID=1"
    condition_case "an extra row" refused "INSERT INTO 过滤条件 (ID, VALUE) VALUES ($((200000 + RANDOM)), 0)"
    condition_case "IDs moved" refused "UPDATE 过滤条件 SET ID=ID+100000 WHERE ID BETWEEN 1 AND 7"
    condition_case "3902 out of range" refused "UPDATE 过滤条件 SET VALUE=$((21 + RANDOM % 100)) WHERE ID=3902"
    condition_case "3900 out of range" refused "UPDATE 过滤条件 SET VALUE=$((8 + RANDOM % 100)) WHERE ID=3900"
    condition_case "a negative value" refused "UPDATE 过滤条件 SET VALUE=-1 WHERE ID=$((1000 + RANDOM % 183))"
    condition_case "a switch of 2" refused "UPDATE 过滤条件使用情况 SET 使用情况=2 WHERE 条件=$((1 + RANDOM % 9))"
    condition_case "rows in another order" "1 2 5 " \
        "UPDATE 过滤条件 SET VALUE=1 WHERE ID=1" "UPDATE 过滤条件 SET VALUE=2 WHERE ID=2" \
        "UPDATE 过滤条件 SET VALUE=5 WHERE ID=3902" \
        "CREATE TABLE x AS SELECT * FROM 过滤条件 ORDER BY ID DESC" "DELETE FROM 过滤条件" \
        "INSERT INTO 过滤条件 SELECT * FROM x" "DROP TABLE x"
    condition_case "a later row missing" "1 0 0 " "UPDATE 过滤条件 SET VALUE=1 WHERE ID=1" \
        "DELETE FROM 过滤条件 WHERE ID=3902"

    for ((k = 0; k < 20; ++k)); do ticket_case; done
    for ((k = 0; k < 10; ++k)); do draw_case; done
done
echo "$cases cases, seed $seed: nothing bad stored, every refusal counted, no good file replaced"
