#!/usr/bin/env bash
# What the home machine (32-bit PowerPC, Mac OS X 10.4) cannot do or does otherwise: its atomic words have at
# most 32 bits, and its bool has four bytes.
set -euo pipefail
atomic='std::atomic(_ref)?<'
mapfile -t files < <(find include source -name '*.h' -o -name '*.cpp')
[ ${#files[@]} -gt 100 ]
found=$(
    grep -nE "$atomic" "${files[@]}" | grep -vE "$atomic(bool|u?int(8|16|32)_t|uintptr_t|pthread_t|[A-Za-z]+\*)>"
    grep -nE '__(atomic|sync)_[a-z_]+\(' "${files[@]}" |
        grep -vE '/(sync/interlocked|system/termination_flag|locks/spin_word)\.(cpp|h):|:[0-9]+: \*'  # of 32 bits
    grep -nE 'sizeof ?\(?bool|atomic_u?llong|OSAtomic[A-Za-z]*64' "${files[@]}"
) || true
[ -z "$found" ] || { echo "$found" >&2; exit 1; }
