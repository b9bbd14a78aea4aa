#!/bin/sh
# Checks the model of the shared/exclusive lock, and that it finds the faults put into it.
# With --full it also explores what takes long: two threads with three rounds, and three threads with a spurious
# wake-up and two cancellations. Skipped (tests/support/skip.sh) when spin or a C compiler is missing.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
sources=$here/../../source/locks
model=$here/se_lock.pml
. "$here/../../tests/support/skip.sh"
compiler=${CC:-cc}

for tool in spin "$compiler"; do
    command -v "$tool" >/dev/null || skip "$tool is not installed"
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

# Every step of the model is a function of the library; model_ marks what is not.
for step in $(sed -n 's/^inline \([A-Za-z_]*\)(.*/\1/p' "$model" | grep -v '^model_' | sort -u); do
    if ! grep -rqw "$step" "$sources"; then
        echo "FAILED: the model's step $step has no function of that name"
        exit 1
    fi
done

# check EXPECTED DEFINITIONS...: explores one instance; EXPECTED has to stand in the checker's output.
check() {
    expected=$1
    shift
    spin -a "$@" "$model"
    "$compiler" "$optimise" -w -DSAFETY -DCOLLAPSE -DMEMLIM=2000 -o pan pan.c
    ./pan -m100000 -w22 >pan.out 2>&1 || true
    states=$(sed -n 's/^ *\([0-9.e+]*\) states, stored.*/\1/p' pan.out)
    if ! grep -q "$expected" pan.out || grep -q 'error: \|aborted\|truncated' pan.out; then
        echo "FAILED: $*: expected '$expected'"
        grep -v '^	.*, state [0-9]*, ' pan.out # but for the lines of unreached steps
        exit 1
    fi
    echo "ok: $*: $expected, $states states"
}

optimise=-O1
if [ "${1:-}" = --full ]; then
    check 'errors: 0' -DTHREADS=2 -DROUNDS=3
    check 'errors: 0' -DTHREADS=3 -DROUNDS=1 -DCANCELS=2
else
    check 'errors: 0' -DTHREADS=3 -DROUNDS=1 -DSPURIOUS=0
fi
optimise=-O0 # building the checker takes longer than these runs
check 'errors: 0' -DTHREADS=2 -DROUNDS=2
# fault EXPECTED FAULT [DEFINITION...]: by two threads, unless a definition says otherwise.
fault() {
    expected=$1
    fault=$2
    shift 2
    [ $# -gt 0 ] || set -- -DTHREADS=2
    check "$expected" "-DFAULT_$fault" "$@"
}
stuck='invalid end state (at depth'
fault 'assertion violated' NO_RECHECK
fault 'assertion violated record_alive' NO_WORD
fault 'assertion violated record_alive' FLAG_ALONE
fault "$stuck" LATE_RESET
fault "$stuck" OWNER_FORGOTTEN=1 -DTHREADS=2 -DCANCELS=0
fault 'assertion violated ((granted' OWNER_FORGOTTEN=2
fault "$stuck" OWNER_FORGOTTEN=3 -DTHREADS=2 -DCANCELS=0
fault "$stuck" OWNER_FORGOTTEN=4 -DTHREADS=2 -DCANCELS=0
fault 'assertion violated (shared_waiters.length==0)' DOWNGRADE_FORGETS
fault 'assertion violated (((owner!=' DEPARTURE_FORGETS -DTHREADS=3
