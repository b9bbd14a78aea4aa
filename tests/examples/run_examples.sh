#!/usr/bin/env bash
# run_examples.sh FOLDER: runs the built examples and compares what they say.
set -euo pipefail
cd "$1"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# expect OUTPUT COMMAND...
expect() {
    local output
    output=$("${@:2}") || { echo "$2 failed"; exit 1; }
    [[ $output == $1 ]] || { printf '%s said:\n%s\n' "$2" "$output"; exit 1; }
}
# refuses MESSAGE COMMAND...
refuses() {
    if "${@:2}" >"$work/output" 2>&1; then echo "$2 did not fail" && exit 1; fi
    grep -q "$1" "$work/output" || { cat "$work/output"; exit 1; }
}
loaded=$'plug-in: loaded\n' unloaded=$'plug-in: unloaded'
expect "$(uname -n | cut -d. -f1): ?*" ./hello
expect $'job 1\njob 2\njob 3\nstopped after 3' ./worker
expect 'first 1000, second 1000' ./table
expect $'nobody plays\ncaught 4\nboth have ended' ./from_win32
expect "$loaded$unloaded"$'\nhost: version 000100040000001b\n'"${loaded}plug-in: enforcing update.policy"$'\n'"$unloaded" \
    ./plugin_host ./plugin.so
expect 127.0.0.1 ./local_address 127.0.0.1 9  # a refusal reaches the host, too
refuses 'none: no plug-in' ./plugin_host "$work/none"

./report "$work/report" >"$work/diagnostics"
grep -q $'^OSType\tMac OS X$' "$work/report"
[ "$(grep -c $'^[A-Z][^\t]*\t' "$work/report")" = "$(wc -l <"$work/report")" ]
refuses 'none/report.new: No such file' ./report "$work/none/report"

coproc daemon { exec ./daemon; }
pid=$daemon_PID
exec {output}<&"${daemon[0]}"  # bash forgets the array when the daemon has ended
hears() { read -r -t 60 line <&"$output" && [ "$line" = "$1" ] || { echo "no '$1'"; exit 1; }; }
hears running
kill -HUP "$pid"
hears reloaded
kill -TERM "$pid"
hears stopped
wait "$pid"
