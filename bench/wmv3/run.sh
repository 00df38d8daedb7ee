#!/usr/bin/env bash
# The platform's WMV3 encoder: frames per second at 720p30 and 1080p30 against real
# time, the bit rate reached against the one asked, and the luma PSNR at 8 Mbit/s 1080p
# next to FFmpeg's WMV2 encoder at the same rate on the same raw frames.
# Usage: bench/wmv3/run.sh <build-dir>
set -euo pipefail
build=${1:-build/default}
program="$build/bench/wmv3/wmv3_encode"
work="$build/bench/wmv3"
frames=60
mkdir -p "$work"

# testsrc2 with moving parts, and grain so that the pictures are not flat.
raw_frames() {
  local size=$1 file=$2
  if [ ! -s "$file" ]; then
    ffmpeg -hide_banner -loglevel error -y -f lavfi -i "testsrc2=size=$size:rate=30" \
      -vf "noise=alls=6:allf=t" -frames:v "$frames" -pix_fmt yuv420p -f rawvideo "$file"
  fi
}
raw_frames 1280x720 "$work/frames_720p.yuv"
raw_frames 1920x1080 "$work/frames_1080p.yuv"

# shellcheck source=../timing.sh
. "$(dirname "$0")/../timing.sh"

# Best of three runs for speed; bits and PSNR do not change between runs.
encode() {
  local file=$1 width=$2 height=$3 rate=$4 best=1e9 seconds
  for _ in 1 2 3; do
    "$program" "$file" "$width" "$height" "$frames" 30 "$rate" >"$work/last_output"
    seconds=$(awk '{ print $4 }' "$work/last_output")
    best=$(smaller "$best" "$seconds")
  done
  read -r _ _ _ _ _ bits _ psnr <"$work/last_output"
  echo "$best $bits $psnr"
}

read -r s720 bits720 psnr720 < <(encode "$work/frames_720p.yuv" 1280 720 4000000)
read -r s1080 bits1080 psnr1080 < <(encode "$work/frames_1080p.yuv" 1920 1080 8000000)
fps720=$(divide "$frames" "$s720")
fps1080=$(divide "$frames" "$s1080")
rate1080=$(awk -v b="$bits1080" -v f="$frames" 'BEGIN { print b * 30 / f }')

# WMV2 from FFmpeg at the same rate on the same frames; PSNR of its decode.
ffmpeg -hide_banner -loglevel error -y -f rawvideo -pix_fmt yuv420p -s 1920x1080 -r 30 \
  -i "$work/frames_1080p.yuv" -c:v wmv2 -b:v 8M "$work/wmv2_1080p.avi"
wmv2_bytes=$(stat -c %s "$work/wmv2_1080p.avi")
wmv2_rate=$(awk -v b="$wmv2_bytes" -v f="$frames" 'BEGIN { print b * 8 * 30 / f }')
wmv2_psnr=$(ffmpeg -hide_banner -nostdin -i "$work/wmv2_1080p.avi" -f rawvideo -pix_fmt yuv420p -s 1920x1080 \
  -r 30 -i "$work/frames_1080p.yuv" -lavfi "[0:v][1:v]psnr" -f null - 2>&1 |
  sed -n 's/.* y:\([0-9.]*\) .*/\1/p' | tail -1)

printf 'WMV3 720p30   %8.1f fps  (%d frames, 4 Mbit/s, PSNR %.2f dB)\n' "$fps720" "$frames" "$psnr720"
printf 'WMV3 1080p30  %8.1f fps  (%d frames, 8 Mbit/s, PSNR %.2f dB)\n' "$fps1080" "$frames" "$psnr1080"
printf 'WMV2 1080p30  8 Mbit/s asked, %.2f Mbit/s reached, luma PSNR %.2f dB\n' \
  "$(divide "$wmv2_rate" 1000000)" "$wmv2_psnr"
printf 'WMV3 720p30 encoding against real time          ratio %.2f  (goal >= 1.00)\n' "$(divide "$fps720" 30)"
printf 'WMV3 1080p30 encoding against real time         ratio %.2f  (reported, no goal)\n' "$(divide "$fps1080" 30)"
printf 'WMV3 1080p bit rate reached against 8 Mbit/s    ratio %.3f  (goal 0.90 .. 1.10)\n' \
  "$(divide "$rate1080" 8000000)"
printf 'WMV3 against WMV2 luma PSNR at 8 Mbit/s 1080p   gain %+.2f dB  (goal >= +1.00 dB)\n' \
  "$(awk -v a="$psnr1080" -v b="$wmv2_psnr" 'BEGIN { print a - b }')"
