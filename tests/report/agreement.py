"""Run by agreement.sh on the network that it has made: compares the report with what the system's own tools say,
then with a machine made up in a root folder of its own. PROPERTY_LISTS is 1 when the library reads them."""
import datetime
import ipaddress
import json
import os
import pathlib
import struct
import subprocess
import sys
import unittest

SCRATCH, VLRPROPS, PROBE, PROPERTY_LISTS = sys.argv[1:]


def run(*command):
    return subprocess.run(command, check=True, text=True, stdout=subprocess.PIPE).stdout


def report(*arguments):
    return json.loads(run(VLRPROPS, "--json", *arguments))


def text_of(address):  # dotted decimal, or eight groups without padding
    return ":".join(group.lstrip("0") or "0" for group in address.exploded.split(":"))


def addresses_of_ip():
    """(index, name, MAC, address, mask, subnet) of every address that the list should hold."""
    for link in json.loads(run("ip", "-j", "addr")):
        if "UP" not in link["flags"] or "LOOPBACK" in link["flags"]:
            continue
        mac = link.get("address", "0" * 12).replace(":", "")  # a tun has none
        for entry in link["addr_info"]:
            interface = ipaddress.ip_interface(f"{entry['local']}/{entry['prefixlen']}")
            yield (str(link["ifindex"]), link["ifname"], mac, text_of(interface.ip),
                   text_of(interface.netmask), text_of(interface.network.network_address))


