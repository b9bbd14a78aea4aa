// This machine's answers against what the machine says elsewhere.
#include <gmock/gmock.h>
#include <ifaddrs.h>
#include <netpacket/packet.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/utsname.h>

#include <cmath>
#include <ctime>
#include <fstream>
#include <iomanip>
#include <sstream>

#include "platform/platform.h"
#include "support/owners.h"

namespace velora_com::qel::platform {
namespace {

using testing::Optional;

std::string first_line(const std::string& path) {
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return line;
}

// One of `free`'s figures in bytes: the column of the line "Mem:", counted from 1.
uint64_t memory_column(int column) {
    const auto text = run_command(
        ("free -b | awk '/^Mem:/ { printf \"%.0f\", $" + std::to_string(column + 1) + " }'")
            .c_str(),
        100);
    return text && !text->empty() ? std::stoull(*text) : 0;
}

TEST(Machine, ProcessorIsTheOneThatRunsTheTest) {
    std::ifstream online("/sys/devices/system/cpu/online");
    int32_t count = 0;
    for (int first = 0, last = 0; online >> first; online.ignore(1, ',')) {
        last = first;
        if (online.peek() == '-') {
            online.ignore();
            online >> last;
        }
        count += last - first + 1;
    }
    EXPECT_THAT(processor_count(), Optional(count));

    utsname name = {};
    ASSERT_EQ(uname(&name), 0);
    if (std::string(name.machine) == "x86_64") {
        EXPECT_THAT(architecture_code(), Optional(10));
        EXPECT_THAT(processor_type_code(), Optional(0x69787878));
        EXPECT_THAT(processor_clock_hz(), Optional(testing::AllOf(testing::Gt(100'000'000U),
                                                                  testing::Lt(10'000'000'000U))));
    }
}

TEST(Machine, MemoryIsThatOfTheKernel) {
    const uint64_t total = memory_column(1);
    if (total == 0) {
        GTEST_SKIP() << "needs the command free";
    }
    EXPECT_THAT(installed_memory(), Optional(total));
    const auto pages = free_pages();
    ASSERT_TRUE(pages);
    EXPECT_EQ(pages->page_size, static_cast<uint64_t>(sysconf(_SC_PAGESIZE)));
    // Other programs come and go meanwhile.
    const auto free_bytes = static_cast<double>(pages->count * pages->page_size);
    EXPECT_NEAR(free_bytes, static_cast<double>(memory_column(3)), static_cast<double>(total) / 8);
}

TEST(Machine, FileSystemsHaveTheSizesThatTheSystemStates) {
    const auto listed = mounted_file_systems();
    int compared = 0;
    std::vector<dev_t> devices;
    for (const MountedFileSystem& entry : listed) {
        SCOPED_TRACE(entry.mount_point);
        if (!entry.local) {
            EXPECT_EQ(entry.blocks, 0);
            continue;
        }
        struct statvfs answer;
        struct stat root;
        if (statvfs(entry.mount_point.c_str(), &answer) != 0 ||
            stat(entry.mount_point.c_str(), &root) != 0) {
            continue;  // unmounted meanwhile
        }
        EXPECT_THAT(devices, testing::Not(testing::Contains(root.st_dev)));
        devices.push_back(root.st_dev);
        // Larger blocks lose less than one of them.
        EXPECT_NEAR(static_cast<double>(entry.blocks) * entry.block_size,
                    static_cast<double>(answer.f_blocks) * static_cast<double>(answer.f_frsize),
                    entry.block_size);
        EXPECT_LE(entry.free_blocks, entry.blocks);
        ++compared;
    }
    EXPECT_GT(compared, 0);
}

TEST(Machine, AvailableSpaceIsThatOfOrdinaryUsers) {
    const auto space = available_space("/proc");
    ASSERT_TRUE(space);
    EXPECT_EQ(space->blocks, 0U);
    EXPECT_GT(space->block_size, 0U);
    errno = 0;
    EXPECT_FALSE(available_space("/no such folder"));
    EXPECT_EQ(errno, ENOENT);
}

TEST(Machine, BootTimeAndUptimeMakeNow) {
    const auto booted = boot_time();
    ASSERT_TRUE(booted);
    const double uptime = std::stod(first_line("/proc/uptime"));
    EXPECT_NEAR(static_cast<double>(*booted) + uptime, static_cast<double>(std::time(nullptr)),
                5.0);
}

TEST(Machine, DomainNamesAreEmptyWhileUnset) {
    std::string kernel = first_line("/proc/sys/kernel/domainname");
    if (kernel == "(none)") {
        kernel.clear();
    }
    EXPECT_THAT(domain_name(), Optional(kernel));
    EXPECT_THAT(nis_domain(), Optional(kernel));
}

TEST(Machine, LinkLayerAddressesAreThoseOfTheInterfaces) {
    ifaddrs* list = nullptr;
    ASSERT_EQ(getifaddrs(&list), 0);
    const support::InterfaceAddresses owner(list);
    for (const ifaddrs* entry = list; entry != nullptr; entry = entry->ifa_next) {
        SCOPED_TRACE(entry->ifa_name);
        const auto address = link_layer_address(*entry);
        const bool expected = entry->ifa_addr != nullptr && entry->ifa_addr->sa_family == AF_PACKET;
        ASSERT_EQ(address.has_value(), expected);
        if (expected) {
            std::ostringstream text;
            for (const unsigned byte : *address) {
                text << (text.tellp() > 0 ? ":" : "") << std::hex << std::setw(2)
                     << std::setfill('0') << byte;
            }
            EXPECT_EQ(text.str(),
                      first_line("/sys/class/net/" + std::string(entry->ifa_name) + "/address"));
        }
    }
}

TEST(Machine, LinkLayerAddressesOfOtherLengths) {
    sockaddr_ll link = {};
    link.sll_family = AF_PACKET;
    for (unsigned char i = 0; i < sizeof link.sll_addr; ++i) {
        link.sll_addr[i] = static_cast<unsigned char>(i + 1);
    }
    ifaddrs entry = {};
    EXPECT_EQ(link_layer_address(entry), std::nullopt);
    entry.ifa_addr = reinterpret_cast<sockaddr*>(&link);
    link.sll_halen = 4;  // of an IPv4 tunnel
    EXPECT_THAT(link_layer_address(entry), Optional(LinkLayerAddress{1, 2, 3, 4, 0, 0}));
    link.sll_halen = 20;  // of InfiniBand
    EXPECT_THAT(link_layer_address(entry), Optional(LinkLayerAddress{1, 2, 3, 4, 5, 6}));
}

}  // namespace
}  // namespace velora_com::qel::platform
