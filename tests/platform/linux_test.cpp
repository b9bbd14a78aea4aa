// What the Linux answerer reads out of texts; tests/report compares what it says of the machine.
#include <ifaddrs.h>
#include <netpacket/packet.h>

#include "platform/linux/cpu_info.h"
#include "platform/linux/memory_info.h"
#include "platform/linux/mount_table.h"
#include "support/owners.h"
#include "support/test.h"

using namespace velora_com::qel::platform;

TEST(CpuInfo, TellsProcessorsApart) {
    constexpr std::optional<int32_t> unknown;
    constexpr std::optional<uint64_t> no_clock;
    // Clock, architecture and type by the text.
    const std::pair<const char*, ProcessorFacts> cases[] = {
        // A PC with two processors, the second faster.
        {"processor\t: 0\nvendor_id\t: GenuineIntel\ncpu family\t: 6\ncpu MHz\t\t: 1596.000\n\n"
         "processor\t: 1\nvendor_id\t: GenuineIntel\ncpu family\t: 6\ncpu MHz\t\t: 2128.001\n",
         {2'128'001'000, 10, 0x69787878}},
        {"cpu\t\t: 7447A, altivec supported\nclock\t\t: 1666.666000MHz\n"
         "revision\t: 0.5 (pvr 8003 0105)\nmodel\t\t: PowerBook5,6\nmachine\t\t: PowerBook5,6\n",
         {1'666'666'000, 2, 272}},
        {"cpu\t\t: 745/755\n", {no_clock, 2, 264}},  // no 7450
        {"cpu\t: PPC970FX\nrevision\t: 3.0 (pvr 003c 0300)\n", {no_clock, 2, unknown}},
        {"cpu family\t: PA-RISC 2.0\ncpu\t\t: PA8700\ncpu MHz\t\t: 750.000000\n",
         {750'000'000, unknown, unknown}},
        {"cpu MHz\t:\nvendor_id\t:\ncpu family\t:\ncpu\t:\nclock\nrevision", {}},
        {"cpu MHz\t: 99999999999\nclock\t: 7.123456789MHz\ncpu MHz\t: 5.\n",
         {7'123'456, unknown, unknown}},
    };
    for (const auto& [text, expected] : cases) {
        const auto& [clock, architecture, type] = expected;
        EXPECT_THAT(parse_cpu_info(text), testing::FieldsAre(clock, architecture, type)) << text;
    }
}

TEST(MemoryInfo, FiguresAreFoundByTheirWholeLabel) {
    constexpr const char* text =
        "  total:  used:\n"  // kernels before 2.6 began so
        "MemTotal:  24684092 kB\nHighMemFree:  7 kB\nMemFree:  9 kB\nCached:\nMapped:  3";
    EXPECT_EQ(memory_figure(text, "MemTotal:"), uint64_t{24684092} * 1024);
    EXPECT_EQ(memory_figure(text, "MemFree:"), 9 * 1024);
    EXPECT_FALSE(memory_figure(text, "Cached:") || memory_figure(text, "MemAvailable:"));
}

TEST(MountTable, EntriesAreDecodedWhateverTheirLength) {
    const std::string deep = "/" + std::string(4000, 'd');
    const std::string overlay = "overlay overlay lowerdir=" + std::string(100000, 'l');
    const auto table = parse_mount_table(
        "36 35 98:0 / /home/of\\040all rw,noatime - nfs4 server:/home rw\n37 36 0:41 /sub " + deep +
        " rw master:1 shared:7 - fuse.a\\134b - rw\n38 36 0:42 / / rw shared:2 - " + overlay +
        "\nx 36 0:1 / /a rw - ext4 d rw\n9 9x 0:1 / /a rw - ext4 d rw\n9 9 0:1 / a rw - ext4 d rw\n"
        "9 9 0:1 / /a rw ext4 d rw\n\n1 2 0:3 / /\\7\\09\\1 - proc");
    using testing::FieldsAre;
    EXPECT_THAT(table, testing::ElementsAre(FieldsAre(36, 35, "98:0", "/home/of all", "nfs4"),
                                            FieldsAre(37, 36, "0:41", deep, "fuse.a\\b"),
                                            FieldsAre(38, 36, "0:42", "/", "overlay")));
}

// "local" mounts are asked for their size, "away" ones are not, the others stand for nothing.
TEST(MountTable, EveryLocalFileSystemIsAskedOnce) {
    const struct {
        const char *mount, *expected;
    } cases[] = {
        {"1 0 8:1 / / rw - ext4 d rw", "local"},
        {"2 1 0:5 / /dev rw - devtmpfs d rw", "away"},
        {"3 2 0:6 / /dev/shm rw - tmpfs d rw", "away"},
        {"4 1 0:7 / /ram rw - ramfs d rw", "away"},
        {"5 1 0:8 /home /home rw - btrfs /dev/sdb rw,subvol=/home", "local"},
        {"6 1 0:8 /srv /srv rw - btrfs /dev/sdb rw,subvol=/srv", ""},
        {"7 1 8:1 /opt /bind rw - ext4 d rw", ""},
        {"8 1 8:2 / /private rw - xfs d rw", ""},  // not within reach here, but below
        {"9 1 8:2 / /public rw - xfs d rw", "local"},
        {"10 1 8:3 / /over rw - ext4 d rw", ""},  // what follows is mounted over it
        {"11 10 8:4 / /over rw - ext4 d rw", "local"},
        {"12 11 8:5 / /over/a/b rw - ext4 d rw", ""},
        {"13 11 8:6 / /over/a rw - ext4 d rw", "local"},
        {"14 12 8:7 / /over/a/b/c rw - ext4 d rw", ""},
        {"15 1 8:8 / /overt rw - fuseblk d rw", "local"},
        {"16 1 0:20 / /net rw - nfs4 s:/ rw", "away"},
        {"17 16 8:9 / /net/disk rw - ext4 d rw", "away"},  // the way there may wait
        {"18 17 8:10 / /net/disk/d rw - ext4 d rw", "away"},
        {"19 1 0:21 / /auto rw - autofs s rw", ""},
        {"20 19 8:11 / /auto rw - ext4 d rw", "local"},
        {"28 1 0:25 / /misc rw - autofs s rw", "away"},
        {"21 1 0:22 / /ssh rw - fuse.sshfs s rw", "away"},
        {"22 1 0:23 / /fuse rw - fuse s rw", "away"},
        {"23 23 8:12 / /loop rw - nfsd s rw", "local"},      // as the first root may
        {"24 99 8:13 / /far/disk rw - ext4 d rw", "local"},  // its parent lies outside
        {"25 99 0:24 / /far/away rw - ext4 d rw", ""},
        {"26 99 8:14 / /far/away/a rw - ext4 d rw", ""},
        {"27 25 8:15 / /far/away rw - ext4 d rw", "local"},
    };
    std::string text;
    std::vector<std::string> expected, got;
    for (const auto& [mount, answer] : cases) {
        (text += mount) += '\n';
        if (*answer != '\0') {
            expected.push_back(parse_mount_table(mount).at(0).mount_point + " " + answer);
        }
    }
    static int asked = 0;
    const auto size_of = [](const char* path, struct statvfs* answer) {
        ++asked;
        answer->f_frsize = 512;
        answer->f_blocks = 7;
        answer->f_bfree = 5;
        return std::string(path) == "/private" ? -1 : 0;
    };
    for (const MountedFileSystem& found : file_systems_of(parse_mount_table(text), size_of)) {
        const auto& [path, size, blocks, free_blocks, local] = found;
        got.push_back(path + (local ? " local" : " away"));
        EXPECT_EQ(std::tuple(size, blocks, free_blocks),
                  local ? std::tuple(512, 7, 5) : std::tuple(0, 0, 0));
    }
    EXPECT_EQ(got, expected);
    EXPECT_EQ(asked, 11);
    // A root that waits holds nothing else back.
    const auto found = file_systems_of(parse_mount_table("1 0 0:1 / / rw - nfs s rw\n"
                                                         "2 1 8:1 / /tmp rw - ext4 d rw\n"),
                                       [](const char*, struct statvfs*) { return 0; });
    EXPECT_EQ(found.size(), 2U);
    EXPECT_TRUE(!found[0].local && found[1].local);
}

TEST(Machine, SaysTheSameHereAndElsewhere) {
    std::string domain;
    std::ifstream("/proc/sys/kernel/domainname") >> domain;
    EXPECT_EQ(domain_name(), domain == "(none)" ? "" : domain);
    EXPECT_EQ(nis_domain(), domain_name());
    EXPECT_GT(available_space("/").value().block_size, 0U);
    EXPECT_FALSE(available_space("/no such folder"));
    EXPECT_EQ(errno, ENOENT);
}

TEST(Machine, LinkLayerAddressesOfOtherLengths) {
    sockaddr_ll link = {AF_PACKET, 0, 0, 0, 0, 0, {1, 2, 3, 4, 5, 6, 7, 8}};
    ifaddrs entry = {};
    EXPECT_EQ(link_layer_address(entry), LinkLayerAddress{}) << "of a VPN's tunnel";
    entry.ifa_addr = reinterpret_cast<sockaddr*>(&link);
    link.sll_halen = 4;  // of an IPv4 tunnel
    EXPECT_EQ(link_layer_address(entry), (LinkLayerAddress{1, 2, 3, 4, 0, 0}));
    link.sll_halen = 20;  // of InfiniBand
    EXPECT_EQ(link_layer_address(entry), (LinkLayerAddress{1, 2, 3, 4, 5, 6}));
    link.sll_family = AF_INET;
    EXPECT_EQ(link_layer_address(entry), std::nullopt);
}
