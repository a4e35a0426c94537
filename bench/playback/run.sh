#!/usr/bin/env bash
# What recording costs and what replay gains, side by side in one run on a private Xvfb:
# cycles per second of autoscene-run without and with --record on the demo (loop interval
# 0) and on a capture-only task over a static 1920x1080 screen, the bytes a recording takes
# per 1 000 cycles of that static screen, and how much faster autoscene-replay replays the
# demo recording than the recorded run took.
# Usage: bench/playback/run.sh [BUILD_DIR] [SECONDS]
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$(cd "${1:-$here/../../build/default}" && pwd)
seconds=${2:-5}
demo_task="$here/../../examples/demo"
work=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$work"' EXIT

source "$here/../private-xvfb.sh"

mkdir "$work/static"
cat >"$work/static/script.json" <<'JSON'
{"name": "capture only", "loop_interval": 0, "task_mode": 1,
 "var_list": [{"type": 1, "id": 1, "name": "never", "value": "0"}],
 "scene_list": [{"name": "any",
   "scene_event": {"name": "any", "item_group": {"type": 5, "item_list": []}},
   "event_list": [{"name": "never", "item_group": {"type": 5, "item_list": [
     {"type": 2, "relation": 1, "variable_id": 1, "compare_value": "1", "state": 0}]},
     "action_list": []}]}]}
JSON

# The summary's value of KEY from a --json run's last line.
summary() { tail -1 | python3 -c "import json,sys; print(json.load(sys.stdin)['$1'])"; }
ratio() { python3 -c "print(f'{$1 / $2:.2f}')"; }
round1() { python3 -c "print(f'{$1:.1f}')"; }

demo_run() {  # [--record DIR]
    "$build/bin/autoscene-demo-target" >/dev/null 2>&1 &
    local target=$!
    sleep 1
    "$build/bin/autoscene-run" "$demo_task" --loop-interval 0 --json --time-limit 60 "$@" |
        summary cycles_per_second
    kill "$target"
    wait "$target" 2>/dev/null || true
}

demo_plain=$(demo_run)
demo_recorded=$(demo_run --record "$work/demo-recording")
# Three runs of each, taken in turn so that the machine's load falls on both alike; the
# median counts.
median() {
    python3 -c "import statistics, sys; print(statistics.median(map(float, sys.argv[1:])))" "$@"
}
# Runs autoscene-run with the arguments and prints its summary line with the processor time
# it took ("cpu_seconds") added: less bent by other programs' load than cycles per second.
timed_run() {
    python3 - "$build/bin/autoscene-run" "$@" <<'PY'
import json, resource, subprocess, sys
out = subprocess.run(sys.argv[1:], capture_output=True, text=True).stdout
summary = json.loads(out.strip().splitlines()[-1])
usage = resource.getrusage(resource.RUSAGE_CHILDREN)
summary["cpu_seconds"] = usage.ru_utime + usage.ru_stime
print(json.dumps(summary))
PY
}
cpu_per_cycle() { python3 -c "import json,sys; s=json.load(sys.stdin); print(1000*s['cpu_seconds']/s['cycles'])"; }
plain=() recorded=() plain_cpu=() recorded_cpu=()
for run in 1 2 3; do
    plain_json=$(timed_run "$work/static" --json --time-limit "$seconds")
    plain+=("$(echo "$plain_json" | summary cycles_per_second)")
    plain_cpu+=("$(echo "$plain_json" | cpu_per_cycle)")
    rm -rf "$work/static-recording"
    static_json=$(timed_run "$work/static" --json --time-limit "$seconds" \
        --record "$work/static-recording")
    recorded+=("$(echo "$static_json" | summary cycles_per_second)")
    recorded_cpu+=("$(echo "$static_json" | cpu_per_cycle)")
done
static_plain=$(median "${plain[@]}")
static_recorded=$(median "${recorded[@]}")
cpu_plain=$(median "${plain_cpu[@]}")
cpu_recorded=$(median "${recorded_cpu[@]}")
static_cycles=$(echo "$static_json" | summary cycles)
static_bytes=$(du -sb "$work/static-recording" | cut -f1)
task_bytes=$(du -sb "$work/static-recording/task" | cut -f1)
replay_speed=$("$build/bin/autoscene-replay" "$work/demo-recording" --json | summary speed)

printf '%-52s %14s %14s %8s\n' "measure" "without" "with" "ratio"
printf '%-52s %14s %14s %8s\n' "demo, cycles/s (loop interval 0), --record" \
    "$(round1 "$demo_plain")" "$(round1 "$demo_recorded")" "$(ratio "$demo_recorded" "$demo_plain")"
printf '%-52s %14s %14s %8s\n' "static 1920x1080 capture only, cycles/s (median of 3)" \
    "$(round1 "$static_plain")" "$(round1 "$static_recorded")" \
    "$(ratio "$static_recorded" "$static_plain")"
printf '%-52s %14s %14s %8s\n' "static 1920x1080, processor ms per cycle (median)" \
    "$(python3 -c "print(f'{$cpu_plain:.3f}')")" "$(python3 -c "print(f'{$cpu_recorded:.3f}')")" \
    "$(ratio "$cpu_recorded" "$cpu_plain")"
printf '%-52s %14s %14s %8s\n' "static screen, bytes per 1 000 cycles (no task copy)" "-" \
    "$(python3 -c "print(round(($static_bytes - $task_bytes) * 1000 / $static_cycles))")" "-"
printf '%-52s %14s %14s %8s\n' "demo replay: recorded run's time / replay's time" "-" \
    "$(round1 "$replay_speed")" "-"
