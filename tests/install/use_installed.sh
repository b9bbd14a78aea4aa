#!/usr/bin/env bash
# use_installed.sh BUILD-FOLDER CC CXX
set -euo pipefail
build=$1 cc=$2 cxx=$3
project=$(cd "$(dirname "$0")/project" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/prefix" >"$work/install.log"
cmake -S "$project" -B "$work/build" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" \
    -DCMAKE_C_COMPILER="$cc" -DCMAKE_CXX_COMPILER="$cxx" >"$work/configure.log"
cmake --build "$work/build" >"$work/build.log" || { cat "$work/build.log"; exit 1; }
for program in in_c in_cxx_vlrcomn in_cxx_vlrcomn_static; do
    "$work/build/$program"
done

command -v pkg-config >/dev/null || { echo 'skipped: no pkg-config'; exit 77; }
config=$(dirname "$(find "$work/prefix" -name vlrcomn.pc)")
flags=$(PKG_CONFIG_PATH=$config pkg-config --define-variable=prefix="$work/prefix" --cflags --libs vlrcomn)
"$cc" "$project/in_c.c" $flags -o "$work/by_pkg_config"
LD_LIBRARY_PATH=$(dirname "$config") "$work/by_pkg_config"
"$(find "$work/prefix" -name vlrprops)" --version | grep -q '^vlrprops '
