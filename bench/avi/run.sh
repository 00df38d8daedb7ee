#!/usr/bin/env bash
# Frames per second of 300 1080p frames written through the AVI functions as Motion
# JPEG, next to `ffmpeg -c:v mjpeg` at the same quantiser on the same raw frames in the
# same run. Both start from 30 raw bottom-up BGR frames used in turn (ffmpeg loops the
# file and turns the rows over), both write an AVI file, and both are timed as whole
# processes, reading the frames included.
# Usage: bench/avi/run.sh <build-dir>
set -euo pipefail
build=${1:-build/default}
program="$build/bench/avi/avi_write_fps"
work="$build/bench/avi"
frames="$work/frames_1080p.bgr"
mkdir -p "$work"
if [ ! -s "$frames" ]; then
  ffmpeg -hide_banner -loglevel error -y -f lavfi -i "testsrc2=size=1920x1080:rate=25" -frames:v 30 \
    -vf vflip -pix_fmt bgr24 -f rawvideo "$frames"
fi

# shellcheck source=../timing.sh
. "$(dirname "$0")/../timing.sh"

# Quality 7500 is quantiser 9 for Motion JPEG: 2 + 29 * (10000 - quality) / 10000, rounded.
quality=7500
quantiser=9
count=300
ffmpeg_seconds=1e9
avi_seconds=1e9
for _ in 1 2 3; do
  ffmpeg_seconds=$(smaller "$ffmpeg_seconds" "$(seconds_of ffmpeg -hide_banner -nostdin -y -f rawvideo \
    -pix_fmt bgr24 -s 1920x1080 -r 25 -stream_loop 9 -i "$frames" -vf vflip -pix_fmt yuvj420p \
    -c:v mjpeg -q:v "$quantiser" -f avi "$work/ffmpeg.avi")")
  avi_seconds=$(smaller "$avi_seconds" "$(seconds_of "$program" "$frames" 1920 1080 "$count" mjpg "$quality" \
    "$work/avi_functions.avi")")
done
ffmpeg_fps=$(divide "$count" "$ffmpeg_seconds")
avi_fps=$(divide "$count" "$avi_seconds")
ffmpeg_bytes=$(stat -c %s "$work/ffmpeg.avi")
avi_bytes=$(stat -c %s "$work/avi_functions.avi")
printf 'frames                     %d of 1920x1080, Motion JPEG at quantiser %d\n' "$count" "$quantiser"
printf 'ffmpeg -c:v mjpeg          %8.1f fps\n' "$ffmpeg_fps"
printf 'AVI functions (mjpg)       %8.1f fps\n' "$avi_fps"
printf 'file size, AVI functions vs ffmpeg  ratio %.2f  (same quantiser: near 1)\n' \
  "$(divide "$avi_bytes" "$ffmpeg_bytes")"
printf 'AVI functions vs ffmpeg -c:v mjpeg  ratio %.2f  (goal >= 0.95)\n' "$(divide "$avi_fps" "$ffmpeg_fps")"
