#!/usr/bin/env python3
"""agreement.py VLRPROPS PROBE PROPERTY_LISTS: compares the report with what the system's own tools say, then
with a machine made up in a root folder of its own.

Runs itself again inside network, host name and mount namespaces of its own; the machine itself stays as it
was. Skips (77) where that cannot be, but fails there when CI is set. PROPERTY_LISTS is 1 when the library reads
them.
"""
import ipaddress
import json
import os
import shutil
import socket
import struct
import subprocess
import sys
import tempfile
import time
import unittest

VLRPROPS, PROBE = map(os.path.abspath, sys.argv[1:3])
PROPERTY_LISTS = sys.argv[3]
MAC = "02:00:5e:10:20:30"
HOST = "alpha.example.org"


def run(*command, **options):
    return subprocess.run(command, check=True, text=True, stdout=subprocess.PIPE, **options).stdout


def skip(reason):
    in_ci = "CI" in os.environ
    print("FAILED:" if in_ci else "SKIPPED:", reason)
    sys.exit(1 if in_ci else 77)


def enter_namespaces():
    if os.geteuid() != 0:
        skip("needs root for namespaces")
    for tool in ("ip", "unshare", "df", "nproc", "uname", "mount"):
        if shutil.which(tool) is None:
            skip("no " + tool)
    if not os.path.exists("/proc/net/if_inet6"):
        skip("no IPv6")
    unshare = ["unshare", "--net", "--uts", "--mount"]
    trial = unshare + ["sh", "-ec", """
        ip link add v0 type veth peer name v1
        ip tuntap add dev tun0 mode tun
        mount -t tmpfs none /tmp
        cd /tmp
        mkdir upper work root
        mount -t overlay -o lowerdir=/usr/bin,upperdir=upper,workdir=work overlay root"""]
    if subprocess.run(trial, stderr=subprocess.DEVNULL).returncode != 0:
        skip("namespaces, interfaces or an overlay of its own are not allowed here")
    os.execvp(unshare[0], unshare + [sys.executable] + sys.argv + ["--inside"])


def make_interfaces():
    """Several addresses on v0, a link-local one alone on v1, d0 down, and tun0, which has no MAC: its entry in
    the system's list carries no address at all."""
    for line in f"""
        ip link set lo up
        ip link add v0 address {MAC} type veth peer name v1
        ip addr add 198.51.100.5/24 dev v0
        ip addr add 198.51.100.77/25 dev v0
        ip addr add 2001:db8::5/64 dev v0 nodad
        ip link set v0 up
        ip link set v1 up
        ip link add d0 type veth peer name d1
        ip addr add 203.0.113.9/24 dev d0
        ip tuntap add dev tun0 mode tun
        ip addr add 10.8.0.1/24 dev tun0
        ip link set tun0 up""".strip().splitlines():
        run(*line.split())
    # The link-local addresses come once the carrier is seen.
    deadline = time.monotonic() + 30
    while len([a for a in addresses_of_ip() if a[3].startswith("fe80:")]) < 2:
        if time.monotonic() > deadline:
            sys.exit("no link-local address within 30 s")
        time.sleep(0.05)


def text_of(address):
    """The library's text: dotted decimal, or eight groups without padding."""
    if address.version == 4:
        return str(address)
    return ":".join(format(int(group, 16), "x") for group in address.exploded.split(":"))


def addresses_of_ip():
    """(index, name, MAC, address, mask, subnet) of every address that the list should hold."""
    found = []
    for link in json.loads(run("ip", "-j", "addr")):
        if "UP" not in link["flags"] or "LOOPBACK" in link["flags"] or "address" not in link:
            continue
        for entry in link["addr_info"]:
            interface = ipaddress.ip_interface(f"{entry['local']}/{entry['prefixlen']}")
            found.append((link["ifindex"], link["ifname"], link["address"].replace(":", ""),
                          text_of(interface.ip), text_of(interface.netmask),
                          text_of(interface.network.network_address)))
    return found


