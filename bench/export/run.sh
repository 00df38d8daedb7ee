#!/usr/bin/env bash
# Export through the media module's MP4 saver next to ffmpeg, in one run:
#  (a) 300 frames of 1080p30 from the host's test-pattern source at 8 Mbit/s with a key
#      frame every 60, next to ffmpeg encoding the same raw frames (piped in) with the
#      platform's x264 preset and the same settings; goal >= 0.95 of ffmpeg's rate;
#  (b) tessel convert of a 10 s 1080p30 H.264+AAC clip to MP4 at the same settings, next
#      to ffmpeg's transcode with them; goal >= 0.8 of ffmpeg's rate;
#  (c) the peak memory of (b) next to ffmpeg's; goal <= 1.5 times.
# Each side is timed as a whole process, best of three taken in turns.
# Usage: bench/export/run.sh <build-dir>
set -euo pipefail
build=$(cd "${1:-build/default}" && pwd)
work="$build/bench/export"
tessel="$build/tools/tessel/tessel"
clip="$work/clip_1080p_aac.mp4"
mkdir -p "$work"

# shellcheck source=../timing.sh
. "$(dirname "$0")/../timing.sh"

# The sink writer's H.264: libx264, preset superfast, main profile, BT.709 from 720 lines.
x264=(-c:v libx264 -preset superfast -profile:v main -b:v 8M -g 60 -pix_fmt yuv420p
      -vf scale=out_color_matrix=bt709 -colorspace bt709 -color_primaries bt709 -color_trc bt709)

if ! "$build/bench/export/export_pattern" "$work/probe.mp4" 1 >/dev/null 2>"$work/probe.err"; then
  echo "export: the media module has no working MP4 saver yet: $(cat "$work/probe.err")"
  exit 0
fi

if [ ! -s "$clip" ]; then
  ffmpeg -hide_banner -loglevel error -y -f lavfi -i "testsrc2=size=1920x1080:rate=30" \
    -f lavfi -i "sine=frequency=440:sample_rate=48000" -t 10 -c:v libx264 -preset veryfast -crf 20 -g 30 \
    -pix_fmt yuv420p -c:a aac -b:a 192k -ac 2 "$clip"
fi

pattern_ours=1e9
pattern_ffmpeg=1e9
convert_ours=1e9
convert_ffmpeg=1e9
for _ in 1 2 3; do
  pattern_ours=$(smaller "$pattern_ours" "$(seconds_of "$build/bench/export/export_pattern" "$work/pattern.mp4" 300)")
  pattern_ffmpeg=$(smaller "$pattern_ffmpeg" "$(seconds_of sh -c "'$build/bench/export/pattern_frames' 300 | \
    ffmpeg -hide_banner -loglevel error -nostdin -y -f rawvideo -pix_fmt rgba -s 1920x1080 -r 30 -i - \
    ${x264[*]} '$work/pattern_ffmpeg.mp4'")")
  convert_ours=$(smaller "$convert_ours" "$(seconds_of "$tessel" convert "$clip" "$work/convert.mp4" \
    --bitrate 8M --keyframes 60 --audio-codec aac --audio-kbps 192 --audio-rate 48000)")
  convert_ffmpeg=$(smaller "$convert_ffmpeg" "$(seconds_of ffmpeg -hide_banner -loglevel error -nostdin -y \
    -i "$clip" "${x264[@]}" -c:a aac -b:a 192k -ar 48000 -ac 2 "$work/convert_ffmpeg.mp4")")
done

# Peak resident memory of one run of each side of (b).
peak_of() { "$build/bench/export/peak_memory" "$@" 2>&1 >/dev/null | awk '/^peak_memory_kb/ { print $2 }'; }
memory_ours=$(peak_of "$tessel" convert "$clip" "$work/convert.mp4" --bitrate 8M --keyframes 60)
memory_ffmpeg=$(peak_of ffmpeg -hide_banner -loglevel error -nostdin -y -i "$clip" "${x264[@]}" -c:a aac -b:a 192k \
  -ar 48000 -ac 2 "$work/convert_ffmpeg.mp4")

printf 'pattern 1080p30, 300 frames: export %.2f s, ffmpeg %.2f s\n' "$pattern_ours" "$pattern_ffmpeg"
printf 'convert 10 s 1080p30 H.264+AAC: tessel %.2f s, ffmpeg %.2f s; peak memory %d kB, %d kB\n' \
  "$convert_ours" "$convert_ffmpeg" "$memory_ours" "$memory_ffmpeg"
printf 'pattern to MP4, rate of ffmpeg          ratio %.2f  (goal >= 0.95)\n' "$(divide "$pattern_ffmpeg" "$pattern_ours")"
printf 'tessel convert to MP4, rate of ffmpeg   ratio %.2f  (goal >= 0.8)\n' "$(divide "$convert_ffmpeg" "$convert_ours")"
printf 'tessel convert peak memory, of ffmpeg   ratio %.2f  (goal <= 1.5)\n' "$(divide "$memory_ours" "$memory_ffmpeg")"
