#!/usr/bin/env bash
# Runs the program's start and the reference window alternately and reports,
# for each, the median time from launch to its first paint drawn on screen
# and the peak memory.
set -euo pipefail
dir=${1:?usage: startup.sh BENCH_DIR [RUNS]}
runs=${2:-15}

declare -A times rss
run_once() { # run_once NAME EXECUTABLE
  local start painted out
  start=$(date +%s%N)
  out=$(timeout 30 "$2" 2>/dev/null) || { echo "$1 did not reach its first paint" >&2; exit 1; }
  painted=$(echo "$out" | sed -n 's/^first_paint_ns=//p')
  times[$1]+="$(((painted - start) / 1000)) "
  rss[$1]+="$(echo "$out" | sed -n 's/^peak_rss_kib=//p') "
}

# One of each first, not counted: both find the font caches warm.
timeout 30 "$dir/reference_window" >/dev/null 2>&1 || true
timeout 30 "$dir/startup_bench" >/dev/null 2>&1 || true
for _ in $(seq "$runs"); do
  run_once reference "$dir/reference_window"
  run_once verlis "$dir/startup_bench"
done

median() { tr ' ' '\n' | grep -v '^$' | sort -n | awk '{a[NR]=$1} END {print (NR % 2) ? a[(NR+1)/2] : (a[NR/2] + a[NR/2+1]) / 2}'; }
ref_t=$(echo "${times[reference]}" | median)
app_t=$(echo "${times[verlis]}" | median)
ref_m=$(echo "${rss[reference]}" | median)
app_m=$(echo "${rss[verlis]}" | median)
awk -v runs="$runs" -v rt="$ref_t" -v at="$app_t" -v rm="$ref_m" -v am="$app_m" 'BEGIN {
  printf "Start-up to first paint, %d runs each, alternating:\n", runs
  printf "  %-12s median %8.1f ms   peak memory %6.1f MiB\n", "reference", rt / 1000, rm / 1024
  printf "  %-12s median %8.1f ms   peak memory %6.1f MiB\n", "verlis", at / 1000, am / 1024
  printf "  ratio of medians %.3f (target at most 1.10); memory difference %+.1f MiB (target at most +8)\n", at / rt, (am - rm) / 1024
}'
