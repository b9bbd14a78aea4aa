#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cerrno>
#include <string>
#if defined(__linux__)
#include <sched.h>
#include <sys/mount.h>
#endif

#include "support/temporary_folder.h"
#include "vlrcomn/file_system.h"

namespace {

namespace fs = std::filesystem;

class Copy : public testing::Test {
protected:
    bool copy(const std::string& from, const std::string& to, int overwrite = 1) {
        errno = 0;
        return orumcomn_copy_file(from.c_str(), to.c_str(), overwrite);
    }

    const TemporaryFolder folder_;
    const std::string source_ = folder_.write("source", "contents");
};

TEST_F(Copy, SizesAroundTheBlocks) {
    for (const size_t size : {0u, 1u, 511u, 512u, 513u, 65536u, 65537u, 3000001u}) {
        SCOPED_TRACE(size);
        std::string text(size, '\0');
        for (size_t i = 0; i < size; ++i) {
            text[i] = static_cast<char>(i * i >> 3);
        }
        folder_.write("source", text);
        EXPECT_TRUE(copy(source_, folder_ / "copy"));
        EXPECT_TRUE(contents_of(folder_ / "copy") == text);
    }
    const std::string sparse = folder_.write("sparse", "start");
    fs::resize_file(sparse, 0x100000010);
    // Only where holes stay holes is this quick enough and small enough to be tested.
    struct stat status;
    ASSERT_EQ(stat(sparse.c_str(), &status), 0);
    EXPECT_TRUE(copy("/proc/self/cmdline", folder_ / "unsized")) << "a file without a stated size";
    EXPECT_NE(contents_of(folder_ / "unsized"), "");
}

TEST_F(Copy, TheFlagDecidesWhatIsOverwritten) {
    const std::string to = folder_.write("to", "longer than the source");
    for (const int flag : {0, 2, -1}) {
        EXPECT_FALSE(copy(source_, to, flag));
        EXPECT_EQ(errno, EEXIST);
        EXPECT_EQ(contents_of(to), "longer than the source");
    }
    EXPECT_TRUE(copy(source_, folder_ / "new", 0));
    EXPECT_TRUE(copy(source_, to, 1));
    EXPECT_EQ(contents_of(to), "contents");
    fs::create_symlink("target", folder_ / "dangling");
    EXPECT_TRUE(copy(source_, folder_ / "dangling", 0));
    EXPECT_EQ(contents_of(folder_ / "target"), "contents");
}

TEST_F(Copy, DirectoriesAreMadeAsFarAsTheyHaveNames) {
    EXPECT_TRUE(copy(source_, folder_ / "a/b//c/copy"));
    EXPECT_EQ(contents_of(folder_ / "a/b/c/copy"), "contents");
    EXPECT_FALSE(copy(folder_ / "missing", folder_ / "made/copy"));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_TRUE(is_there(folder_ / "made")) << "the directories come first";
    EXPECT_FALSE(is_there(folder_ / "made/copy"));
}

TEST_F(Copy, AFileOntoItselfFailsAndStaysWhole) {
    fs::create_hard_link(source_, folder_ / "hard");
    fs::create_symlink("source", folder_ / "soft");
    for (const std::string name : {"source", "hard", "soft", "./source"}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(copy(source_, folder_ / name));
        EXPECT_FALSE(copy(folder_ / name, source_));
        EXPECT_EQ(contents_of(source_), "contents");
    }
}

TEST_F(Copy, WhatIsNoFileFailsAndTheDestinationStays) {
    const std::string to = folder_.write("to", "kept");
    fs::create_directory(folder_ / "folder");
    EXPECT_FALSE(copy(folder_ / "folder", to));
    EXPECT_EQ(errno, EISDIR);
    EXPECT_FALSE(copy(folder_ / "missing", to));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(orumcomn_copy_file(nullptr, to.c_str(), 1));
    EXPECT_EQ(contents_of(to), "kept");
    EXPECT_FALSE(copy(source_, folder_ / "folder"));
    EXPECT_EQ(errno, EISDIR);
    EXPECT_FALSE(copy(source_, folder_ / "folder/"));
    EXPECT_FALSE(orumcomn_copy_file(source_.c_str(), nullptr, 1));
    EXPECT_EQ(contents_of(source_), "contents");
    EXPECT_FALSE(copy(source_, "/dev/full"));
    EXPECT_EQ(errno, ENOSPC);
}

#if defined(__linux__)
// In a child with mounts of its own: 0 when the copy onto a disk that is too small fails as it should.
int copy_onto_small_disk(const std::string& source, const std::string& disk) {
    if (unshare(CLONE_NEWNS) != 0 ||
        mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("none", disk.c_str(), "tmpfs", 0, "size=64k") != 0) {
        return 77;
    }
    errno = 0;
    if (orumcomn_copy_file(source.c_str(), (disk + "/copy").c_str(), 1) || errno != ENOSPC) {
        return 1;
    }
    return fs::file_size(source) == 1 << 20 && is_there(disk + "/copy") ? 0 : 2;
}

TEST_F(Copy, AFullDiskIsReported) {
    folder_.write("source", std::string(1 << 20, 'x'));
    fs::create_directory(folder_ / "disk");
    const pid_t child = fork();
    if (child == 0) {
        _exit(copy_onto_small_disk(source_, folder_ / "disk"));
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == 77) {
        GTEST_SKIP() << "mounting a small disk needs root";
    }
    EXPECT_EQ(WEXITSTATUS(status), 0);
}
#endif

}  // namespace
