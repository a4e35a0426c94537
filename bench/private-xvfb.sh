# Sourced by the benchmark scripts: starts a private 1920x1080 Xvfb as a background job of
# the caller (its EXIT trap ends it) and exports DISPLAY. Needs $work, a scratch folder.
exec 3>"$work/display"
Xvfb -displayfd 3 -screen 0 1920x1080x24 -nolisten tcp >/dev/null 2>&1 &
for _ in $(seq 50); do [ -s "$work/display" ] && break; sleep 0.1; done
export DISPLAY=":$(cat "$work/display")"
