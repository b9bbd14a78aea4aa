#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cctype>
#include <string>

#include "support/temporary_folder.h"
#include "vlrcomn/file_system.h"

namespace {

namespace fs = std::filesystem;

class Directories : public testing::Test {
protected:
    Directories() { fs::current_path(folder_.path()); }
    ~Directories() override { fs::current_path(before_); }

    // Makes the directories of a path, narrow and wide, and expects the one and only result.
    void make(const std::string& path) {
        EXPECT_EQ(orumcomn_MakeRecursiveDirectoryA((folder_ / "A" + path).c_str()), ORU_FAILURE);
        std::wstring wide;
        for (const char byte : folder_ / "W" + path) {
            wide += static_cast<wchar_t>(static_cast<unsigned char>(byte));
        }
        EXPECT_EQ(orumcomn_MakeRecursiveDirectoryW(wide.c_str()), ORU_FAILURE);
    }
    void expect(bool made, const std::string& path) {
        EXPECT_EQ(is_there(folder_ / "A" + path), made) << path;
        EXPECT_EQ(is_there(folder_ / "W" + path), made) << path;
    }

    const fs::path before_ = fs::current_path();
    const TemporaryFolder folder_;
};

TEST_F(Directories, OnlyWhatEndsInASlashIsMade) {
    make("a/\xe4/");
    expect(true, "a/\xe4");
    make("c/d/e");
    expect(true, "c/d");
    expect(false, "c/d/e");
    struct stat status;
    ASSERT_EQ(stat((folder_ / "Ac/d").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 077, 0u);

    const std::string longest(257 - (folder_ / "").size(), 'x');
    make(longest + "/");
    expect(true, longest);
    make("y/" + longest.substr(1) + "/");
    expect(false, "y");
    orumcomn_MakeRecursiveDirectoryW(L"first/z\x100/z/");
    EXPECT_FALSE(is_there("first")) << "a character whose low byte is zero";
    EXPECT_EQ(orumcomn_MakeRecursiveDirectoryA(nullptr), ORU_FAILURE);
    EXPECT_EQ(orumcomn_MakeRecursiveDirectoryW(nullptr), ORU_FAILURE);

    // A slash among the first four characters makes nothing.
    for (const char* path : {"", "/", "123/5", "1/2/3", "1234/"}) {
        orumcomn_MakeRecursiveDirectoryA(path);
    }
    EXPECT_FALSE(is_there("123"));
    EXPECT_FALSE(is_there("1"));
    EXPECT_TRUE(is_there("1234"));
}

TEST_F(Directories, FolderExists) {
    const std::string padded = folder_.path() + std::string(259 - folder_.path().size(), '/');
    fs::create_symlink(".", "link");
    for (const std::string& folder :
         {folder_.path(), folder_ / "", folder_.path() + "\\", folder_ / "link", padded}) {
        EXPECT_EQ(orFolderExists(folder.c_str()), 1) << folder;
    }
    for (const std::string& other :
         {folder_.write("file"), folder_.path() + "\\\\", folder_ / "no", std::string(),
          std::string("\\"), padded + "/", padded + "\\"}) {
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
    EXPECT_EQ(orumcomn_get_file_sizeA("missing", &size), ORU_FAILURE);
    EXPECT_EQ(orumcomn_get_file_sizeA(nullptr, &size), ORU_FAILURE);
    EXPECT_EQ(orumcomn_get_file_sizeA("/", nullptr), ORU_FAILURE);
}

TEST(GuidText, IsBracedUpperCaseAndCutToItsRoom) {
    GUID guid;
    std::string text(64, 'x');
    ASSERT_TRUE(orumcomn_create_guid(&guid, text.data(), 63));
    std::string expected(ORU_GUID_TEXT_SIZE - 1, ' ');
    oruUuidToStringA(&guid, expected.data());
    for (char& letter : expected) {
        letter = static_cast<char>(std::toupper(letter));
    }
    EXPECT_EQ(text, "{" + expected + "}" + std::string(25, '\0') + "x") << "filled up";

    text.assign(6, 'x');
    EXPECT_TRUE(orumcomn_create_guid(nullptr, text.data(), 5));
    EXPECT_EQ(text.find_first_of(std::string("x\0", 2)), 5u) << "cut without a terminator";
    EXPECT_TRUE(orumcomn_create_guid(&guid, nullptr, 0));
    EXPECT_FALSE(orumcomn_create_guid(&guid, nullptr, 39));
}

}  // namespace
