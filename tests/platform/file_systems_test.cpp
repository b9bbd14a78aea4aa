// The mount table, what is decided from it, and the sizes.
#include <gmock/gmock.h>

#include "platform/linux/mount_table.h"
#include "platform/posix/block_counts.h"
#include "support/owners.h"

namespace velora_com::qel::platform {
namespace {

TEST(MountTable, EntriesAreDecodedWhateverTheirLength) {
    const std::string deep = "/" + std::string(4000, 'd');
    std::string text =
        "# a comment\n\nserver:/home /home/of\\040all nfs4 rw,addr=192.0.2.1 0 0\n"
        "overlay " +
        deep + " overlay rw,lowerdir=" + std::string(100000, 'l') + " 0 0\ncut";
    const support::File file(fmemopen(text.data(), text.size(), "r"));
    const auto table = read_mount_table(file.get());
    ASSERT_GE(table.size(), 2U);
    EXPECT_EQ(table[0].mount_point + " " + table[0].type, "/home/of all nfs4");
    EXPECT_EQ(table[1].mount_point + " " + table[1].type, deep + " overlay");
}

TEST(MountTable, WhatMayWaitIsNotAsked) {
    for (const char* type : {"nfs4", "cifs", "9p", "fuse", "fuse.sshfs", "autofs"}) {
        EXPECT_TRUE(may_wait(type)) << type;
    }
    for (const char* type : {"ext4", "overlay", "fuseblk", "fusectl", "nfsd", ""}) {
        EXPECT_FALSE(may_wait(type)) << type;
    }
    const std::vector<MountEntry> table = {
        {"/", "nfs"}, {"/boot", "autofs"}, {"/data", "ext4"}, {"/net/home", "nfs4"}};
    for (const char* path : {"/net/home", "/net/home/scratch"}) {
        EXPECT_TRUE(lies_in_waiting_mount(table, path)) << path;
    }
    for (const char* path : {"/", "/boot", "/data", "/net", "/net/homes", ""}) {
        EXPECT_FALSE(lies_in_waiting_mount(table, path)) << path;
    }
}

TEST(BlockCounts, LargeSizesAreGivenInLargerBlocks) {
    constexpr uint64_t one = 1;
    constexpr int32_t most = INT32_MAX;
    using Counts = std::tuple<int32_t, int32_t, int32_t>;
    const std::pair<std::array<uint64_t, 3>, Counts> cases[] = {
        {{4096, (one << 31) - 1, 5}, {4096, most, 5}},
        {{4096, one << 31, 5}, {8192, 1 << 30, 2}},
        {{4096, (one << 38) + 255, one << 37}, {1 << 20, 1 << 30, 1 << 29}},
        {{512, one << 62, one << 61}, {1 << 20, most, most}},
        {{one << 21, 7, 3}, {1 << 21, 7, 3}},
        {{UINT64_MAX, UINT64_MAX, UINT64_MAX}, {most, most, most}},
        {{0, 0, 0}, {0, 0, 0}},
    };
    for (const auto& [stated, expected] : cases) {
        MountedFileSystem sized{"/", 0, 0, 0, true};
        set_block_counts(sized, stated[0], stated[1], stated[2]);
        EXPECT_EQ(Counts(sized.block_size, sized.blocks, sized.free_blocks), expected);
    }
}

}  // namespace
}  // namespace velora_com::qel::platform
