#include <gmock/gmock.h>
#include <sys/stat.h>

#include <cstring>
#include <string>

#include "support/temporary_folder.h"
#include "vlrcomn/file_system.h"

namespace {

class Directories : public testing::Test {
protected:
    const TemporaryFolder folder_;
};

TEST_F(Directories, OnlyWhatEndsInASlashIsMade) {
    EXPECT_EQ(orumcomn_MakeRecursiveDirectoryA((folder_ / "a/b/").c_str()), ORU_FAILURE);
    EXPECT_TRUE(is_there(folder_ / "a/b"));
    EXPECT_EQ(orumcomn_MakeRecursiveDirectoryA((folder_ / "c/d/e").c_str()), ORU_FAILURE);
    EXPECT_TRUE(is_there(folder_ / "c/d"));
    EXPECT_FALSE(is_there(folder_ / "c/d/e"));
    struct stat status;
    ASSERT_EQ(stat((folder_ / "c/d").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 077, 0u);
    const std::wstring wide(folder_.path().begin(), folder_.path().end());
    orumcomn_MakeRecursiveDirectoryW((wide + L"/\xe4/f/").c_str());
    EXPECT_TRUE(is_there(folder_ / "\xe4/f"));

    const std::string before = folder_ / "";
    const size_t room = 258 - before.size();
    orumcomn_MakeRecursiveDirectoryA((before + std::string(room, 'x') + "/").c_str());
    EXPECT_TRUE(is_there(before + std::string(room, 'x')));
    orumcomn_MakeRecursiveDirectoryA((before + "y/" + std::string(room, 'y')).c_str());
    EXPECT_FALSE(is_there(before + "y")) << "over 259 bytes";
    orumcomn_MakeRecursiveDirectoryW((wide + L"/w/" + std::wstring(room, L'w')).c_str());
    orumcomn_MakeRecursiveDirectoryW((wide + L"/z\x100/z/").c_str());
    EXPECT_FALSE(is_there(folder_ / "w"));
    EXPECT_FALSE(is_there(folder_ / "z"));
    EXPECT_EQ(orumcomn_MakeRecursiveDirectoryA(nullptr), ORU_FAILURE);
    EXPECT_EQ(orumcomn_MakeRecursiveDirectoryW(nullptr), ORU_FAILURE);

    // A slash among the first four characters makes nothing.
    const auto cwd = std::filesystem::current_path();
    std::filesystem::current_path(folder_.path());
    for (const char* path : {"", "/", "123/", "1/2/3", "1234/"}) {
        orumcomn_MakeRecursiveDirectoryA(path);
    }
    std::filesystem::current_path(cwd);
    EXPECT_FALSE(is_there(folder_ / "123"));
    EXPECT_FALSE(is_there(folder_ / "1"));
    EXPECT_TRUE(is_there(folder_ / "1234"));
}

TEST_F(Directories, FolderExists) {
    const std::string file = folder_.write("file");
    std::filesystem::create_symlink(".", folder_ / "link");
    const std::string padded = folder_.path() + std::string(259 - folder_.path().size(), '/');
    const struct {
        std::string path;
        int result;
    } cases[] = {
        {folder_.path(), 1},
        {folder_ / "", 1},
        {folder_.path() + "\\", 1},
        {folder_.path() + "\\\\", 0},
        {file, 0},
        {folder_ / "missing", 0},
        {folder_ / "link", 1},
        {"", 0},
        {"\\", 0},
        {padded, 1},
        {padded + "/", 0},
        {padded + "\\", 0},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(orFolderExists(each.path.c_str()), each.result) << each.path;
    }
    EXPECT_DEATH(orFolderExists(nullptr),
                 "\\.\\./source/orufio:190: orFolderExists: Assertion `lpszFolder' failed"
                 "|\\(lpszFolder\\), function orFolderExists, file \\.\\./source/orufio, line 190");
}

TEST_F(Directories, SizeOfAFile) {
    uint32_t size = 7;
    EXPECT_EQ(orumcomn_get_file_sizeA(folder_.write("file", "123").c_str(), &size), ORU_SUCCESS);
    EXPECT_EQ(size, 3u);
    std::filesystem::resize_file(folder_ / "file", 0x100000004);
    EXPECT_EQ(orumcomn_get_file_sizeA((folder_ / "file").c_str(), &size), ORU_SUCCESS);
    EXPECT_EQ(size, 4u);
    EXPECT_EQ(orumcomn_get_file_sizeA((folder_ / "missing").c_str(), &size), ORU_FAILURE);
    EXPECT_EQ(orumcomn_get_file_sizeA(nullptr, &size), ORU_FAILURE);
    EXPECT_EQ(orumcomn_get_file_sizeA("/", nullptr), ORU_FAILURE);
}

TEST(GuidText, IsBracedUpperCaseAndCutToItsRoom) {
    GUID guid;
    char text[64];
    std::memset(text, 'x', sizeof text);
    ASSERT_TRUE(orumcomn_create_guid(&guid, text, sizeof text));
    char plain[ORU_GUID_TEXT_SIZE];
    oruUuidToStringA(&guid, plain);
    std::string expected = "{" + std::string(plain) + "}";
    for (char& letter : expected) {
        letter = static_cast<char>(toupper(letter));
    }
    EXPECT_EQ(text, expected);
    EXPECT_EQ(std::strlen(text), 38u);
    EXPECT_EQ(text[63], '\0') << "filled up";

    char small[6] = "xxxxx";
    EXPECT_TRUE(orumcomn_create_guid(nullptr, small, 5));
    EXPECT_EQ(small[0], '{');
    EXPECT_NE(small[4], 'x');
    EXPECT_EQ(small[5], '\0');
    EXPECT_TRUE(orumcomn_create_guid(&guid, nullptr, 0));
    EXPECT_FALSE(orumcomn_create_guid(&guid, nullptr, 39));
}

}  // namespace
