#!/bin/sh
# fuzz_target.sh PROGRAM LONGEST: runs one fuzz target for FUZZ_SECONDS (20 where that is not set) on inputs of at most
# LONGEST bytes. Corpus, findings and log go to the folder of the program; so does the line that tells how it went.
set -eu
program=$1
longest=$2
target=$(basename "$program")
target=${target#fuzz_}
build=$(cd "$(dirname "$program")" && pwd)
sources=$(cd "$(dirname "$0")/../tests/fuzz" && pwd)
mkdir -p "$build/corpus/$target" "$build/findings" "$build/logs" "$build/results"
log=$build/logs/$target.log

# Readers read files, and a disk is slow.
room=${TMPDIR:-/tmp}
[ ! -w /dev/shm ] || room=/dev/shm
TMPDIR=$(mktemp -d "$room/fuzz.XXXXXX")
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT

status=0
"$program" -max_total_time="${FUZZ_SECONDS:-20}" -max_len="$longest" -timeout=20 -rss_limit_mb=2048 \
    -dict="$sources/theme.dict" -artifact_prefix="$build/findings/$target." -print_final_stats=1 \
    "$build/corpus/$target" "$sources/seeds/$target" "$build/aurora" >"$log" 2>&1 || status=$?
number() { sed -n "s/^$1 *\([0-9][0-9]*\).*/\1/p" "$log" | tail -n 1; }
result=clean
[ "$status" -eq 0 ] || result="FAILED, see $log"
printf '%-17s %10s executions %7s a second %6s edges  %s\n' "$target" "$(number stat::number_of_executed_units:)" \
    "$(number stat::average_exec_per_sec:)" "$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "$log" | tail -n 1)" \
    "$result" >"$build/results/$target"
cat "$build/results/$target"
exit "$status"
