#include <gtest/gtest.h>

#include <cerrno>
#include <string>

#include "support/temporary_folder.h"
#include "vlrcomn/file_system.h"

namespace {

namespace fs = std::filesystem;

class Copy : public testing::Test {
protected:
    // Expects a copy that fails for the reason given, or succeeds if it is 0.
    void copy(int reason, const std::string& from, const std::string& to, int overwrite = 1) {
        errno = 0;
        EXPECT_EQ(orumcomn_copy_file(from.c_str(), to.c_str(), overwrite), reason == 0);
        EXPECT_TRUE(reason == 0 || errno == reason) << errno << " for " << from << " to " << to;
    }

    const TemporaryFolder folder_;
    const std::string source_ = folder_.write("source", "contents");
    const std::string to_ = folder_ / "to";
};

TEST_F(Copy, SizesAroundTheBlocks) {
    for (const size_t size : {0u, 512u, 65536u, 3000001u}) {
        std::string text(size, '\0');
        for (size_t i = 0; i < size; ++i) {
            text[i] = static_cast<char>(i * i >> 3);
        }
        copy(0, folder_.write("source", text), to_);
        EXPECT_TRUE(contents_of(to_) == text) << size;
    }
    if (is_there("/proc/self/cmdline")) {
        copy(0, "/proc/self/cmdline", to_);
        EXPECT_NE(contents_of(to_), "") << "a file without a stated size";
    }
}

TEST_F(Copy, TheFlagDecidesWhatIsOverwritten) {
    folder_.write("to", "longer than the source");
    for (const int flag : {0, 2, -1}) {
        copy(EEXIST, source_, to_, flag);
        EXPECT_EQ(contents_of(to_), "longer than the source");
    }
    copy(0, source_, to_, 1);
    EXPECT_EQ(contents_of(to_), "contents");
    fs::create_symlink("a/b//c/copy", folder_ / "dangling");
    copy(0, source_, folder_ / "a/b//c/other", 0);
    copy(0, source_, folder_ / "dangling", 0);
    EXPECT_EQ(contents_of(folder_ / "a/b/c/copy"), "contents");
}

TEST_F(Copy, AFileOntoItselfFailsAndStaysWhole) {
    fs::create_hard_link(source_, folder_ / "hard");
    fs::create_symlink("source", folder_ / "soft");
    for (const std::string name : {"source", "hard", "soft", "./source"}) {
        copy(EINVAL, source_, folder_ / name);
        copy(EINVAL, folder_ / name, source_);
        EXPECT_EQ(contents_of(source_), "contents");
    }
}

TEST_F(Copy, WhatFailsLeavesBothSides) {
    folder_.write("to", "kept");
    fs::create_directory(folder_ / "folder");
    copy(EISDIR, folder_ / "folder", to_);
    copy(EISDIR, source_, folder_ / "folder");
    if (is_there("/dev/full")) {
        copy(ENOSPC, source_, "/dev/full");
    }
    EXPECT_FALSE(orumcomn_copy_file(nullptr, to_.c_str(), 1));
    EXPECT_EQ(contents_of(to_), "kept");
    EXPECT_EQ(contents_of(source_), "contents");
    copy(ENOENT, folder_ / "missing", folder_ / "made/copy");
    EXPECT_TRUE(fs::is_empty(folder_ / "made")) << "the directories come first";
}

}  // namespace
