#!/usr/bin/env bash
# Installs the Debian packages that building, testing and benchmarking need.
# Does nothing when all are present; as root it runs apt-get, otherwise it prints
# the apt-get line to run.
set -euo pipefail

packages=(
  g++ cmake make pkg-config
  googletest libgtest-dev libgmock-dev libbenchmark-dev
  libavformat-dev libavcodec-dev libavutil-dev libswscale-dev libswresample-dev
  ffmpeg
  libpng-dev nlohmann-json3-dev
  clang libclang-rt-14-dev
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

[ ${#missing[@]} -eq 0 ] && exit 0

line="apt-get install -y --no-install-recommends ${missing[*]}"
if [ "$(id -u)" -eq 0 ]; then
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -q
  $line
else
  echo "Missing packages. Run as root:"
  echo "  apt-get update && $line"
  exit 1
fi
