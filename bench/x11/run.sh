#!/usr/bin/env bash
# Runs the X11 benchmarks on a private 1920x1080 Xvfb with a full-screen demo target and
# prints wall-clock milliseconds per operation, captures also as a ratio to the foreground path.
# Usage: bench/x11/run.sh [BUILD_DIR]   (default build/default)
set -euo pipefail
build=${1:-build/default}
bench=$(find "$build" -name x11_bench -type f -perm -u+x | head -n1)
target=$(find "$build" -name autoscene-demo-target -type f -perm -u+x | head -n1)
if [ -z "$bench" ] || [ -z "$target" ]; then
    echo "run.sh: build x11_bench and autoscene-demo-target in $build first" >&2
    exit 2
fi

work=$(mktemp -d)
exec 3> "$work/display"
Xvfb -displayfd 3 -screen 0 1920x1080x24 -nolisten tcp 2>/dev/null &
xvfb=$!
demo=""
cleanup() {
    [ -n "$demo" ] && kill "$demo" 2>/dev/null
    kill "$xvfb" 2>/dev/null
    rm -rf "$work"
}
trap cleanup EXIT
for _ in $(seq 100); do [ -s "$work/display" ] && break; sleep 0.05; done
export DISPLAY=":$(head -n1 "$work/display")"

"$target" --geometry 1920x1080+0+0 --log "$work/events.log" &
demo=$!
for _ in $(seq 100); do grep -q '^ready' "$work/events.log" 2>/dev/null && break; sleep 0.05; done
AUTOSCENE_BENCH_WINDOW=$(sed -n 's/^ready window=\(0x[0-9a-f]*\).*/\1/p' "$work/events.log")
export AUTOSCENE_BENCH_WINDOW

"$bench" --benchmark_format=csv 2>/dev/null | awk -F, '
    /^"BM_/ {
        gsub(/"/, "", $1); name = substr($1, 4); sub(/\/.*/, "", name)
        if ($10 != "") { skipped[name] = $10; order[++n] = name; next }
        ms[name] = $3; order[++n] = name
    }
    END {
        base = ms["ViewForeground"]
        printf "%-24s %10s %18s\n", "operation (1920x1080)", "ms per op", "x foreground view"
        for (i = 1; i <= n; i++) {
            name = order[i]
            if (name in skipped) { printf "%-24s %10s\n", name, "n/a (" skipped[name] ")"; continue }
            ratio = (name ~ /^(View|Capture)/ && base > 0) ? sprintf("%.1fx", ms[name] / base) : ""
            printf "%-24s %10.3f %18s\n", name, ms[name], ratio
        }
    }'
