#!/usr/bin/env bash
# Cycles per second of autoscene-run on a full-screen task with no conditions (each cycle a
# capture of the 1920x1080 screen and its conversion), side by side with a Python ctypes
# XGetImage loop (frames only, no conversion) on the same private Xvfb.
# Usage: bench/runner/run.sh [BUILD_DIR] [SECONDS]
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$(cd "${1:-$here/../../build/default}" && pwd)
seconds=${2:-3}
work=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$work"' EXIT

source "$here/../private-xvfb.sh"
mkdir "$work/task"
# One event that never fires: the runner refuses a task with nothing to run.
cat >"$work/task/script.json" <<'JSON'
{"var_list": [{"type": 1, "id": 1, "name": "never", "value": "0"}],
 "scene_list": [{"name": "any",
   "scene_event": {"name": "any", "item_group": {"type": 5, "item_list": []}},
   "event_list": [{"name": "never", "item_group": {"type": 5, "item_list": [
     {"type": 2, "relation": 1, "variable_id": 1, "compare_value": "1", "state": 0}]},
     "action_list": []}]}]}
JSON

runner=$("$build/bin/autoscene-run" "$work/task" --full-screen --loop-interval 0 --json \
    --time-limit "$((seconds - 1))" | tail -1 |
    python3 -c 'import json,sys; print(round(json.load(sys.stdin)["cycles_per_second"], 1))') ||
    true
python=$(python3 "$here/xgetimage_loop.py" "$seconds")
printf '%-46s %12s %8s\n' "loop (1920x1080, one frame per cycle)" "per second" "ratio"
printf '%-46s %12s %8s\n' "Python ctypes XGetImage, no conversion" "$python" "1.00"
printf '%-46s %12s %8s\n' "autoscene-run, capture + BGRA to BGR" "$runner" \
    "$(python3 -c "print(f'{$runner / $python:.2f}')")"
