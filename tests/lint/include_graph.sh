#!/usr/bin/env bash
# The two stacks share only the text helpers: nothing in the properties stack reaches the portability
# layer. Each folder and public header of the properties stack names what it may include; since that
# set is closed under inclusion, checking the direct includes checks the graph.
set -euo pipefail

text='vlrcomn/time_text\.h'
shared="support/|platform/|vlrcomn/types\.h"
network='vlrcomn/(net_interface|ipv6_text|network_util)\.h|network/'
session='vlrcomn/logged_on_users\.h|session/'
facts='machine_facts|property_(functions|keys|records)'
sysprops="vlrcomn/($facts|system_properties)\.h|sysprops/"

bad=0
# may_include ALLOWED FILE...: every quoted include of the files matches ALLOWED.
may_include() {
    local allowed=$1 found
    shift
    found=$(grep -nE '^#include "' /dev/null "$@" | grep -vE "#include \"($allowed)" || true)
    if [ -n "$found" ]; then
        printf 'not allowed here:\n%s\n' "$found" >&2
        bad=1
    fi
}
files() { find "$@" -name '*.h' -o -name '*.cpp' | sort; }

may_include "$shared" $(files source/platform source/support)
may_include "$shared|$network" $(files source/network)
may_include "$shared|$session|$text" $(files source/session)
may_include "$shared|$sysprops|$network|$session|$text" $(files source/sysprops)

may_include 'vlrcomn/types\.h' \
    include/vlrcomn/{types,time_text,logged_on_users,ipv6_text,net_interface}.h \
    include/vlrcomn/{machine_facts,property_functions,property_records}.h
may_include 'vlrcomn/(types|property_records)\.h' include/vlrcomn/property_keys.h
may_include "vlrcomn/(types|$facts)\.h" include/vlrcomn/system_properties.h
may_include 'vlrcomn/(types|net_interface)\.h' include/vlrcomn/network_util.h
exit "$bad"
