#!/usr/bin/env bash
# use_installed.sh prefix|packages BUILD-FOLDER CC CXX
# Installs into an empty folder, by `cmake --install` or by unpacking the Debian packages, builds the installed
# examples against what lies there, shared and static, by CMake and by pkg-config, and runs them.
set -euo pipefail
. "$(dirname "$0")/../support/skip.sh"
way=$1 build=$2 cc=$3 cxx=$4
run_examples=$(dirname "$0")/../examples/run_examples.sh
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
quietly() { "$@" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }; }

if [ "$way" = packages ]; then
    type dpkg-shlibdeps file >/dev/null 2>&1 || skip 'no dpkg-dev or no file'
    quietly cpack --config "$build/CPackConfig.cmake" -B "$work/packages"
    field() { dpkg-deb -f "$work"/packages/$1_*.deb "$2"; }
    runtime=$(field 'libvlrcomn[0-9]*' Package)
    version=$(field "$runtime" Version)
    [ "$runtime" = "libvlrcomn${version%%.*}" ]
    [[ $(field "$runtime" Depends) == *'libc6 (>= '*'libstdc++6 (>= '* ]]
    [[ $(field libvlrcomn-dev Depends) == *"$runtime (= $version)"* && $(field vlrprops Depends) == *"$runtime (= $version)"* ]]
    [[ $(field vlrprops Description) == 'Property report'* && -n $(field vlrprops Maintainer) ]]
    for package in "$work"/packages/*.deb; do dpkg-deb -x "$package" "$work/root"; done
    prefix=$work/root/usr
    other_layout=()  # of a build folder that was configured for /usr/local
    [ ! -e "$prefix/lib/pkgconfig" ] || other_layout=(--suppress-tags pkg-config-unavailable-for-cross-compilation)
    if ! type lintian >/dev/null 2>&1; then left_out 'no lintian'; else
        quietly lintian --allow-root --fail-on error,warning "${other_layout[@]}" "$work"/packages/*.deb
    fi
else
    quietly cmake --install "$build" --prefix "$work/prefix"
    prefix=$work/prefix
fi
[[ $("$prefix/bin/vlrprops" --version) == 'vlrprops '* ]]
PATH=$prefix/bin:$PATH bash -ec '. "$0"; _vlrprops vlrprops --hum vlrprops; [ "${COMPREPLY[*]}" = --human ]
    _vlrprops vlrprops boot vlrprops; [ "${COMPREPLY[*]}" = BootTime ]' "$prefix/share/bash-completion/completions/vlrprops"
[ -e "$(echo "$prefix"/share/zsh/*/_vlrprops)" ]
[ -e "$(echo "$prefix"/share/man/man1/vlrprops.1*)" ]
libraries=$(dirname "$(find "$prefix" -name libvlrcomn.a)")
if grep -q '^CMAKE_BUILD_TYPE:.*=Rel' "$build/CMakeCache.txt"; then
    "$(dirname "$0")/../interface/hardened.sh" "$libraries"/libvlrcomn.{a,so} "$prefix/bin/vlrprops"
fi

examples=$(find "$prefix" -type d -name examples)
for form in vlrcomn vlrcomn_static; do  # in one folder: the second time only links anew
    quietly cmake -S "$examples" -B "$work/build" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
        -DVLRCOMN_LIBRARY="vlrcomn::$form" -DCMAKE_C_COMPILER="$cc" -DCMAKE_CXX_COMPILER="$cxx"
    quietly cmake --build "$work/build"
    quietly "$run_examples" "$work/build"
    ldd "$work/build/worker" >"$work/$form"
done
grep -q "$prefix.*libvlrcomn" "$work/vlrcomn"
[ "$(grep -c libvlrcomn "$work/vlrcomn_static")" = 0 ]

command -v pkg-config >/dev/null || skip 'no pkg-config'
flags() { PKG_CONFIG_PATH=$libraries/pkgconfig pkg-config "$@" vlrcomn; }
all_of_it='-Wl,--whole-archive -l:libvlrcomn.a -Wl,--no-whole-archive'  # so that every other library is needed
for form in --static ''; do
    linked=$(flags --libs $form)
    [ "$form" ] && linked=${linked/-lvlrcomn/$all_of_it} || export LD_LIBRARY_PATH=$libraries
    "$cc" "$examples/worker.c" $(flags --cflags) $linked -o "$work/in_c"
    "$cxx" -std=c++17 "$examples/hello.cpp" $(flags --cflags) $linked -o "$work/in_cxx"
    [[ $("$work/in_c") == *'stopped after 3' && $("$work/in_cxx") == *': '* ]]
done
