# Shared by the scripts beside this file; sourced, not run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { printf '\n==> %s\n' "$*" >&2; }

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# install_packages GROUP...: the Debian packages of scripts/packages/GROUP.txt that are still missing.
install_packages() {
    local group package missing=()
    for group in "$@"; do
        while read -r package; do
            case $package in '' | '#'*) continue ;; esac
            dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
                missing+=("$package")
        done <"scripts/packages/$group.txt"
    done
    if [ ${#missing[@]} -gt 0 ]; then
        say "installing ${missing[*]}"
        as_root apt-get update -qq
        as_root env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
    fi
}

# say_skipped FOLDER: why the last run of its tests skipped some, or left something out; nothing if it did not.
say_skipped() {
    awk '/: Skipped$/ { getline; print } /^(SKIPPED|skipped|left out):/' \
        "$1/Testing/Temporary/LastTest.log" | sort | uniq -c >&2
}

# build PRESET [TARGET...]: configures once, builds what is out of date.
build() {
    local preset=$1
    shift
    say "building $preset ($PWD/build/$preset)"
    [ -e "build/$preset/build.ninja" ] || cmake --preset "$preset" >&2
    cmake --build "build/$preset" ${1:+--target} "$@" >&2
}
