#!/usr/bin/env bash
# agreement.sh VLRPROPS PROBE PROPERTY_LISTS: runs agreement.py in network, host name and mount namespaces of its
# own; the machine itself stays as it was.
. "$(dirname "$0")/../support/skip.sh"
[ "$(id -u)" = 0 ] || skip "needs root for namespaces"
for tool in ip unshare hostname mount df getconf uptime; do command -v $tool >/dev/null || skip "no $tool"; done
unshare --net --uts --mount true || skip "no namespaces of its own are to be had here"
scratch=$(realpath "$(mktemp -d)")
trap 'rmdir "$scratch"' EXIT
# tun0 has no MAC: its link entry in the system's list carries no address at all. The overlay is over the whole of
# /etc, since a bare system has no file of hosts yet.
unshare --net --uts --mount bash -ec '
    trap "exit 77" ERR
    mount -t tmpfs -o size=64m tmpfs "$0"
    mkdir "$0/etc" "$0/work"
    head -c 16M /dev/zero >"$0/filler"
    printf "127.0.0.1 localhost\n127.0.1.1 alpha.example.org alpha\n" >"$0/etc/hosts"
    mount -t overlay -o "lowerdir=/etc,upperdir=$0/etc,workdir=$0/work" overlay /etc
    hostname alpha.example.org
    ip link add v0 address 02:00:5e:10:20:30 type veth peer name v1
    ip link add d0 type veth peer name d1
    ip tuntap add dev tun0 mode tun
    for link in lo v0 v1 tun0; do ip link set $link addrgenmode none up; done
    ip addr add 198.51.100.5/24 dev v0
    ip addr add 198.51.100.77/25 dev v0
    ip addr add 2001:db8::5/64 dev v0 nodad
    ip addr add fe80::7/64 dev v1 nodad
    ip addr add 203.0.113.9/24 dev d0
    ip addr add 10.8.0.1/24 dev tun0
    exec "$@"' "$scratch" python3 "$(dirname "$0")/agreement.py" "$scratch" "$@"
status=$?
[ $status != 77 ] || skip "interfaces, IPv6 or an overlay of its own are not to be had here"
exit $status
