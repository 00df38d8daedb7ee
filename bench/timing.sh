# Shell functions the benchmark scripts share; sourced, not run. They expect $work, the
# benchmark's scratch folder.

# Wall-clock seconds of a command; its output goes to $work/last_output.
seconds_of() {
  local start end
  start=$(date +%s.%N)
  "$@" >"$work/last_output" 2>&1
  end=$(date +%s.%N)
  awk -v a="$start" -v b="$end" 'BEGIN { print b - a }'
}

smaller() { awk -v a="$1" -v b="$2" 'BEGIN { print (a < b) ? a : b }'; }

divide() { awk -v a="$1" -v b="$2" 'BEGIN { print a / b }'; }
