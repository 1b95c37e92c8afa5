#!/usr/bin/env bash
# Builds the benchmarks (Release, no tests) into build-bench, runs each one
# pinned to one core, and prints one table of ratios against the baselines
# measured in the same run. Usage: bench/run.sh [--quick]
set -euo pipefail
cd "$(dirname "$0")/.."
ROOT=$PWD
OUT=$ROOT/build-bench/results
REPS=3
[[ "${1:-}" == "--quick" ]] && REPS=1

scripts/install-deps.sh --bench
cmake -S . -B build-bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DKW_TESTS=OFF -DKW_BENCH=ON >/dev/null
cmake --build build-bench -j2 --target bench_display bench_undo bench_targa colour_bench bench_brush \
  bench_anim bench_filter bench_draw bench_custom_brush bench_plugin bench_render bench_flood bench_linear_fill
mkdir -p "$OUT"

# One thread everywhere: our code has one, and the peers are held to one.
export OMP_NUM_THREADS=1 OPENCV_FOR_THREADS_NUM=1
for b in colour_bench bench_undo bench_display bench_targa bench_brush bench_anim bench_filter bench_draw \
         bench_custom_brush bench_render bench_flood bench_linear_fill; do
  echo "running $b" >&2
  # The fills and the plain fill, the display's pairs and the Targa cases with
  # Pillow's take turns, one repetition each, so that a burst of load from
  # another program, or the machine's memory running slower for a while, falls
  # on both sides of a ratio alike.
  extra=()
  [[ $b == colour_bench || $b == bench_display || $b == bench_targa ]] &&
    extra=(--benchmark_enable_random_interleaving=true)
  taskset -c 1 "build-bench/bench/$b" --benchmark_repetitions="$REPS" --benchmark_report_aggregates_only=true \
    "${extra[@]}" --benchmark_format=json --benchmark_out="$OUT/$b.json" --benchmark_out_format=json >/dev/null
done

# The plug-in bench serves its own host on a private session bus.
echo "running bench_plugin" >&2
taskset -c 1 dbus-run-session -- build-bench/bench/bench_plugin --benchmark_repetitions="$REPS" \
  --benchmark_report_aggregates_only=true --benchmark_format=json --benchmark_out="$OUT/bench_plugin.json" \
  --benchmark_out_format=json >/dev/null

/usr/bin/python3 - "$OUT" <<'PY'
import json, sys, os
out = sys.argv[1]
times, skipped = {}, {}
for f in os.listdir(out):
    if not f.endswith('.json'):
        continue
    for b in json.load(open(os.path.join(out, f)))['benchmarks']:
        name = b.get('run_name', b['name'])
        if b.get('error_occurred'):
            skipped[name] = b.get('error_message', 'skipped')
            continue
        if b.get('aggregate_name', 'median') != 'median':
            continue
        # CPU time of the one pinned thread: on a shared machine the wall clock
        # also counts the time other programs held the core. Pillow's cases
        # report the process time Python measured as their manual time; the
        # cases named process_time count the CPU time of every thread of the
        # process (libvips works on threads of its own).
        t = b['real_time'] if 'manual_time' in name else b['cpu_time']
        times[name] = t * {'ns': 1e-6, 'us': 1e-3, 'ms': 1.0, 's': 1e3}[b['time_unit']]

