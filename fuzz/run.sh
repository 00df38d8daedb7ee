#!/usr/bin/env bash
# Runs fuzz targets of BUILD_DIR (the fuzz preset's tree, `make fuzz`) for SECONDS each,
# one after the other, with the limits of the large fuzzing services: 2560 MB of memory
# and 25 s per input. Each target starts from its own corpus, which keeps what it finds,
# and the seeds (made by make_seeds.sh when missing). Crashes, leaks and time-outs are
# written to BUILD_DIR/fuzz/artifacts and fail the run.
#   fuzz/run.sh BUILD_DIR SECONDS [TARGET...]     targets: read url_reader export text
set -euo pipefail
here=$(dirname "$0")
build=$(realpath "$1")
seconds=$2
shift 2
targets=("$@")
[ ${#targets[@]} -eq 0 ] && targets=(read url_reader export text)

# libFuzzer's own runtime brings the C++ library in ahead of the sanitizers' shared
# runtime; the C++ library defines no allocator, so the order is harmless.
export ASAN_OPTIONS="verify_asan_link_order=0:${ASAN_OPTIONS:-}"
seeds="$build/fuzz/seeds"
if [ ! -d "$seeds" ]; then
  ASAN_OPTIONS="$ASAN_OPTIONS:detect_leaks=0" "$here/make_seeds.sh" "$build" "$seeds.new"
  mv "$seeds.new" "$seeds"
fi
mkdir -p "$build/fuzz/artifacts"

seeds_of() {
  case $1 in
    read | url_reader) echo "$seeds/media" ;;
    *) echo "$seeds/$1" ;;
  esac
}

status=0
for target in "${targets[@]}"; do
  corpus="$build/fuzz/corpus/$target"
  mkdir -p "$corpus"
  echo "== $target: $seconds s"
  if ! "$build/fuzz/${target}_fuzzer" "$corpus" "$(seeds_of "$target")" \
      -max_total_time="$seconds" -rss_limit_mb=2560 -timeout=25 -print_final_stats=1 \
      -artifact_prefix="$build/fuzz/artifacts/$target-" 2>"$build/fuzz/$target.log"; then
    status=1
    grep -E "ERROR|SUMMARY|Test unit written" "$build/fuzz/$target.log" || tail -20 "$build/fuzz/$target.log"
  fi
  grep -E "stat::number_of_executed_units|stat::peak_rss_mb" "$build/fuzz/$target.log" | sed "s/^/   /"
done
exit $status
