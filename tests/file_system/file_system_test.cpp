// Copies, directories, sizes and the braced text of a GUID.
#include <gtest/gtest.h>

#include <cerrno>
#include <string>

#include "support/assertion_message.h"
#include "support/temporary_folder.h"
#include "vlrcomn/file_system.h"
#include "vlrcomn/time_text.h"

namespace {

namespace fs = std::filesystem;
using velora_com::qel::orumcomn_convert_to_upper;

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
    EXPECT_EQ(contents_of(to_), "kept");
    EXPECT_EQ(contents_of(source_), "contents");
}

class Directories : public testing::Test {
protected:
    Directories() { fs::current_path(folder_.path()); }
    ~Directories() override { fs::current_path(before_); }

    static uint32_t make(const std::string& path) {
        return orumcomn_MakeRecursiveDirectoryA(path.c_str());
    }

    const fs::path before_ = fs::current_path();
    const TemporaryFolder folder_;
};

TEST_F(Directories, OnlyWhatEndsInASlashIsMade) {
    EXPECT_EQ(make(folder_ / "c/d/e"), ORU_FAILURE) << "the one and only result";
    EXPECT_TRUE(is_there("c/d"));
    EXPECT_FALSE(is_there("c/d/e"));
    EXPECT_EQ(fs::status("c/d").permissions() & fs::perms(077), fs::perms::none);
    const std::string longest(258 - (folder_ / "").size(), 'x');
    make(folder_ / longest + "/");
    EXPECT_TRUE(is_there(longest));
    make(folder_ / "y/" + longest.substr(1) + "/");
    EXPECT_FALSE(is_there("y"));
    EXPECT_EQ(make("1/2/3/"), ORU_FAILURE);
    EXPECT_FALSE(is_there("1")) << "a slash among the first four characters";

    EXPECT_EQ(orumcomn_MakeRecursiveDirectoryW(L"wide/\x00e4/"), ORU_FAILURE);
    EXPECT_TRUE(is_there("wide/\xe4")) << "the low byte of each character";
    orumcomn_MakeRecursiveDirectoryW(L"first/z\x100/z/");
    EXPECT_FALSE(is_there("first")) << "a character whose low byte is zero";
}

TEST_F(Directories, FolderExists) {
    const std::string padded = folder_.path() + std::string(259 - folder_.path().size(), '/');
    fs::create_symlink(".", "link");
    for (const std::string& folder :
         {folder_.path(), folder_ / "", folder_.path() + "\\", folder_ / "link", padded}) {
        EXPECT_EQ(orFolderExists(folder.c_str()), 1) << folder;
    }
    for (const std::string& other :
         {folder_.write("file"), folder_.path() + "\\\\", std::string("\\"), padded + "/"}) {
        EXPECT_EQ(orFolderExists(other.c_str()), 0) << other;
    }
    EXPECT_DEATH(orFolderExists(nullptr),
                 assertion_message("\\.\\./source/orufio", "190", "orFolderExists", "lpszFolder"));
}

TEST_F(Directories, SizeOfAFile) {
    uint32_t size = 7;
    fs::resize_file(folder_.write("file"), 0x100000004);
    EXPECT_EQ(orumcomn_get_file_sizeA("file", &size), ORU_SUCCESS);
    EXPECT_EQ(size, 4u);
}

TEST(GuidText, IsBracedUpperCaseAndCutToItsRoom) {
    GUID guid;
    std::string text(64, 'x'), plain(ORU_GUID_TEXT_SIZE - 1, ' ');
    ASSERT_TRUE(orumcomn_create_guid(&guid, text.data(), 63));
    oruUuidToStringA(&guid, plain.data());
    EXPECT_EQ(text, "{" + orumcomn_convert_to_upper(plain) + "}" + std::string(25, '\0') + "x");

    text.assign(6, 'x');
    EXPECT_TRUE(orumcomn_create_guid(nullptr, text.data(), 5));
    EXPECT_EQ(text.find_first_of(std::string("x\0", 2)), 5u) << "cut without a terminator";
    EXPECT_FALSE(orumcomn_create_guid(&guid, nullptr, 39));
}

}  // namespace