class Machine(unittest.TestCase):
    def test_addresses(self):
        expected = sorted(addresses_of_ip())
        self.assertEqual(sorted(address[1] for address in expected), ["tun0", "v0", "v0", "v0", "v1"])
        self.assertEqual(sorted(tuple(line.split()) for line in run(PROBE, "addresses").splitlines()), expected)
        values = report()
        chosen = tuple(values[k] for k in ("NETAddress", "IPAddress", "SubnetMask", "SubnetAddress"))
        self.assertEqual(chosen, ("02005e102030", "198.51.100.5", "255.255.255.0", "198.51.100.0"))

        # There is no route to the first two, and nobody listens at the third.
        self.assertEqual(run(PROBE, "local", "192.0.2.1;2001:db8:9::1;198.51.100.5").strip(), "198.51.100.5")

    def test_names_and_processors(self):
        values = report()
        self.assertEqual((values["ComputerName"], values["IPHostName"]), ("alpha", "alpha.example.org"))
        self.assertEqual(values["NumOfCPU"], run("getconf", "_NPROCESSORS_ONLN").strip())
        if os.uname().machine == "x86_64":
            self.assertEqual(values["CPUType"], "Intel X86")
            self.assertRegex(values["CPUSpeed"], "^[0-9]{3,4} MHz$")

    def test_boot_time(self):
        btime = run("sed", "-n", "s/^btime //p", "/proc/stat").strip()
        self.assertEqual(report("BootTime"), {"BootTime": btime})
        since = datetime.datetime.fromisoformat(run("uptime", "-s").strip()).timestamp()
        self.assertAlmostEqual(since, int(btime), delta=2)  # reckoned from the time that has passed

    def test_memory(self):
        def in_meminfo(name):
            return int(run("grep", name, "/proc/meminfo").split()[1]) * 1024
        before, values, after = in_meminfo("MemFree:"), report(), in_meminfo("MemFree:")
        total, free = int(values["TotalPhysicalMemory"]), int(values["FreeMemory"])
        self.assertEqual(total, in_meminfo("MemTotal:"))
        # In steps of a twentieth; other programs take and give memory meanwhile.
        self.assertTrue(free % (total // 20) == 0 or free <= total // 20)
        self.assertGreater(free, min(before, after) - total // 10)
        self.assertLess(free, max(before, after) + total // 20)

    def test_disks(self):
        file_systems = report("--file-systems")
        # What df lists but for memory and what programs serve; of several mounts it may name another.
        lines = run("df", "-lB1", "-x", "tmpfs", "-x", "devtmpfs", "-x", "ramfs", "--output=fstype,size,target")
        listed = [line.split(maxsplit=2) for line in lines.splitlines()[1:] if not line.startswith("fuse.")]
        self.assertEqual(len(file_systems), len(listed))
        totals = sorted(float(space["total"]) for space in file_systems.values())
        for total, size in zip(totals, sorted(int(size) / 1048576 for _, size, _ in listed)):
            # Large file systems are counted in larger blocks, which may cut off one of them.
            self.assertAlmostEqual(total, size, delta=0.01 + size / 2**30)
        self.assertNotIn(SCRATCH, file_systems)
        self.assertEqual(file_systems["/etc"], {"total": "64.00", "free": "44.80"})  # an overlay over that memory
        self.assertEqual(report()["NumberOfFileSystems"], str(len(file_systems)))


class FakeRoot(unittest.TestCase):
    """A root folder with the machine's own folders, but other version files, login records and directory client."""

    IN_ROOT = """
        set -e
        cd "$0"
        for entry in /*; do
            if [ -L "$entry" ]; then cp -P "$entry" root
            elif [ -d "$entry" ]; then mkdir "root$entry"; mount --rbind "$entry" "root$entry"
            fi
        done
        mkdir bin work
        printf %s '#!/bin/sh
            case $* in
                "/Search read /Users/alice") echo "userPrincipalName: Alice@CORP.example.org" ;;
                "/Search read /Users/carol") echo "OriginalAuthenticationAuthority: ;x;carol@SALES.example.org;" ;;
            esac' >bin/dscl
        chmod +x bin/dscl
        mount -t overlay -o "lowerdir=/usr/bin,upperdir=bin,workdir=work" overlay root/usr/bin
        mount -t tmpfs none root/run
        cp utmp root/run
        exec chroot root "$@" """

    def properties(self, name, version_files):
        order = "<>"[pathlib.Path(VLRPROPS).read_bytes()[5] - 1]
        # Type (7 a user, 8 a session that has ended), process, terminal, terminal's short name, user.
        records = [struct.pack(order + "h2xi32s4s32s308x", kind, 1, b"tty", b"1", user) for kind, user in
                   ((2, b"reboot"), (7, b"bob"), (7, b"alice"), (8, b"gone"), (7, b"Carol"), (7, b"carol"))]
        folder = pathlib.Path(SCRATCH, name)
        versions = folder / "root/System/Library/CoreServices"
        versions.mkdir(parents=True)
        for file, content in version_files.items():
            (versions / file).write_text(content)
        (folder / "utmp").write_bytes(b"".join(records))
        return json.loads(run("unshare", "--mount", "sh", "-c", self.IN_ROOT, folder, VLRPROPS, "--json"))

    def test_versions_and_users(self):
        document = "<plist version='1.0'><dict><key>ProductVersion</key><string>%s</string></dict></plist>"
        with_build = document % "10.4.11</string><key>ProductBuildVersion</key><string>8S165"
        server = {"SystemVersion.plist": document % "10.5", "ServerVersion.plist": ""}
        cases = (("workstation", {"SystemVersion.plist": with_build}, ["10.4.11", "11", "8S165", "Workstation"]),
                 ("server", server, ["10.5", "N/A", "10.5", "Server"]))
        for name, files, expected in cases:
            values = self.properties(name, files)
            self.assertEqual([values[k] for k in ("OSVersion", "OSCsdVersion", "OSBuildNum", "OSPlatform")],
                             expected if PROPERTY_LISTS == "1" else ["N/A"] * 4)
            self.assertEqual(values["UserName"], r"corp.example.org\alice,sales.example.org\carol,bob,carol")
            self.assertEqual((values["IPAddress"], values["ComputerName"]), ("198.51.100.5", "alpha"))


unittest.main(argv=["agreement"])
