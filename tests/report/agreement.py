#!/usr/bin/env python3
"""agreement.py VLRPROPS PROBE: compares the report with what the system's own tools say.

Runs itself again inside network, host name and mount namespaces of its own, so that it may give the
machine several interfaces and a name; the machine itself stays as it was. Skips (77) without root.
"""
import ipaddress
import json
import os
import resource
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
    if "--inside" in sys.argv:
        return
    if os.geteuid() != 0:
        skip("needs root for namespaces")
    for tool in ("ip", "unshare", "df", "nproc", "uname", "mount"):
        if shutil.which(tool) is None:
            skip("no " + tool)
    if not os.path.exists("/proc/net/if_inet6"):
        skip("no IPv6")
    unshare = ["unshare", "--net", "--uts", "--mount"]
    if subprocess.run(unshare + ["true"], stderr=subprocess.DEVNULL).returncode != 0:
        skip("namespaces are not allowed here")
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
    tun = subprocess.run(["ip", "tuntap", "add", "dev", "tun0", "mode", "tun"])
    if tun.returncode == 0:
        run("ip", "addr", "add", "10.8.0.1/24", "dev", "tun0")
        run("ip", "link", "set", "tun0", "up")
    # The link-local addresses come once the carrier is seen.
    deadline = time.monotonic() + 30
    while len([a for a in addresses_of_ip() if a[3].startswith("fe80:")]) < 2:
        if time.monotonic() > deadline:
            sys.exit("no link-local address within 30 s")
        time.sleep(0.05)


def text_of(address):
    """The library's text: dotted decimal, or eight groups without padding."""
    address = ipaddress.ip_address(address)
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


def probe(*last_known):
    addresses, chosen = [], []
    for line in run(PROBE, *last_known).splitlines():
        fields = line.split()
        if fields[0] == "address":
            addresses.append((int(fields[1]), *fields[2:]))
        elif fields[0] == "chosen":
            chosen.append(tuple(fields[1:]))
    return addresses, chosen


def report(*arguments):
    return json.loads(run(VLRPROPS, "--json", *arguments))


def coarsened(value, total, integer):
    step = total // 20 if integer else total / 20
    points = [k * step for k in range(1, 21) if k * step < value]
    return points[-1] if points else value


