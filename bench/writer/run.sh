#!/usr/bin/env bash
# Frames per second of 300 1080p RGB32 frames through IMFSinkWriter, next to `ffmpeg`
# encoding the same raw BGRA frames in the same run: H.264 into MP4 (same preset, Main
# profile, 8 Mbit/s, a key frame every 60 frames) and WMV2 into ASF (8 Mbit/s, key frame
# every 60). Both are timed as whole processes, reading the raw frames included.
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
if [ ! -s "$raw" ]; then
  ffmpeg -hide_banner -loglevel error -y -f lavfi -i "testsrc2=size=1920x1080:rate=30" -frames:v 60 \
    -pix_fmt bgra -f rawvideo "$raw"
fi

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
