#!/usr/bin/env python3
"""agreement.py VLRPROPS PROBE: compares the report with what the system's own tools say.

Runs itself again inside network, host name and mount namespaces of its own, so that it may give the
machine several interfaces and a name; the machine itself stays as it was. Skips (77) without root.
"""
import ipaddress
import json
import os
import shutil
import socket
import subprocess
import sys
import tempfile
import time
import unittest

VLRPROPS, PROBE = sys.argv[1:3]
MAC = "02:00:5e:10:20:30"
HOST = "alpha.example.org"


def run(*command, **options):
    return subprocess.run(command, check=True, text=True, stdout=subprocess.PIPE, **options).stdout


def skip(reason):
    print("SKIPPED:", reason)
    sys.exit(77)


def enter_namespaces():
    if os.geteuid() != 0:
        skip("needs root for namespaces")
    for tool in ("ip", "unshare", "df", "nproc", "uname", "mount"):
        if shutil.which(tool) is None:
            skip("no " + tool)
    if not os.path.exists("/proc/net/if_inet6"):
        skip("no IPv6")
    unshare = ["unshare", "--net", "--uts", "--mount"]
    trial = unshare + ["sh", "-c", "ip link add v0 type veth peer name v1"]
    if subprocess.run(trial, stderr=subprocess.DEVNULL).returncode != 0:
        skip("namespaces or interfaces of its own are not allowed here")
    os.execvp(unshare[0], unshare + [sys.executable] + sys.argv + ["--inside"])


def make_interfaces():
    """Several addresses on v0, a link-local one alone on v1, d0 down, tun0 without MAC."""
    for line in f"""
        ip link set lo up
        ip link add v0 address {MAC} type veth peer name v1
        ip addr add 198.51.100.5/24 dev v0
        ip addr add 198.51.100.77/25 dev v0
        ip addr add 2001:db8::5/64 dev v0 nodad
        ip link set v0 up
        ip link set v1 up
        ip link add d0 type veth peer name d1
        ip addr add 203.0.113.9/24 dev d0""".strip().splitlines():
        run(*line.split())
    if subprocess.run("ip tuntap add dev tun0 mode tun".split()).returncode == 0:
        run(*"ip addr add 10.8.0.1/24 dev tun0".split())
        run(*"ip link set tun0 up".split())
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

    def test_version_file(self):
        """The program runs in a root folder of its own over the machine's, with a version file."""
        in_folder = """
            set -e
            mount -t tmpfs none "$0"
            cd "$0"
            mkdir -p upper/System/Library/CoreServices upper/tested work root
            mount -t overlay -o lowerdir=/,upperdir=upper,workdir=work overlay root || exit 77
            cat >upper/System/Library/CoreServices/SystemVersion.plist
            cp "$@" upper/tested
            mount --rbind /proc root/proc
            mount --rbind /dev root/dev
            LD_LIBRARY_PATH=/tested exec chroot root "/tested/${1##*/}" --json"""
        library = next(line.split()[2] for line in run("ldd", VLRPROPS).splitlines()
                       if "libvlrcomn" in line)
        document = ("<plist version='1.0'><dict><key>ProductBuildVersion</key><string>8S165"
                    "</string><key>ProductVersion</key><string>10.4.11</string></dict></plist>")
        command = ["unshare", "--mount", "sh", "-c", in_folder, self.scratch, VLRPROPS, library]
        inside = subprocess.run(command, text=True, input=document, stdout=subprocess.PIPE)
        if inside.returncode == 77:
            self.skipTest("no overlay file system")
        values = json.loads(inside.stdout)
        self.assertEqual([values[k] for k in ("OSVersion", "OSCsdVersion", "OSBuildNum",
                                              "OSPlatform")],
                         ["10.4.11", "11", "8S165", "Workstation"])


def main():
    if "--inside" not in sys.argv:
        enter_namespaces()
    scratch = os.path.realpath(tempfile.mkdtemp(prefix="report_"))
    run("mount", "-t", "tmpfs", "-o", "size=64m", "tmpfs", scratch)
    try:
        Machine.scratch = scratch
        hosts = os.path.join(scratch, "hosts")
        with open(hosts, "w") as file:
            file.write(f"127.0.0.1 localhost\n127.0.1.1 {HOST} alpha\n")
        with open(os.path.join(scratch, "filler"), "wb") as file:
            file.write(bytes(16 * 1048576))
        run("mount", "--bind", hosts, "/etc/hosts")
        socket.sethostname(HOST)
        make_interfaces()
        result = unittest.main(argv=["agreement"], exit=False, verbosity=1).result
    finally:
        subprocess.run(["umount", "/etc/hosts"])
        subprocess.run(["umount", scratch])
        os.rmdir(scratch)
    sys.exit(not result.wasSuccessful())


main()
