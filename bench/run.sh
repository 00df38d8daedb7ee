#!/usr/bin/env bash
# Runs every benchmark area's script against a build tree; each prints its ratios.
set -euo pipefail
build=${1:-build/default}
here=$(cd "$(dirname "$0")" && pwd)
for script in "$here"/*/run.sh; do
  [ -x "$script" ] || continue
  echo "== $(basename "$(dirname "$script")")"
  "$script" "$build"
done
