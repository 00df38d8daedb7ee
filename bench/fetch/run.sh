#!/usr/bin/env bash
# Frames by time through the module, in one run next to the references:
# - sequential: every frame of a 1080p H.264 clip fetched at its sample time into an
#   RGBA host image, next to `ffmpeg -i clip -pix_fmt rgba -f null -` (both timed as
#   whole processes, best of three taken in turns);
# - random: the median latency of 50 fetches at random times, next to OpenCV's
#   VideoCapture seeking to the same times, with how many frames of each were the right
#   one (read from the frame code drawn into every frame).
# Usage: bench/fetch/run.sh <build-dir>. OpenCV: apt-get install libopencv-dev, then
# reconfigure the build.
set -euo pipefail
build=${1:-build/default}
work="$build/bench/fetch"
clip="$work/clip_1080p_coded.mp4"
fps=30
frames=300
mkdir -p "$work"
if [ ! -s "$clip" ]; then
  # testsrc2 with the frame number in its top eighth: ten grey blocks, bright for a set
  # bit, most significant on the left.
  code="if(lt(Y,H/8),if(mod(floor(N/pow(2,9-floor(X*10/W))),2),235,16),lum(X,Y))"
  chroma="if(lt(Y,H/8),128,cb(X,Y))"
  chroma_r="if(lt(Y,H/8),128,cr(X,Y))"
  ffmpeg -hide_banner -loglevel error -y -f lavfi -i "testsrc2=size=1920x1080:rate=$fps" -frames:v $frames \
    -vf "format=yuv420p,geq=lum='$code':cb='$chroma':cr='$chroma_r'" \
    -c:v libx264 -preset veryfast -crf 20 -g 30 -bf 2 "$clip"
fi

# shellcheck source=../timing.sh
. "$(dirname "$0")/../timing.sh"
median_ms() { awk '{ print $2 }' "$1" | sort -g | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }
# Right when the frame code is the frame shown at that time: floor(t * fps).
right_count() { awk -v fps="$fps" '{ if ($3 == int($1 * fps + 1e-9)) n++ } END { print n + 0 }' "$1"; }

ffmpeg_seconds=1e9
module_seconds=1e9
for _ in 1 2 3; do
  ffmpeg_seconds=$(smaller "$ffmpeg_seconds" "$(seconds_of ffmpeg -hide_banner -nostdin -i "$clip" -pix_fmt rgba -f null -)")
  module_seconds=$(smaller "$module_seconds" "$(seconds_of "$build/bench/fetch/module_fetch" sequential "$clip" $fps $frames)")
  read -r module_frames module_wrong <"$work/last_output"
done
ffmpeg_fps=$(divide "$frames" "$ffmpeg_seconds")
module_fps=$(divide "$module_frames" "$module_seconds")
printf 'clip                  %s (%d frames, 1920x1080 H.264, %d fps)\n' "$clip" "$frames" "$fps"
printf 'ffmpeg rgba null      %8.1f fps\n' "$ffmpeg_fps"
printf 'module, every frame   %8.1f fps (%d frames, %d of every tenth with a wrong frame code)\n' "$module_fps" "$module_frames" "$module_wrong"
printf 'sequential ratio      %8.2f (goal >= 0.90)\n' "$(divide "$module_fps" "$ffmpeg_fps")"

# 50 random times inside frames (a quarter into the frame), the same for both readers.
times=$(awk -v n=50 -v frames=$frames -v fps=$fps 'BEGIN { srand(20261122); for (i = 0; i < n; i++) printf "%.6f ", (int(rand() * frames) + 0.25) / fps }')
# shellcheck disable=SC2086
"$build/bench/fetch/module_fetch" random "$clip" $fps $times >"$work/module_random"
module_median=$(median_ms "$work/module_random")
printf 'module, 50 random     median %7.2f ms, right frame %d of 50\n' "$module_median" "$(right_count "$work/module_random")"
if [ -x "$build/bench/fetch/opencv_seek" ]; then
  # shellcheck disable=SC2086
  "$build/bench/fetch/opencv_seek" "$clip" $times >"$work/opencv_random"
  opencv_median=$(median_ms "$work/opencv_random")
  printf 'OpenCV, 50 random     median %7.2f ms, right frame %d of 50\n' "$opencv_median" "$(right_count "$work/opencv_random")"
  printf 'random speed-up       %8.2f (OpenCV median / module median; goal > 1, always right)\n' \
    "$(divide "$opencv_median" "$module_median")"
else
  echo "OpenCV side not built: apt-get install libopencv-dev, then reconfigure the build"
fi