def addresses_of_library():
    rows = [line.split() for line in run(PROBE, "addresses").splitlines()]
    return [(int(index), *fields) for index, *fields in rows]


def report(*arguments):
    return json.loads(run(VLRPROPS, "--json", *arguments))


class Network(unittest.TestCase):
    def test_addresses(self):
        expected = addresses_of_ip()
        self.assertEqual(len([a for a in expected if a[1] == "v0"]), 4)
        self.assertEqual(sorted(addresses_of_library()), sorted(expected))
        values = report()
        first = next(a for a in expected if a[3] == "198.51.100.5")
        self.assertEqual([values[k] for k in ("NETAddress", "IPAddress", "SubnetMask",
                                              "SubnetAddress")], list(first[2:]))

    def test_loopback_only(self):
        """In one more namespace: no address, and the names all the same."""
        inside = ["unshare", "--net", "sh", "-c", 'ip link set lo up; exec "$@"', "sh"]
        self.assertEqual(run(*inside, PROBE, "addresses"), "")
        values = json.loads(run(*inside, VLRPROPS, "--json"))
        self.assertEqual((values["IPAddress"], values["ComputerName"]), ("N/A", "alpha"))


class Machine(unittest.TestCase):
    def test_names_and_processors(self):
        values = report()
        self.assertEqual(values["ComputerName"], run("uname", "-n").strip().split(".")[0])
        self.assertEqual(values["IPHostName"], HOST)
        if os.uname().machine == "x86_64":
            self.assertEqual(values["CPUType"], "Intel X86")
            self.assertRegex(values["CPUSpeed"], "^[0-9]{3,4} MHz$")
        online = str(os.sysconf("SC_NPROCESSORS_ONLN"))
        if len(os.sched_getaffinity(0)) == int(online):
            online = run("nproc", env={"PATH": os.environ["PATH"]}).strip()
        self.assertEqual(values["NumOfCPU"], online)

    def test_memory(self):
        def in_meminfo(name):
            with open("/proc/meminfo") as lines:
                return next(int(l.split()[1]) * 1024 for l in lines if l.startswith(name))
        before = in_meminfo("MemFree:")
        values = report()
        after = in_meminfo("MemFree:")
        total, free = int(values["TotalPhysicalMemory"]), int(values["FreeMemory"])
        self.assertEqual(total, in_meminfo("MemTotal:"))
        # In steps of a twentieth; other programs take and give memory meanwhile.
        self.assertTrue(free % (total // 20) == 0 or free <= total // 20)
        self.assertGreater(free, min(before, after) - total // 10)
        self.assertLess(free, max(before, after) + total // 20)

    def test_disks(self):
        file_systems = report("--file-systems")
        for mount_point, space in file_systems.items():
            size = run("df", "-B1", "--output=size", mount_point).splitlines()[1].strip()
            total = int(size) / 1048576
            # Large file systems are counted in larger blocks, which may cut off one of them.
            self.assertAlmostEqual(float(space["total"]), total, delta=0.01 + total / 2**30)
        self.assertEqual(file_systems[self.scratch], {"total": "64.00", "free": "44.80"})
        self.assertEqual(int(report()["NumberOfFileSystems"]), len(file_systems))


class FakeRoot(unittest.TestCase):
    """vlrprops in a root folder with the machine's own folders, but version files, login records and a
    directory client that are made up."""

    IN_ROOT = """
        set -e
        cd "$0"
        for entry in /*; do
            if [ -L "$entry" ]; then cp -P "$entry" root
            elif [ -d "$entry" ]; then mkdir "root$entry"; mount --rbind "$entry" "root$entry"
            fi
        done
        mount -t overlay -o "lowerdir=/usr/bin,upperdir=bin,workdir=work" overlay root/usr/bin
        mount -t tmpfs none root/run
        cp utmp root/run
        exec chroot root "$@" """
    DSCL = """#!/bin/sh
        case $* in
            '/Search read /Users/alice') echo 'userPrincipalName: Alice@CORP.example.org' ;;
            '/Search read /Users/carol') echo 'OriginalAuthenticationAuthority: ;x;carol@SALES.example.org;' ;;
        esac"""

    def properties(self, version, build, server):
        items = {"ProductVersion": version, "ProductBuildVersion": build}
        document = "".join(f"<key>{k}</key><string>{v}</string>" for k, v in items.items() if v)
        with tempfile.TemporaryDirectory(dir=Machine.scratch) as folder:
            for name in ("root/System/Library/CoreServices", "bin", "work"):
                os.makedirs(os.path.join(folder, name))

            def write(name, content):
                with open(os.path.join(folder, name), "wb") as file:
                    file.write(content)
                    os.chmod(file.fileno(), 0o755)
            write("root/System/Library/CoreServices/SystemVersion.plist",
                  f"<plist version='1.0'><dict>{document}</dict></plist>".encode())
            if server:
                write("root/System/Library/CoreServices/ServerVersion.plist", b"")
            write("bin/dscl", self.DSCL.encode())
            with open(VLRPROPS, "rb") as program:
                order = "<>"[program.read(6)[5] - 1]
            # Type (7 a user, 8 a session that has ended), process, terminal, terminal's short name, user.
            write("utmp", b"".join(struct.pack(order + "h2xi32s4s32s308x", kind, 1, b"tty", b"1", user)
                                   for kind, user in ((2, b"reboot"), (7, b"bob"), (7, b"alice"),
                                                      (8, b"gone"), (7, b"Carol"), (7, b"carol"))))
            return json.loads(run("unshare", "--mount", "sh", "-c", self.IN_ROOT, folder, VLRPROPS, "--json"))

    def test_versions_and_users(self):
        cases = ((("10.4.11", "8S165", False), ["10.4.11", "11", "8S165", "Workstation"]),
                 (("10.5", "", True), ["10.5", "N/A", "10.5", "Server"]))
        for case, expected in cases:
            with self.subTest(case):
                values = self.properties(*case)
                self.assertEqual([values[k] for k in ("OSVersion", "OSCsdVersion", "OSBuildNum", "OSPlatform")],
                                 expected if PROPERTY_LISTS == "1" else ["N/A"] * 4)
                self.assertEqual(values["UserName"], r"corp.example.org\alice,sales.example.org\carol,bob,carol")
                self.assertEqual((values["IPAddress"], values["ComputerName"]), ("198.51.100.5", "alpha"))


def main():
    if "--inside" not in sys.argv:
        enter_namespaces()
    scratch = os.path.realpath(tempfile.mkdtemp(prefix="report_"))
    run("mount", "-t", "tmpfs", "-o", "size=64m", "tmpfs", scratch)
    try:
        Machine.scratch = scratch
        # Over the whole of /etc, since a bare system has no such file yet.
        upper, work = os.path.join(scratch, "etc"), os.path.join(scratch, "work")
        os.mkdir(upper)
        os.mkdir(work)
        with open(os.path.join(upper, "hosts"), "w") as file:
            file.write(f"127.0.0.1 localhost\n127.0.1.1 {HOST} alpha\n")
        with open(os.path.join(scratch, "filler"), "wb") as file:
            file.write(bytes(16 * 1048576))
        run("mount", "-t", "overlay", "-o", f"lowerdir=/etc,upperdir={upper},workdir={work}", "overlay", "/etc")
        socket.sethostname(HOST)
        make_interfaces()
        result = unittest.main(argv=["agreement"], exit=False, verbosity=1).result
    finally:
        subprocess.run(["umount", "/etc"])
        subprocess.run(["umount", scratch])
        os.rmdir(scratch)
    sys.exit(not result.wasSuccessful())


main()
