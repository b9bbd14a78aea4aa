#!/usr/bin/env bash
# declared.sh LIBRARY CLANG: the library exports what the public headers declare, no more and no less.
set -euo pipefail
cd "$(dirname "$0")/../../include"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Clang names a class's constructors and destructor by their first form only.
nm -D --defined-only "$1" | sed -n 's/.* //; s/\([CD]\)2\(E\|v\)/\11\2/; p' | LC_ALL=C sort -u >"$work/exported"
printf '#include "%s"\n' vlrcomn/*.h |
    "$2" -std=c++17 -I. -fsyntax-only -Xclang -ast-dump=json -x c++ - |
    sed -n 's/.*"mangledName": "\(.*\)".*/\1/p' | LC_ALL=C sort -u >"$work/declared"

[ "$(wc -l <"$work/exported")" -gt 400 ]
! LC_ALL=C comm -23 "$work/exported" "$work/declared" | grep . || { echo 'exported without a declaration'; exit 1; }
# Copies, moves and the like of classes are made by the compiler in each program.
if LC_ALL=C comm -13 "$work/exported" "$work/declared" | grep -E '^(oru|or[A-Z]|LinkedList_|_ZNK?10velora_com|_Z[0-9]+orumcomn_)' |
    grep -vE '(C1E|D1Ev$|aSE)'; then
    echo 'declared without being exported'; exit 1
fi
