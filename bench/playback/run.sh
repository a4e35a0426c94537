#!/usr/bin/env bash
# What recording costs and what replay gains, side by side in one run on a private Xvfb:
# cycles per second of autoscene-run without and with --record on the demo (loop interval
# 0) and on a capture-only task over a static 1920x1080 screen, the bytes a recording takes
# per 1 000 cycles of that static screen, and how much faster autoscene-replay replays the
# demo recording than the recorded run took.
# Usage: [ROUNDS=7] bench/playback/run.sh [BUILD_DIR] [SECONDS]
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$(cd "${1:-$here/../../build/default}" && pwd)
seconds=${2:-5}
rounds=${ROUNDS:-7}
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
round1() { python3 -c "print(f'{$1:.1f}')"; }
round2() { python3 -c "print(f'{$1:.2f}')"; }

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
demo_run() {  # [--record DIR]
    "$build/bin/autoscene-demo-target" >/dev/null 2>&1 &
    local target=$!
    sleep 1
    timed_run "$demo_task" --loop-interval 0 --json --time-limit 60 "$@"
    kill "$target"
    wait "$target" 2>/dev/null || true
}
static_run() {  # [--record DIR]
    timed_run "$work/static" --json --time-limit "$seconds" "$@"
}

# Each round runs a task without and with --record back to back, in turns of which goes
# first, and yields the ratio of the two: the machine's load, which changes from one minute
# to the next, falls on both runs of a round alike. The median round counts.
# Prints "plain recorded rate-ratio cpu-ratio" per round; $1 runs one (given --record DIR).
rounds() {
    local run=$1 plain recorded
    for round in $(seq "$rounds"); do
        rm -rf "$work/recording"
        if ((round % 2)); then
            plain=$($run)
            recorded=$($run --record "$work/recording")
        else
            recorded=$($run --record "$work/recording")
            plain=$($run)
        fi
        python3 - "$plain" "$recorded" <<'PY'
import json, sys
p, r = (json.loads(a) for a in sys.argv[1:])
cpu = lambda s: s["cpu_seconds"] / s["cycles"]
print(p["cycles_per_second"], r["cycles_per_second"],
      r["cycles_per_second"] / p["cycles_per_second"], cpu(r) / cpu(p))
PY
    done
}
column() { cut -d' ' -f"$1" | xargs python3 -c "import statistics, sys; print(statistics.median(map(float, sys.argv[1:])))"; }

demo_rounds=$(rounds demo_run)
mv "$work/recording" "$work/demo-recording"
static_rounds=$(rounds static_run)
static_json=$(static_run --record "$work/static-recording")
static_cycles=$(echo "$static_json" | summary cycles)
static_bytes=$(du -sb "$work/static-recording" | cut -f1)
task_bytes=$(du -sb "$work/static-recording/task" | cut -f1)
replay_speed=$("$build/bin/autoscene-replay" "$work/demo-recording" --json | summary speed)

row() { printf '%-60s %12s %12s %8s\n' "$@"; }
row "measure (median of $rounds alternating rounds)" "without" "with" "ratio"
row "demo, cycles/s (loop interval 0), --record" \
    "$(round1 "$(echo "$demo_rounds" | column 1)")" "$(round1 "$(echo "$demo_rounds" | column 2)")" \
    "$(round2 "$(echo "$demo_rounds" | column 3)")"
row "static 1920x1080 capture only, cycles/s" \
    "$(round1 "$(echo "$static_rounds" | column 1)")" \
    "$(round1 "$(echo "$static_rounds" | column 2)")" "$(round2 "$(echo "$static_rounds" | column 3)")"
row "static 1920x1080, processor time per cycle" "-" "-" \
    "$(round2 "$(echo "$static_rounds" | column 4)")"
row "static screen, bytes per 1 000 cycles (no task copy)" "-" \
    "$(python3 -c "print(round(($static_bytes - $task_bytes) * 1000 / $static_cycles))")" "-"
row "demo replay: recorded run's time / replay's time" "-" "$(round1 "$replay_speed")" "-"
echo "rounds (cycles/s without, with, ratio, processor time ratio):"
echo "demo:"
echo "$demo_rounds"
echo "static:"
echo "$static_rounds"
