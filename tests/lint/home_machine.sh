#!/usr/bin/env bash
# What the home machine (32-bit PowerPC, Mac OS X 10.4) cannot do or does otherwise: its atomic words have at
# most 32 bits, and its bool has four bytes.
set -euo pipefail

# findings FOLDER: each forbidden line.
findings() {
    local atomic='std::atomic(_ref)?<' files
    mapfile -t files < <(find "$1/include" "$1/source" -name '*.h' -o -name '*.cpp')
    grep -nE "$atomic" "${files[@]}" | grep -vE "$atomic(bool|u?int(8|16|32)_t|uintptr_t|pthread_t|[A-Za-z]+\*)>"
    grep -nE '__(atomic|sync)_[a-z_]+\(' "${files[@]}" |
        grep -vE '/portability/(interlocked|termination_flag)\.cpp:|:[0-9]+: \*'  # of 32 bits
    grep -nE 'sizeof ?\(?bool|atomic_u?llong|OSAtomic[A-Za-z]*64' "${files[@]}"
}

found=$(findings .) || true
[ -z "$found" ] || { echo "$found" >&2; exit 1; }

# The search itself works.
copy=$(mktemp -d)
trap 'rm -rf "$copy"' EXIT
mkdir "$copy/include" "$copy/source"
printf '%s\n' 'std::atomic<uint64_t> a;' '__atomic_load_n(&a, 0);' 'char b[sizeof(bool)];' >"$copy/source/a.cpp"
[ "$(findings "$copy" | wc -l)" = 3 ] || { echo 'the search finds less than it should' >&2; exit 1; }
