#!/usr/bin/env bash
# Export speed: frames a second of `sorvel2-cli export` to uncompressed AVI, for the
# example project and for a 4-layer 1920x1080 project (one picture four times, scaled,
# turned and blurred by ぼかし, composed over each other, 120 frames), each beside FFmpeg
# doing the same work through its filter graph (scale, rotate, gblur, overlay) on the same
# picture. Whole runs are timed, the best of RUNS (3 unless set).
#
# usage: bench/export_bench.sh [BUILD_DIR]
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="${1:-$root/build}"
cli="$build/bin/sorvel2-cli"
[ -x "$cli" ] || { echo "export_bench: $cli is not built" >&2; exit 2; }
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

# The best wall time of RUNS runs of a command, in seconds.
best_of_three() {
  local best=""
  for _ in $(seq "${RUNS:-3}"); do
    local start end took
    start=$(date +%s.%N)
    "$@" >/dev/null 2>&1
    end=$(date +%s.%N)
    took=$(echo "$end - $start" | bc -l)
    if [ -z "$best" ] || [ "$(echo "$took < $best" | bc -l)" = 1 ]; then best=$took; fi
  done
  echo "$best"
}

fps() { echo "scale=2; $1 / $2" | bc -l; }

# The picture: a 1920x1080 test card, made by FFmpeg when present, else the example's
# bars (then FFmpeg is not compared either).
picture="$work/card.png"
if command -v ffmpeg >/dev/null; then
  ffmpeg -v error -f lavfi -i testsrc2=size=1920x1080 -frames:v 1 "$picture"
else
  picture="$root/examples/media/bars.bmp"
fi

# Four layers: 60 % of the picture, turned by 15, 30, 45 and 60 degrees, blurred by 4,
# placed in the four quarters of the frame.
{
  printf '[project]\nversion=2001801\n[scene.0]\nscene=0\nvideo.width=1920\nvideo.height=1080\n'
  printf 'video.rate=30\nvideo.scale=1\naudio.rate=48000\n'
  layer=0
  for placement in "-480 -270 15" "480 -270 30" "-480 270 45" "480 270 60"; do
    set -- $placement
    printf '[%d]\nlayer=%d\nframe=0,119\n' "$layer" "$layer"
    printf '[%d.0]\neffect.name=画像ファイル\nファイル=%s\n' "$layer" "$picture"
    printf '[%d.1]\neffect.name=ぼかし\n範囲=4\n' "$layer"
    printf '[%d.2]\neffect.name=標準描画\nX=%s\nY=%s\nZ軸回転=%s\n拡大率=60.00\n' "$layer" "$1" "$2" "$3"
    layer=$((layer + 1))
  done
} >"$work/layers.svj2"

echo "machine: $(nproc) cores; renderer as sorvel2-cli logs it (llvmpipe without a GPU)"
example_frames=90
t=$(best_of_three "$cli" export "$root/examples/demo.svj2" -o "$work/demo.avi")
echo "example project, 1280x720, $example_frames frames: sorvel2-cli $(fps $example_frames "$t") fps (${t}s)"
t_ours=$(best_of_three "$cli" export "$work/layers.svj2" -o "$work/layers.avi")
echo "4 layers at 1920x1080, 120 frames: sorvel2-cli $(fps 120 "$t_ours") fps (${t_ours}s)"

if command -v ffmpeg >/dev/null; then
  graph="[0]format=rgba,split=4[a][b][c][d]"
  i=0
  for placement in "480 270 15" "1440 270 30" "480 810 45" "1440 810 60"; do
    set -- $placement
    label=$(printf "\\x$(printf %x $((97 + i)))")
    graph="$graph;[$label]scale=iw*0.6:ih*0.6,gblur=sigma=2.3,rotate=$3*PI/180:ow=rotw($3*PI/180):oh=roth($3*PI/180):c=none[r$i]"
    i=$((i + 1))
  done
  graph="$graph;color=c=black@0:s=1920x1080:r=30,format=rgba[bg]"
  graph="$graph;[bg][r0]overlay=480-w/2:270-h/2[o0];[o0][r1]overlay=1440-w/2:270-h/2[o1]"
  graph="$graph;[o1][r2]overlay=480-w/2:810-h/2[o2];[o2][r3]overlay=1440-w/2:810-h/2[o3]"
  t_ffmpeg=$(best_of_three ffmpeg -v error -y -loop 1 -framerate 30 -i "$picture" -filter_complex "$graph" \
    -map "[o3]" -frames:v 120 -c:v rawvideo -pix_fmt bgr24 "$work/ffmpeg.avi")
  echo "4 layers at 1920x1080, 120 frames: ffmpeg $(fps 120 "$t_ffmpeg") fps (${t_ffmpeg}s); sorvel2-cli takes $(echo "scale=2; $t_ours / $t_ffmpeg" | bc -l) times as long"
else
  echo "ffmpeg is not installed: no comparison (tools/install-deps.sh installs it)"
fi
