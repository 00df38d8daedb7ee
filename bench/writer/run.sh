#!/usr/bin/env bash
# Frames per second of 300 1080p RGB32 frames through IMFSinkWriter, next to `ffmpeg`
# encoding the same raw BGRA frames in the same run: H.264 into MP4 (same preset, Main
# profile, 8 Mbit/s, a key frame every 60 frames) and WMV2 into ASF (8 Mbit/s, key frame
# every 60). Both are timed as whole processes, reading the raw frames included.
# WMV3, whose encoder is the platform's own, has no ffmpeg to race: its frames per
# second through the writer are set against real time at 720p30 and 1080p30, its bit
# rate against the one asked, and its luma PSNR at 8 Mbit/s 1080p against FFmpeg's WMV2
# at the same rate on the same frames.
# Usage: bench/writer/run.sh <build-dir>
set -euo pipefail
build=${1:-build/default}
program="$build/bench/writer/writer_fps"
work="$build/bench/writer"
raw="$work/frames_1080p.bgra"
frames=300
preset=superfast
rate=8000000
keyint=60
mkdir -p "$work"
# 60 distinct frames of moving content, looped by both programs.
raw_frames() {
  local size=$1 file=$2
  if [ ! -s "$file" ]; then
    ffmpeg -hide_banner -loglevel error -y -f lavfi -i "testsrc2=size=$size:rate=30" -frames:v 60 \
      -pix_fmt bgra -f rawvideo "$file"
  fi
}
raw_frames 1920x1080 "$raw"
raw720="$work/frames_720p.bgra"
raw_frames 1280x720 "$raw720"

# shellcheck source=../timing.sh
. "$(dirname "$0")/../timing.sh"

ffmpeg_input=(-hide_banner -nostdin -loglevel error -y -f rawvideo -pix_fmt bgra -s 1920x1080 -r 30
  -stream_loop -1 -i "$raw" -frames:v "$frames" -pix_fmt yuv420p)

compare() {
  local name=$1 codec=$2 out=$3
  shift 3
  local ffmpeg_seconds=1e9 writer_seconds=1e9 writer_frames=0
  # Best of three, taken in turns, so that a busy moment of the machine hits both alike.
  for _ in 1 2 3; do
    ffmpeg_seconds=$(smaller "$ffmpeg_seconds" "$(seconds_of ffmpeg "${ffmpeg_input[@]}" "$@" "$work/ffmpeg_$out")")
    writer_seconds=$(smaller "$writer_seconds" "$(seconds_of "$program" "$raw" 1920 1080 "$frames" "$codec" \
      "$work/writer_$out" "$rate" "$keyint" "$preset")")
    read -r writer_frames _ _ <"$work/last_output"
  done
  local writer_fps ffmpeg_fps
  writer_fps=$(divide "$writer_frames" "$writer_seconds")
  ffmpeg_fps=$(divide "$frames" "$ffmpeg_seconds")
  printf '%s\n' "$name"
  printf '  ffmpeg          %8.1f fps\n' "$ffmpeg_fps"
  printf '  IMFSinkWriter   %8.1f fps (%d frames in %.2f s)\n' "$writer_fps" "$writer_frames" "$writer_seconds"
  printf '%-16s  ratio %.2f  (goal >= 0.95)\n' "$name" "$(divide "$writer_fps" "$ffmpeg_fps")"
}

compare "H.264 MP4 1080p" h264 h264.mp4 -c:v libx264 -preset "$preset" -profile:v main -b:v "$rate" -g "$keyint" \
  -movflags +faststart
compare "WMV2 ASF 1080p" wmv2 wmv2.asf -c:v wmv2 -b:v "$rate" -g "$keyint"

# Frames per second of the writer's WMV3 at a size, best of three; the file stays.
wmv3_fps() {
  local file=$1 width=$2 height=$3 count=$4 out=$5 best=1e9 seconds written
  for _ in 1 2 3; do
    seconds=$(seconds_of "$program" "$file" "$width" "$height" "$count" wmv3 "$out" "$rate" "$keyint" "$preset")
    best=$(smaller "$best" "$seconds")
    read -r written _ _ <"$work/last_output"
  done
  divide "$written" "$best"
}

# Luma PSNR of a movie's first 60 pictures against the raw frames it was made from.
luma_psnr() {
  local movie=$1 file=$2 size=$3
  ffmpeg -hide_banner -nostdin -i "$movie" -f rawvideo -pix_fmt bgra -s "$size" -r 30 -i "$file" \
    -lavfi "[0:v]format=yuv420p[a];[1:v]format=yuv420p[b];[a][b]psnr" -frames:v 60 -f null - 2>&1 |
    sed -n 's/.* y:\([0-9.]*\) .*/\1/p' | tail -1
}

wmv3_frames=120
fps720=$(wmv3_fps "$raw720" 1280 720 "$wmv3_frames" "$work/writer_wmv3_720p.asf")
fps1080=$(wmv3_fps "$raw" 1920 1080 "$wmv3_frames" "$work/writer_wmv3_1080p.asf")
video_rate() {
  ffprobe -v error -select_streams v:0 -show_entries packet=size -of csv=p=0 "$1" |
    awk -v f="$wmv3_frames" '{ bytes += $1 } END { print bytes * 8 * 30 / f }'
}
rate1080=$(video_rate "$work/writer_wmv3_1080p.asf")
ffmpeg "${ffmpeg_input[@]}" -frames:v "$wmv3_frames" -c:v wmv2 -b:v "$rate" -g "$keyint" "$work/ffmpeg_wmv2_psnr.asf"
wmv3_psnr=$(luma_psnr "$work/writer_wmv3_1080p.asf" "$raw" 1920x1080)
wmv2_psnr=$(luma_psnr "$work/ffmpeg_wmv2_psnr.asf" "$raw" 1920x1080)
printf 'WMV3 ASF\n  IMFSinkWriter 720p30 %8.1f fps, 1080p30 %8.1f fps\n' "$fps720" "$fps1080"
printf '  luma PSNR at 8 Mbit/s 1080p: WMV3 %.2f dB, FFmpeg WMV2 %.2f dB\n' "$wmv3_psnr" "$wmv2_psnr"
printf 'WMV3 720p30 writing against real time         ratio %.2f  (goal >= 1.00)\n' "$(divide "$fps720" 30)"
printf 'WMV3 1080p30 writing against real time        ratio %.2f  (reported, no goal)\n' "$(divide "$fps1080" 30)"
printf 'WMV3 1080p bit rate reached against 8 Mbit/s  ratio %.3f  (goal 0.90 .. 1.10)\n' \
  "$(divide "$rate1080" "$rate")"
printf 'WMV3 against WMV2 luma PSNR at 8 Mbit/s 1080p gain %+.2f dB  (goal >= +1.00 dB)\n' \
  "$(awk -v a="$wmv3_psnr" -v b="$wmv2_psnr" 'BEGIN { print a - b }')"