rows = [
    ("Fill (q), solid colour, whole click", "BM_Buffer_Fill_Click/setting:0", "BM_PlainFill"),
    ("Fill pixel loop alone, solid colour", "BM_DeliverFill/setting:0", "BM_PlainFill"),
    ("Fill (q), gradient + noise + paper, whole click", "BM_Buffer_Fill_Click/setting:1", "BM_PlainFill"),
    ("Fill pixel loop alone, gradient + noise + paper", "BM_DeliverFill/setting:1", "BM_PlainFill"),
    ("Fill (q), horizontal gradient, whole click", "BM_Buffer_Fill_Click/setting:2", "BM_PlainFill"),
    ("SaveUndo vs seven plane copies", "BM_SaveUndo/real_time", "BM_SevenPlaneCopies/real_time"),
    ("SaveUndo vs four read, seven written", "BM_SaveUndo/real_time", "BM_FourReadSevenWritten/real_time"),
    ("SaveUndo vs four plane copies", "BM_SaveUndo/real_time", "BM_FourPlaneCopies/real_time"),
    ("RepaintUndo vs four plane copies", "BM_RepaintUndo/real_time", "BM_FourPlaneCopies/real_time"),
    ("FastRefresh32 1920x1080 view vs cv::merge", "BM_FastRefresh32_View", "BM_CvMerge_View"),
    ("RedisplayWindow 1920x1080 view vs cv::merge", "BM_RedisplayWindow_View", "BM_CvMerge_View"),
    ("FastRefresh32 4000x3000 vs cv::merge", "BM_FastRefresh32_Full", "BM_CvMerge_Full"),
    ("FastRefresh32 4000x3000 vs memcpy 48 MB", "BM_FastRefresh32", "BM_Memcpy48MB"),
    ("Targa read 24-bit vs Pillow", "BM_TargaRead24", "BM_PillowRead24/iterations:10/manual_time"),
    ("Targa read RLE vs Pillow", "BM_TargaReadRle", "BM_PillowReadRle/iterations:10/manual_time"),
    ("Targa write 24-bit vs Pillow", "BM_TargaWrite24", "BM_PillowWrite24/iterations:10/manual_time"),
    ("Brush segment (fast) vs libmypaint", "BM_Segment_Fast", "BM_Segment_Libmypaint"),
    ("Frame change 1920x1080 vs six copies + FastRefresh32", "BM_FrameChange", "BM_SixCopiesAndFastRefresh32"),
    ("FastGaussian half 12 vs sepFilter2D 25 taps", "BM_FastGaussian/12/1/real_time",
     "BM_OpenCV_SepFilter2D/12/1/real_time"),
    ("FastGaussian half 32 vs sepFilter2D 65 taps", "BM_FastGaussian/32/1/real_time",
     "BM_OpenCV_SepFilter2D/32/1/real_time"),
    ("SetValue vs cv::LUT", "BM_SetValue/1/real_time", "BM_OpenCV_LUT/1/real_time"),
    ("ConvolveAlpha vs filter2D 3x3", "BM_ConvolveAlpha/1/real_time", "BM_OpenCV_Filter2D3x3/1/real_time"),
    ("Lasso fill, 2000 points, vs one pass over alpha", "BM_LassoFill", "BM_AlphaPass"),
    ("Filled rectangle over the picture vs fill loop + redisplay", "BM_FilledRectangleWhole", "BM_FillLoopAndRedisplay"),
    ("Plug-in get + set of a 4000x3000 plane vs memcpy", "BM_GetAndSetPlane/manual_time", "BM_MemcpyPlane/manual_time"),
    ("Bumpy toy Perlin, 5 octaves, vs libvips perlin x5", "BM_BumpyPerlin5/1/process_time/real_time",
     "BM_VipsPerlin5/process_time/real_time"),
    ("Mesh warp Ok vs one bilinear resample", "BM_ApplyMorph/1/real_time", "BM_BilinearPass/real_time"),
]
print("CPU time per operation (median of the repetitions), pinned to one core")
print(f"{'What':52} {'ours ms':>10} {'baseline ms':>12} {'ratio':>7}")
# A side that skipped, or that the results do not hold at all, gives no ratio:
# the row says which side and why instead of a number.
def missing(name):
    if name in skipped:
        return f"{name} skipped: {skipped[name]}"
    if name not in times:
        return f"{name} is not in the results"
    return None
for what, ours, base in rows:
    why = missing(ours) or missing(base)
    if why:
        print(f"{what:52} {'-':>10} {'-':>12} {'-':>7}  ({why})")
    else:
        print(f"{what:52} {times[ours]:10.3f} {times[base]:12.3f} {times[ours] / times[base]:7.2f}")
for name, why in sorted(skipped.items()):
    print(f"skipped {name}: {why}")
PY
