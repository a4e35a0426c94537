#!/usr/bin/env bash
# A private Wine session on its own Xvfb for the Win32 tests.
#   wine-env.sh start <state-dir>            create the prefix once, start Xvfb and wineserver
#   wine-env.sh run <state-dir> <exe> [args] run a Windows program in that session
#   wine-env.sh stop <state-dir>             end wineserver and Xvfb
set -euo pipefail

action=${1:?action}
state=${2:?state directory}
shift 2
mkdir -p "$state"
state=$(cd "$state" && pwd)

export WINEPREFIX="$state/prefix"
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
export WINEARCH=win64

load_display() {
    [ -f "$state/display" ] || { echo "wine-env: no session; run 'start' first" >&2; exit 1; }
    DISPLAY=$(cat "$state/display")
    export DISPLAY
}

start_xvfb() {
    local n
    for n in $(seq 90 160); do
        [ -e "/tmp/.X11-unix/X$n" ] || [ -e "/tmp/.X$n-lock" ] && continue
        setsid Xvfb ":$n" -screen 0 1024x768x24 -nolisten tcp </dev/null >"$state/xvfb.log" 2>&1 &
        echo $! >"$state/xvfb.pid"
        local waited
        for waited in $(seq 50); do
            [ -e "/tmp/.X11-unix/X$n" ] && { echo ":$n" >"$state/display"; return 0; }
            kill -0 "$(cat "$state/xvfb.pid")" 2>/dev/null || break
            sleep 0.1
        done
    done
    echo "wine-env: could not start Xvfb" >&2
    exit 1
}

case $action in
start)
    "$0" stop "$state" || true
    start_xvfb
    load_display
    trap 'echo "wine-env: start failed; see $state/wine.log" >&2' ERR
    # Wine's background processes outlive these commands: they must not hold ctest's
    # output pipes open, so every command writes to the log instead.
    quiet() { "$@" </dev/null >>"$state/wine.log" 2>&1; }
    if [ ! -f "$WINEPREFIX/.autoscene-ready" ]; then
        rm -rf "$WINEPREFIX"
        quiet wineboot -i
        # Unmanaged windows hide and move at once; crashes end without a dialog.
        quiet wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f
        quiet wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f
        quiet wineserver -w
        touch "$WINEPREFIX/.autoscene-ready"
    fi
    quiet wineserver -p
    # Starts explorer and the services now, outside any test's pipes.
    quiet wine cmd /c exit 0
    ;;
run)
    load_display
    exec wine "$@"
    ;;
stop)
    wineserver -k 2>/dev/null || true
    if [ -f "$state/xvfb.pid" ]; then
        kill "$(cat "$state/xvfb.pid")" 2>/dev/null || true
        rm -f "$state/xvfb.pid" "$state/display"
    fi
    ;;
*)
    echo "wine-env: unknown action $action" >&2
    exit 2
    ;;
esac
