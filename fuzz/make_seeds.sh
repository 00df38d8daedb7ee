#!/usr/bin/env bash
# Makes the seed corpora of the fuzz targets into CORPUS_DIR (nothing of it is
# committed): for read and url_reader, the fixture generator's clips and tiny clips of
# every container and codec the platform reads, each followed by the eight bytes of a
# read plan (three times and two switches, taken from the end of an input); for text,
# urls, paths and format texts. export starts from nothing.
#   fuzz/make_seeds.sh BUILD_DIR CORPUS_DIR
set -euo pipefail
build=$(realpath "$1")
corpus=$(realpath -m "$2")
media="$corpus/media"
text="$corpus/text"
mkdir -p "$media" "$text" "$corpus/export"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

"$build/tests/fixtures/generate_fixtures" "$work/fixtures" >/dev/null

# Tiny clips: 5 frames of 64x48 (H.263: 128x96, its smallest size) at 10 fps, 0.5 s of
# 8 kHz sound. NAME VIDEO-OPTIONS AUDIO-OPTIONS; "-" for none.
tiny() {
  local name=$1 video=$2 audio=$3 size=64x48
  [[ $video == *h263* ]] && size=128x96
  local args=(-hide_banner -loglevel error -y)
  [ "$video" != - ] && args+=(-f lavfi -i "testsrc=size=$size:rate=10:duration=0.5")
  [ "$audio" != - ] && args+=(-f lavfi -i "sine=frequency=440:sample_rate=8000:duration=0.5")
  [ "$video" != - ] && args+=($video) || args+=(-vn)
  [ "$audio" != - ] && args+=($audio) || args+=(-an)
  ffmpeg "${args[@]}" "$work/tiny/$name" </dev/null
}
mkdir -p "$work/tiny"
tiny h264_aac.mp4 "-c:v libx264 -preset ultrafast -g 3 -bf 1 -pix_fmt yuv420p" "-c:a aac -b:a 16k"
tiny mpeg4_mp3.mp4 "-c:v mpeg4" "-c:a libmp3lame -ar 22050"
tiny h264_faststart.m4v "-c:v libx264 -preset ultrafast -movflags +faststart -pix_fmt yuv420p" -
tiny mjpeg_pcm.mov "-c:v mjpeg -pix_fmt yuvj420p" "-c:a pcm_s16le"
tiny mpeg4_alac.mov "-c:v mpeg4" "-c:a alac"
tiny h263_aac.3gp "-c:v h263" "-c:a aac -b:a 16k"
tiny mpeg4_aac.3g2 "-c:v mpeg4" "-c:a aac -b:a 16k"
tiny aac.m4a - "-c:a aac -b:a 16k"
tiny mjpeg_pcm.avi "-c:v mjpeg -pix_fmt yuvj420p" "-c:a pcm_s16le"
tiny msmpeg4v2_mp3.avi "-c:v msmpeg4v2" "-c:a libmp3lame -ar 22050"
tiny msmpeg4v3_adpcm.avi "-c:v msmpeg4" "-c:a adpcm_ima_wav"
tiny raw_bgr24.avi "-c:v rawvideo -pix_fmt bgr24" -
tiny cinepak.avi "-c:v cinepak" -
tiny msvideo1.avi "-c:v msvideo1" -
tiny huffyuv.avi "-c:v huffyuv" -
tiny ffv1.avi "-c:v ffv1" -
tiny wmv1_wmav2.asf "-c:v wmv1" "-c:a wmav2"
tiny wmv2_wmav2.wmv "-c:v wmv2" "-c:a wmav2"
tiny wmav2.wma - "-c:a wmav2"
tiny mp3.mp3 - "-c:a libmp3lame -ar 22050"
tiny mp2.mp2 - "-c:a mp2 -ar 32000"
tiny pcm.wav - "-c:a pcm_s16le"
tiny adpcm.wav - "-c:a adpcm_ima_wav"
tiny flac.flac - "-c:a flac"
tiny vorbis.ogg - "-c:a libvorbis"
tiny h264_opus.mkv "-c:v libx264 -preset ultrafast -pix_fmt yuv420p" "-c:a libopus -ar 48000"
tiny h264_aac.flv "-c:v libx264 -preset ultrafast -pix_fmt yuv420p" "-c:a aac -b:a 16k"
tiny mpeg2_mp2.ts "-c:v mpeg2video" "-c:a mp2 -ar 32000"
tiny raw.y4m "-pix_fmt yuv420p" -
cat >"$work/tiny/captions.smi" <<'SAMI'
<SAMI><HEAD><STYLE TYPE="text/css"><!-- P { margin-left: 1pt; } .ENCC { Name: English; lang: en-US; } --></STYLE></HEAD>
<BODY><SYNC Start=0><P Class=ENCC>One</P><SYNC Start=500><P Class=ENCC>Two</P></BODY></SAMI>
SAMI

# Every clip with a plan at its end: times of 0.20, 4.50 and 5.00 s, square pixels, forced.
for clip in "$work"/fixtures/* "$work"/tiny/*; do
  { cat "$clip"; printf '\x01\x01\xf4\x01\xc2\x01\x14\x00'; } >"$media/$(basename "$clip")"
done

n=0
while IFS= read -r line; do
  printf '%s' "$line" >"$text/seed$((n++))"
done <<'TEXTS'
memory://clip.mp4
file:///tmp/a%20b/movie.MP4
relative/path/../to/clip.mov/
/
C:\Users\clip.avi
http://example.com:8080/a?b=c#d
Error 0x@{x}: @
@{.3} seconds, @{8'0'.2} @@ @{x} @ @{unit=s;digits=4}
g_mediaFoundationUseMSUrlReader
TEXTS
echo "seeds: $(ls "$media" | wc -l) media, $(ls "$text" | wc -l) text in $corpus"
