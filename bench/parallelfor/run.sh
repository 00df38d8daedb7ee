#!/usr/bin/env bash
# The row loop's speed on a full HD BGRX to RGBA conversion, as a share of memcpy's.
set -euo pipefail
build=${1:-build/default}
bench="$build/bench/parallelfor/parallelfor_bench"
[ -x "$bench" ] || { echo "no $bench"; exit 0; }
"$bench" --benchmark_format=csv 2>/dev/null | awk -F, '
  /^"BM_Memcpy"/ { memcpy = $6 }
  /^"BM_ConvertRows\/0/ { pool = $6 }
  /^"BM_ConvertRows\/1/ { inline = $6 }
  END {
    printf "memcpy of a 1920x1080 frame, one thread:   %6.2f GB/s\n", memcpy / 1e9
    printf "BGRX to RGBA rows through ParallelFor:     %6.2f GB/s  %5.2f x memcpy\n", pool / 1e9, pool / memcpy
    printf "the same loop in line (threadCount 1):     %6.2f GB/s  %5.2f x memcpy\n", inline / 1e9, inline / memcpy
  }'
