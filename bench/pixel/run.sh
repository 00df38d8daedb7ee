#!/usr/bin/env bash
# Frame conversions of vorna_pixel, each with its speed as a share of memcpy's.
set -euo pipefail
build=${1:-build/default}
bench="$build/bench/pixel/vorna_pixel_bench"
[ -x "$bench" ] || { echo "no $bench"; exit 0; }
"$bench" --benchmark_format=csv 2>/dev/null | awk -F, '
  /^"BM_Memcpy"/ { memcpy = $6 }
  /^"ConvertFrame/ { name[++n] = $1; speed[n] = $6 }
  END {
    printf "memcpy of a 1920x1080 RGBA frame: %.1f GB/s\n", memcpy / 1e9
    for (i = 1; i <= n; ++i) {
      gsub(/"/, "", name[i])
      printf "%-40s %6.1f GB/s  %5.2f x memcpy\n", name[i], speed[i] / 1e9, speed[i] / memcpy
    }
  }'