class Network(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.expected = addresses_of_ip()

    def test_every_address_with_mask_subnet_and_mac(self):
        self.assertEqual(len([a for a in self.expected if a[1] == "v0"]), 4)
        self.assertEqual(sorted(probe()[0]), sorted(self.expected))

    def test_last_known_address(self):
        by_text = {a[3]: a for a in self.expected}
        first = {family: next(a for a in sorted(probe()[0], key=lambda a: a[0])
                              if (":" in a[3]) == (family == 6)) for family in (4, 6)}
        cases = [("198.51.100.77", by_text["198.51.100.77"]),
                 ("2001:db8:0:0:0:0:0:5", by_text["2001:db8:0:0:0:0:0:5"]),
                 ("2001:db8::5", first[6]), ("", first[4]), ("203.0.113.9", first[4]),
                 ("10.8.0.1", first[4]), ("127.0.0.1", first[4]), ("::1", first[6])]
        for (last_known, want), got in zip(cases, probe(*[case[0] for case in cases])[1]):
            with self.subTest(last_known):
                self.assertEqual(got, ("1", *want[2:]))

    def test_report_names_the_first_ipv4_address(self):
        values = report()
        index = next(a for a in self.expected if a[3] == "198.51.100.5")
        self.assertEqual([values[k] for k in ("NETAddress", "IPAddress", "SubnetMask",
                                              "SubnetAddress")], list(index[2:]))
        self.assertEqual(values["IPXAddress"], "N/A")

    def test_loopback_only(self):
        """In one more namespace: no address, and the names all the same."""
        inside = ["unshare", "--net", "sh", "-c", 'ip link set lo up; exec "$@"', "sh"]
        values = json.loads(run(*inside, VLRPROPS, "--json"))
        for key in ("IPAddress", "SubnetAddress", "SubnetMask", "NETAddress"):
            self.assertEqual(values[key], "N/A")
        self.assertEqual(values["ComputerName"], "alpha")
        self.assertEqual(run(*inside, PROBE, "").split(), ["chosen", "0"] + ["N/A"] * 4)


class Machine(unittest.TestCase):
    def test_names(self):
        values = report()
        self.assertEqual(values["ComputerName"], run("uname", "-n").strip().split(".")[0])
        self.assertEqual(values["IPHostName"], HOST)

    def test_processors(self):
        online = str(os.sysconf("SC_NPROCESSORS_ONLN"))
        if len(os.sched_getaffinity(0)) == int(online):
            online = run("nproc", env={"PATH": os.environ["PATH"]}).strip()
        self.assertEqual(report()["NumOfCPU"], online)

    def test_memory(self):
        def meminfo():
            with open("/proc/meminfo") as lines:
                return {k: int(v.split()[0]) * 1024 for k, v in (l.split(":") for l in lines)}
        before = meminfo()
        values = report()
        after = meminfo()
        total = int(values["TotalPhysicalMemory"])
        self.assertEqual(total, before["MemTotal"])
        # Other programs take and give memory meanwhile: 2 % of the total are allowed for that.
        low = min(before["MemFree"], after["MemFree"]) - total // 50
        high = max(before["MemFree"], after["MemFree"]) + total // 50
        free = int(values["FreeMemory"])
        self.assertLessEqual(coarsened(low, total, True) if low > total // 20 else 0, free)
        self.assertLessEqual(free, coarsened(high, total, True))
        self.assertTrue(free % (total // 20) == 0 or free <= total // 20)

    def test_disks(self):
        sizes = {}
        for line in run("df", "-a", "-B1", "--output=size,target").splitlines()[1:]:
            size, target = line.split(maxsplit=1)
            sizes[target] = int(size) if size.isdigit() else 0
        file_systems = report("--file-systems")
        self.assertTrue(file_systems)
        for mount_point, space in file_systems.items():
            with self.subTest(mount_point):
                total = sizes[mount_point] / 1048576
                # Large file systems are counted in larger blocks, which may cut off one of them.
                self.assertAlmostEqual(float(space["total"]), total, delta=0.01 + total / 2**30)
        own = file_systems[self.scratch]
        self.assertEqual(own, {"total": "64.00", "free": f"{coarsened(48, 64, False):.2f}"})
        values = report()
        self.assertEqual(int(values["NumberOfFileSystems"]), len(file_systems))
        self.assertAlmostEqual(float(values["TotalDiskSpace"]),
                               sum(float(s["total"]) for s in file_systems.values()),
                               delta=0.01 * (len(file_systems) + 1))

    def test_time(self):
        before = int(time.time())
        environment = {**os.environ, "TZ": "ABC-5:30DEF", "LANG": "ja_JP.UTF-8"}
        values = json.loads(run(VLRPROPS, "--json", env=environment))
        self.assertEqual([values["TimeZone"], values["DefaultLangID"]], ["ABC", "0411"])
        os.environ["TZ"] = environment["TZ"]
        time.tzset()
        collected = time.mktime(time.strptime(values["LastUpdate"], "%m/%d/%Y %H:%M:%S"))
        self.assertTrue(before <= collected <= time.time())

    def test_identity_without_a_version_file(self):
        if os.path.exists("/System/Library/CoreServices/SystemVersion.plist"):
            self.skipTest("this machine has a version file")
        values = report()
        self.assertEqual([values[k] for k in ("OSType", "PlatformID", "OSOEMId", "OSVersion")],
                         ["Mac OS X", "MAC", "Apple Macintosh", "N/A"])


# A root folder of its own over the machine's, with a version file, in which the program runs.
WITH_VERSION_FILE = """
    set -e
    mount -t tmpfs none /mnt
    mkdir -p /mnt/upper/System/Library/CoreServices /mnt/upper/tested /mnt/work /mnt/root
    cp "$1"/* /mnt/upper/System/Library/CoreServices
    cp "$2" "$3" /mnt/upper/tested
    mount -t overlay -o lowerdir=/,upperdir=/mnt/upper,workdir=/mnt/work overlay /mnt/root
    mount --rbind /proc /mnt/root/proc
    mount --rbind /dev /mnt/root/dev
    LD_LIBRARY_PATH=/tested exec chroot /mnt/root "/tested/${2##*/}" --json
"""
HEAD = '<?xml version="1.0" encoding="UTF-8"?>\n'
GOOD = ("<plist version='1.0'><dict><key>ProductBuildVersion</key><string>8S165</string>"
        "<key>ProductVersion</key><string>10.4.11</string></dict></plist>\n")
LAUGHS = ("<!DOCTYPE plist [<!ENTITY a0 'ha'>" +
          "".join(f"<!ENTITY a{n + 1} '{('&a%d;' % n) * 10}'>" for n in range(9)) + "]>")


class VersionFile(unittest.TestCase):
    def values(self, document, server=False):
        folder = tempfile.mkdtemp(dir=Machine.scratch)
        self.addCleanup(shutil.rmtree, folder)
        with open(os.path.join(folder, "SystemVersion.plist"), "wb") as file:
            file.write(document if isinstance(document, bytes) else document.encode())
        if server:
            open(os.path.join(folder, "ServerVersion.plist"), "w").close()
        library = next(line.split()[2] for line in run("ldd", VLRPROPS).splitlines()
                       if "libvlrcomn" in line)
        return json.loads(run("unshare", "--mount", "sh", "-c", WITH_VERSION_FILE, "sh", folder,
                              VLRPROPS, library))

    def setUp(self):
        probe_overlay = ("mount -t tmpfs none /mnt && mkdir /mnt/u /mnt/w /mnt/r && "
                         "mount -t overlay -o lowerdir=/,upperdir=/mnt/u,workdir=/mnt/w o /mnt/r")
        if subprocess.run(["unshare", "--mount", "sh", "-c", probe_overlay],
                          stderr=subprocess.DEVNULL).returncode != 0:
            self.skipTest("no overlay file system")

    def test_good(self):
        machine = run("uname", "-m").strip()
        for name, document in {"plain": HEAD + GOOD, "10 MB": HEAD + f"<!--{' ' * 10**7}-->" + GOOD,
                               "UTF-16": GOOD.encode("utf-16")}.items():
            with self.subTest(name):
                values = self.values(document)
                self.assertEqual([values[k] for k in ("OSVersion", "OSCsdVersion", "OSBuildNum",
                                                      "OSPlatform")],
                                 ["10.4.11", "11", "8S165", "Workstation"])
                if "_64" in machine or "86" in machine:
                    self.assertEqual(values["OSBitMode"], "1" if "_64" in machine else "0")
        self.assertEqual(self.values(HEAD + GOOD, server=True)["OSPlatform"], "Server")

    def test_bad(self):
        for name, document in {
                "empty": "", "truncated": GOOD[:-30], "no XML": "10.4.11", "binary": b"bplist00\xd1",
                "zeros": bytes(100), "nested": HEAD + "<array>" * 10**6,
                "nested dictionaries": "<plist>" + "<dict><key>a</key>" * 10**5,
                "no version": GOOD.replace("ProductVersion", "Other"),
                "an integer": GOOD.replace("<string>10.4.11</string>", "<integer>10</integer>"),
                "no dictionary": "<plist><array><string>10.4.11</string></array></plist>",
                "entities": LAUGHS + GOOD.replace("10.4.11", "&a9;"),
                "outside entity": "<!DOCTYPE plist [<!ENTITY e SYSTEM '/etc/hosts'>]>" +
                                  GOOD.replace("10.4.11", "&e;")}.items():
            with self.subTest(name):
                values = self.values(document)
                self.assertEqual([values[k] for k in ("OSVersion", "OSPlatform", "OSBitMode")],
                                 ["N/A"] * 3)
                self.assertEqual(values["PlatformID"], "MAC")
        # In KiB, of the largest child so far: the entities alone would make 2 GB.
        self.assertLess(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss, 200 * 1024)


def main():
    enter_namespaces()
    subprocess.run(["mount", "--make-rprivate", "/"], check=True)
    scratch = tempfile.mkdtemp(prefix="report_")
    run("mount", "-t", "tmpfs", "-o", "size=64m", "tmpfs", scratch)
    try:
        Machine.scratch = scratch
        hosts = os.path.join(scratch, "hosts")
        with open(hosts, "w") as file:
            file.write(f"127.0.0.1 localhost\n127.0.1.1 {HOST} alpha\n")
        with open(os.path.join(scratch, "filler"), "wb") as file:
            file.write(bytes(16 * 1048576 - 4096 * 1))
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
