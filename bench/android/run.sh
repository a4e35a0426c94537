#!/usr/bin/env bash
# Frames and taps per second on two 720x1280 test devices through the real adb, side by
# side in one run: the device-service route, raw screencap, the PNG route, taps on each
# (adb taps also one process each, as before the kept shell). A private adb server
# (its own port) is started and killed; a user's adb server is never touched.
# Usage: bench/android/run.sh [BUILD_DIR]   (default build/default)
set -euo pipefail
build=${1:-build/default}
bench=$(find "$build" -name android_bench -type f -perm -u+x | head -n1)
device=$(find "$build" -name autoscene-test-device -type f -perm -u+x | head -n1)
if [ -z "$bench" ] || [ -z "$device" ]; then
    echo "run.sh: build android_bench and autoscene-test-device in $build first" >&2
    exit 2
fi

work=$(mktemp -d)
ANDROID_ADB_SERVER_PORT=$(python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
export ANDROID_ADB_SERVER_PORT
cleanup() {
    adb kill-server >/dev/null 2>&1 || true
    kill $(jobs -p) 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT

# The second device reports a raw pixel format no host reads, so it is driven by PNG.
"$device" --size 720x1280 --textured >"$work/raw.out" &
"$device" --size 720x1280 --textured --raw-format 9 >"$work/png.out" &
for _ in $(seq 100); do [ -s "$work/raw.out" ] && [ -s "$work/png.out" ] && break; sleep 0.05; done
AUTOSCENE_BENCH_RAW_SERIAL=$(sed -n 's/^listening on //p' "$work/raw.out")
AUTOSCENE_BENCH_PNG_SERIAL=$(sed -n 's/^listening on //p' "$work/png.out")
AUTOSCENE_BENCH_SERVICE_FILE=$work/localservice.jar
echo "service code" >"$AUTOSCENE_BENCH_SERVICE_FILE"
export AUTOSCENE_BENCH_RAW_SERIAL AUTOSCENE_BENCH_PNG_SERIAL AUTOSCENE_BENCH_SERVICE_FILE
adb connect "$AUTOSCENE_BENCH_RAW_SERIAL" >/dev/null
adb connect "$AUTOSCENE_BENCH_PNG_SERIAL" >/dev/null

"$bench" --benchmark_format=csv 2>/dev/null | awk -F, '
    /^"BM_/ {
        gsub(/"/, "", $1); name = substr($1, 4); sub(/\/.*/, "", name)
        ms[name] = $3; order[++n] = name
    }
    END {
        png = ms["CapturePng"]; perCall = ms["TapAdbPerCall"]
        printf "%-16s %10s %10s %14s\n", "route (720x1280)", "ms per op", "per second", "speed-up"
        for (i = 1; i <= n; i++) {
            name = order[i]
            ratio = ""
            if (name ~ /^Capture/ && ms[name] > 0) ratio = sprintf("%.1fx PNG", png / ms[name])
            if (name ~ /^Tap/ && ms[name] > 0) ratio = sprintf("%.1fx per-call", perCall / ms[name])
            printf "%-16s %10.1f %10.1f %14s\n", name, ms[name], 1000 / ms[name], ratio
        }
    }'
