#include "vlrcomn/file_system.h"
#include "support/test.h"

struct FileSystem : testing::Test {
    // Expects a copy that fails for the reason given, or succeeds if it is 0.
    void copy(int reason, const std::string& from, const std::string& to, int overwrite = 1) {
        errno = 0;
        EXPECT_EQ(orumcomn_copy_file(from.c_str(), to.c_str(), overwrite), reason == 0);
        EXPECT_TRUE(reason == 0 || errno == reason) << errno << " for " << from << " to " << to;
    }

    const TemporaryFolder folder_;
    const std::string source_ = folder_.write("source", "contents"), to_ = folder_ / "to";
};

TEST_F(FileSystem, ACopyThatFailsLosesNothing) {
    folder_.write("to", "longer than the source");
    fs::create_hard_link(source_, folder_ / "hard");
    fs::create_symlink("source", folder_ / "soft");
    for (const std::string same : {"source", "hard", "soft"}) {
        copy(EINVAL, source_, folder_ / same);
        copy(EINVAL, folder_ / same, source_);
    }
    copy(EEXIST, source_, to_, 2);
    copy(EISDIR, folder_.path(), to_);
    copy(EISDIR, source_, folder_ / "folder/");
    EXPECT_TRUE(is_there(folder_ / "folder")) << "made all the same";
    if (is_there("/dev/full")) {
        copy(ENOSPC, source_, "/dev/full");
    }
    EXPECT_EQ(contents_of(to_), "longer than the source");
    EXPECT_EQ(contents_of(source_), "contents");
    copy(0, source_, to_);
    copy(0, source_, folder_ / "a/b//c/copy", 0);
    EXPECT_EQ(contents_of(to_) + contents_of(folder_ / "a/b/c/copy"), "contentscontents");
}

TEST_F(FileSystem, OnlyWhatEndsInASlashIsMade) {
    const std::string long_one = "long/" + std::string(253, 'x');
    folder_.enter();
    // The last one has a slash among the first four characters.
    for (const auto& path :
         {std::string("cccc/d/e"), long_one + "/", long_one + "x/", std::string("123/4/")}) {
        EXPECT_EQ(orumcomn_MakeRecursiveDirectoryA(path.c_str()), ORU_FAILURE) << "in any case";
    }
    orumcomn_MakeRecursiveDirectoryW(L"wide/\x1e4/");
    orumcomn_MakeRecursiveDirectoryW(L"first/z\x100/z/");
    const std::wstring long_wide = std::wstring(259, L'l') + L'/';
    EXPECT_EQ(orumcomn_MakeRecursiveDirectoryW(long_wide.c_str()), ORU_FAILURE);
    EXPECT_EQ(orumcomn_MakeRecursiveDirectoryW(nullptr), ORU_FAILURE);
    EXPECT_EQ(orumcomn_MakeRecursiveDirectoryA(nullptr), ORU_FAILURE);
    std::set<fs::path> made;
    for (const auto& entry : fs::recursive_directory_iterator(".")) {
        made.insert(fs::relative(entry));
    }
    EXPECT_THAT(made, testing::ElementsAre("cccc", "cccc/d", "long", long_one, "source", "wide",
                                           "wide/\xe4"));
    EXPECT_EQ(fs::status(folder_ / "cccc").permissions(), fs::perms::owner_all);
}

TEST_F(FileSystem, TellsFoldersAndSizes) {
    const std::string& path = folder_.path();
    const std::string padded = path + std::string(259 - path.size(), '/');
    EXPECT_EQ(orFolderExists(padded.c_str()), 1);
    EXPECT_EQ(orFolderExists((padded + "/").c_str()), 0);
    EXPECT_EQ(orFolderExists((path + "\\").c_str()), 1);
    EXPECT_EQ(orFolderExists((path + "\\\\").c_str()), 0);
    EXPECT_EQ(orFolderExists(source_.c_str()), 0);
    EXPECT_EQ(orFolderExists(""), 0);
    EXPECT_DEATH(orFolderExists(nullptr),
                 assertion_message("\\.\\./source/orufio", "190", "orFolderExists", "lpszFolder"));
    uint32_t size = 77;
    EXPECT_TRUE(orumcomn_get_file_sizeA(to_.c_str(), &size) == ORU_FAILURE && size == 0);
    EXPECT_EQ(orumcomn_get_file_sizeA(nullptr, &size), ORU_FAILURE);
    EXPECT_EQ(orumcomn_get_file_sizeA(to_.c_str(), nullptr), ORU_FAILURE);
    fs::resize_file(source_, 0x100000004);
    EXPECT_TRUE(orumcomn_get_file_sizeA(source_.c_str(), &size) == ORU_SUCCESS && size == 4);
}

TEST(GuidText, IsBracedUpperCaseAndCutToItsRoom) {
    GUID guid;
    std::string text(64, 'x');
    EXPECT_TRUE(orumcomn_create_guid(nullptr, text.data(), 5));
    EXPECT_EQ(text.find_first_of(std::string("x\0", 2)), 5u) << "cut without a terminator";
    EXPECT_FALSE(orumcomn_create_guid(&guid, nullptr, 1));
    EXPECT_TRUE(orumcomn_create_guid(&guid, nullptr, 0));
    ASSERT_TRUE(orumcomn_create_guid(&guid, text.data(), 63));
    EXPECT_THAT(text.c_str(), testing::MatchesRegex("\\{[0-9A-F-]{36}\\}"));
    EXPECT_EQ(std::stoul(text.substr(1, 8), nullptr, 16), guid.Data1);
    EXPECT_EQ(text.substr(38), std::string(25, '\0') + "x");
}
