#include <gtest/gtest.h>

#include <string>

#include "support/temporary_folder.h"
#include "vlrcomn/file_system.h"
#include "vlrcomn/time_text.h"

namespace {

namespace fs = std::filesystem;
using velora_com::qel::orumcomn_convert_to_upper;

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
                 "\\.\\./source/orufio:190: orFolderExists: Assertion `lpszFolder' failed"
                 "|\\(lpszFolder\\), function orFolderExists, file \\.\\./source/orufio, line 190");
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
