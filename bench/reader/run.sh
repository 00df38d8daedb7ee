#!/usr/bin/env bash
# Frames per second of IMFSourceReader reading a 1080p H.264 clip as RGB32, next to
# `ffmpeg -i clip -pix_fmt bgra -f null -` on the same clip in the same run. Both are
# timed as whole processes, opening the file included.
# Usage: bench/reader/run.sh <build-dir>
set -euo pipefail
build=${1:-build/default}
program="$build/bench/reader/reader_fps"
work="$build/bench/reader"
clip="$work/clip_1080p.mp4"
mkdir -p "$work"
if [ ! -s "$clip" ]; then
  ffmpeg -hide_banner -loglevel error -y -f lavfi -i "testsrc2=size=1920x1080:rate=30" -t 10 \
    -c:v libx264 -preset veryfast -crf 20 -g 30 -pix_fmt yuv420p "$clip"
fi

# shellcheck source=../timing.sh
. "$(dirname "$0")/../timing.sh"

frames=$(ffprobe -v error -select_streams v:0 -count_packets -show_entries stream=nb_read_packets \
  -of csv=p=0 "$clip")
# Best of three, taken in turns, so that a busy moment of the machine hits both alike.
ffmpeg_seconds=1e9
reader_seconds=1e9
for _ in 1 2 3; do
  ffmpeg_seconds=$(smaller "$ffmpeg_seconds" "$(seconds_of ffmpeg -hide_banner -nostdin -i "$clip" -pix_fmt bgra -f null -)")
  reader_seconds=$(smaller "$reader_seconds" "$(seconds_of "$program" "$clip")")
  read -r reader_frames _ _ <"$work/last_output"
done
reader_fps=$(divide "$reader_frames" "$reader_seconds")
ffmpeg_fps=$(divide "$frames" "$ffmpeg_seconds")
printf 'clip              %s (%d frames, 1920x1080 H.264)\n' "$clip" "$frames"
printf 'ffmpeg bgra null  %8.1f fps\n' "$ffmpeg_fps"
printf 'IMFSourceReader   %8.1f fps (%d frames in %.2f s)\n' "$reader_fps" "$reader_frames" "$reader_seconds"
printf 'ratio             %8.2f (goal >= 0.90)\n' "$(divide "$reader_fps" "$ffmpeg_fps")"
