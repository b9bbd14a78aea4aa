// What the Linux answerer reads out of the system's texts and says of this machine; the test of the whole
// report compares processors, memory, disks and interfaces with the system's own tools.
#include <gmock/gmock.h>
#include <ifaddrs.h>
#include <netpacket/packet.h>

#include <ctime>
#include <fstream>

#include "platform/linux/cpu_info.h"
#include "platform/linux/memory_info.h"
#include "platform/linux/mount_table.h"
#include "support/owners.h"

namespace velora_com::qel::platform {
namespace {

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
        "        total:    used:    free:\n"  // kernels before 2.6 began so
        "MemTotal:       24684092 kB\nHighMemFree:           7 kB\nMemFree:              9 kB\n"
        "Cached:\nMapped:        3";
    EXPECT_EQ(memory_figure(text, "MemTotal:"), uint64_t{24684092} * 1024);
    EXPECT_EQ(memory_figure(text, "MemFree:"), 9 * 1024);
    EXPECT_EQ(memory_figure(text, "Cached:"), std::nullopt);
    EXPECT_EQ(memory_figure(text, "MemAvailable:"), std::nullopt);
}

TEST(MountTable, EntriesAreDecodedWhateverTheirLength) {
    const std::string deep = "/" + std::string(4000, 'd');
    std::string text = "# a comment\n\nserver:/home /home/of\\040all nfs4 rw 0 0\noverlay " + deep +
                       " overlay lowerdir=" + std::string(100000, 'l') + " 0 0\ncut";
    const support::File file(fmemopen(text.data(), text.size(), "r"));
    const auto table = read_mount_table(file.get());
    ASSERT_GE(table.size(), 2U);
    EXPECT_EQ(table[0].mount_point + " " + table[0].type, "/home/of all nfs4");
    EXPECT_EQ(table[1].mount_point + " " + table[1].type, deep + " overlay");
}

TEST(MountTable, WhatMayWaitIsNotAsked) {
    for (const char* type : {"nfs4", "fuse", "fuse.sshfs", "autofs"}) {
        EXPECT_TRUE(may_wait(type)) << type;
    }
    for (const char* type : {"ext4", "fuseblk", "nfsd", ""}) {
        EXPECT_FALSE(may_wait(type)) << type;
    }
    const std::vector<MountEntry> table = {{"/", "nfs"}, {"/boot", "autofs"}, {"/home", "nfs4"}};
    EXPECT_TRUE(lies_in_waiting_mount(table, "/home"));
    EXPECT_TRUE(lies_in_waiting_mount(table, "/home/scratch"));
    for (const char* path : {"/", "/boot", "/homes", ""}) {
        EXPECT_FALSE(lies_in_waiting_mount(table, path)) << path;
    }
}

TEST(Machine, SaysTheSameHereAndElsewhere) {
    double uptime = 0;
    std::ifstream("/proc/uptime") >> uptime;
    EXPECT_NEAR(static_cast<double>(boot_time().value()) + uptime,
                static_cast<double>(std::time(nullptr)), 5.0);
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

}  // namespace
}  // namespace velora_com::qel::platform
