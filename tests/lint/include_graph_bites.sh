#!/usr/bin/env bash
# The lint of the include graph finds a forbidden include.
set -euo pipefail
copy=$(mktemp -d)
trap 'rm -rf "$copy"' EXIT
cp -R include source "$copy"
lint=$(dirname "$0")/include_graph.sh
"$lint" "$copy"
echo '#include "vlrcomn/sync.h"' >"$copy/source/sysprops/reaches_over.h"
! "$lint" "$copy" 2>"$copy/said"
grep -q 'reaches_over.h' "$copy/said"
