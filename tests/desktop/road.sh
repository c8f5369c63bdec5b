#!/usr/bin/env bash
# road.sh PROGRAM SETUP JETSQL CHECKOUT: drives the built program under a virtual display with a window
# manager, by keys and the mouse, as a person would: from an estimate to a job, its traveler, a PDF of it,
# and its assembly, put together by dragging. What test doubles replace elsewhere (previews, dialogs over dialogs, Alt keys, the end) is real here.
set -euo pipefail
program=$1 setup=$2 jetsql=$3 checkout=$4
export ASAN_OPTIONS=detect_leaks=0 # the desktop's libraries keep what they have
work=$(mktemp -d)
pids=()
stop() {
    kill "${pids[@]}" 2>/dev/null || true
    rm -rf "$work"
}
trap stop EXIT
fail() {
    echo "FAILED: $1"
    echo "windows:"; xdotool search --onlyvisible --class Mirsa getwindowname %@ 2>/dev/null || true
    echo "active: $(active)"
    exit 1
}
active() { xdotool getactivewindow getwindowname 2>/dev/null || true; }
# Whatever takes its time on a busy machine: up to a minute.
until_true() {
    local what=$1; shift
    for _ in $(seq 240); do
        if "$@"; then return; fi
        sleep 0.25
    done
    fail "$what"
}
is_active() { [ "$(active)" = "$1" ]; }
active_begins() { [[ "$(active)" == "$1"* ]]; }
expect() { until_true "\"$1\" should be in front" is_active "$1"; sleep 0.3; }
key() { xdotool key --clearmodifiers --delay 40 "$@"; sleep 0.2; }
write() { xdotool type --clearmodifiers --delay 15 "$1"; sleep 0.2; }
sql() { "$jetsql" "$work/shop" <<<"$1"; }
# From one row of the tree in front to another, the root being row 0, in steps as a hand moves.
drag() {
    local window left=100 top=100 row=18
    window=$(xdotool getactivewindow)
    xdotool mousemove --window "$window" $left $((top + row * $1)) sleep 0.2 mousedown 1 sleep 0.2
    for step in 1 2 3 4 5 6 7 8; do
        xdotool mousemove --window "$window" $((left + step)) $((top + row * $1 + row * ($2 - $1) * step / 8)) sleep 0.05
    done
    xdotool sleep 0.2 mouseup 1 sleep 0.5
}
assembly_is() { [ "$(sql "SELECT JobNo - $first, AssemblyJobNo FROM Job WHERE PONo = 'PO-4711' ORDER BY JobNo" |
    tail -n +2 | tr '\t\n' ', ')" = "$1" ]; }
gone() { ! kill -0 "$1" 2>/dev/null; }

mkdir "$work/shop" "$work/home"
export HOME=$work/home XDG_CONFIG_HOME=$work/home/.config
cp "$program" "$work/shop/Mirsa"
cp "$checkout"/reports/*.rpt "$work/shop/"
"$setup" new "$work/shop" >/dev/null
"$setup" sample "$work/shop" >/dev/null

for attempt in 1 2 3 4 5; do
    export DISPLAY=:$((100 + RANDOM % 800))
    Xvfb "$DISPLAY" -screen 0 1366x768x24 -nolisten tcp >/dev/null 2>&1 &
    pids+=($!)
    sleep 1
    if kill -0 $! 2>/dev/null; then break; fi
    [ "$attempt" -lt 5 ] || { echo "FAILED: no virtual display"; exit 1; }
done
openbox >/dev/null 2>&1 &
pids+=($!)
sleep 0.5
QT_QPA_PLATFORM=xcb "$work/shop/Mirsa" >"$work/out" 2>&1 &
mirsa=$!
pids+=($mirsa)

expect "Mirsa Login"
write "Admin"; key Tab; write "Bolts"; key Return
until_true "the main window should be in front" active_begins "Mirsa Project Manager"
sleep 0.5
key alt+m; key e; sleep 1.5                # Modules, Estimate: opens on the newest
key alt+j                                  # Create Job
expect "Create a Job"
key alt+y                                  # it was used before
expect "Create a Job from Estimate"
key alt+d; write "12/24/2030"; key Tab; write "PO-4711"; key alt+t; key Return
expect "Create a Job"
key Return
# The preview outlives the dialog that asked for it, and stands in front.
expect "Traveler Report"
key ctrl+s
expect "Save as PDF"
key ctrl+a; write "$work/traveler.pdf"; key Return
until_true "the PDF should be saved" test -s "$work/traveler.pdf"
pdftotext "$work/traveler.pdf" - | grep -q "PO-4711" || fail "the traveler should name the order"
expect "Traveler Report"
key Escape
until_true "the main window should be in front again" active_begins "Mirsa Project Manager"
# Two more jobs come to the order from elsewhere. The new one is dropped on the middle one; that one is
# then refused below its own part.
first=$(sql "SELECT MAX(JobNo) - 2 FROM Job" | sed -n 2p)
sql "UPDATE Job AS J, Job AS N SET J.CustID = N.CustID, J.PONo = N.PONo, J.AssemblyJobNo = 0 WHERE \
N.JobNo = $((first + 2)) AND J.JobNo IN ($first, $((first + 1)))" >/dev/null
key ctrl+shift+j; sleep 1.5
key alt+y
expect "Job Assembly Information"
drag 3 2
until_true "a job should be dropped on another" assembly_is "0,0 1,0 2,$((first + 1))  "
drag 2 3
sleep 1
assembly_is "0,0 1,0 2,$((first + 1))  " || fail "a job should not come below its own part"
expect "Job Assembly Information"
key Escape
until_true "the main window should be in front again" active_begins "Mirsa Project Manager"
key alt+F4
until_true "the program should end" gone $mirsa
wait $mirsa || fail "the program ended with $?: $(cat "$work/out")"
sqlite_files=$(cd "$work/shop" && ls Mirsa.mdb*)
[ "$sqlite_files" = Mirsa.mdb ] || fail "the database isn't one file at the end: $sqlite_files"
echo "The road was driven: 1 passed, 0 failed"
