#include "support/test.h"
#include "sync/error_word.h"
#include "vlrcomn/file.h"
#include "vlrcomn/file_system.h"

using velora_com::qel::sync::nErrno;

// The names that a search finds.
static std::set<std::string> found(const std::string& path) {
    std::set<std::string> names;
    oruFindData data;
    const intptr_t search = oruFindFirstDirEnt(path.c_str(), &data);
    for (bool more = search > 0; more; more = oruFindNextDirEnt(search, &data) == 1) {
        EXPECT_TRUE(names.insert(data.name).second) << data.name;
    }
    EXPECT_EQ(oruFindCloseDirEnt(search) == 1, search > 0);
    return names;
}

struct Search : testing::Test {
    // What a search finds first.
    const oruFindData& first(const std::string& path) {
        std::memset(&data_, 0x55, sizeof data_);
        EXPECT_EQ(oruFindFirstDirEnt(path.c_str(), &data_), 1);
        EXPECT_EQ(oruFindCloseDirEnt(1), 1);
        return data_;
    }

    const TemporaryFolder folder_;
    oruFindData data_;
};

TEST_F(Search, FindsWhatMatches) {
    for (const char* name : {"a.txt", "b.txt", ".hidden"}) {
        folder_.write(name);
    }
    EXPECT_THAT(found(folder_ / "*.txt"), ElementsAre("a.txt", "b.txt"));
    EXPECT_THAT(found(folder_ / ""), ElementsAre(".", "..", ".hidden", "a.txt", "b.txt"));
    EXPECT_EQ(found(folder_ / std::string(259, '*')), found(folder_ / ""));
    errno = 77;
    EXPECT_THAT(found(folder_ / "none"), ElementsAre());
    EXPECT_EQ(oruFindFirstDirEnt(nullptr, &data_), ORU_INVALID_SEARCH);
    EXPECT_EQ(oruFindFirstDirEnt("", nullptr), ORU_INVALID_SEARCH);
    EXPECT_EQ(errno, 77) << "stays when nothing matches or an argument is refused";
    EXPECT_TRUE(found(folder_ / std::string(260, '*')).empty() && errno == ENAMETOOLONG);
}

TEST_F(Search, FillsTheRecordFromTheStatus) {
    const timespec times[2] = {{1000000001, 0}, {1000000002, 0}};
    fs::resize_file(folder_.write("large"), 0x100000003);
    ASSERT_EQ(utimensat(AT_FDCWD, (folder_ / "large").c_str(), times, 0), 0);
    const oruFindData large = {0, 0, 1000000001, 1000000002, 3, "large", {}};
    EXPECT_EQ(std::memcmp(&first(folder_ / "large"), &large, sizeof large), 0);
    fs::create_symlink(".", folder_ / "folder");
    EXPECT_EQ(first(folder_ / "folder").attributes, ORU_ATTRIBUTE_DIRECTORY);
    fs::create_symlink("nowhere", folder_ / "dangling");
    EXPECT_EQ(first(folder_ / "dangling").modification_time, 0u);
    // Up to 259 bytes of directory and name.
    const std::string directory = folder_.path() + std::string(254 - folder_.path().size(), '/');
    EXPECT_EQ(first(directory + "l").size, 3u);
    EXPECT_EQ(first(directory + "/l").size, 0u);
    EXPECT_EQ(found(directory + "//////l").size(), 0u) << "more than 259 bytes of directory";

    // From a caller's own reading of a directory, with which the name is joined as it is.
    dirent entry{};
    std::strcpy(entry.d_name, "large");
    std::memset(&data_, 0x55, sizeof data_);
    EXPECT_EQ(oruSetFindDataDirEnt(&data_, &entry, (folder_ / "").c_str()), &data_);
    EXPECT_EQ(std::memcmp(&data_, &large, sizeof large), 0);
    EXPECT_EQ(oruSetFindDataDirEnt(&data_, &entry, folder_.path().c_str())->size, 0u);
    folder_.enter();
    EXPECT_EQ(oruSetFindDataDirEnt(&data_, &entry, ".")->size, 3u);
    EXPECT_THAT(found("larg"), ElementsAre("large"));
    EXPECT_EQ(oruSetFindDataDirEnt(nullptr, &entry, "."), nullptr);
    EXPECT_EQ(oruSetFindDataDirEnt(&data_, nullptr, "."), nullptr);
    EXPECT_EQ(oruSetFindDataDirEnt(&data_, &entry, nullptr), nullptr);
}

TEST_F(Search, FiftyAtOnceFromTheLowestSlotOn) {
    const std::string path = folder_ / "";
    for (intptr_t expected = 1; expected <= ORU_MAX_SEARCHES; ++expected) {
        ASSERT_EQ(oruFindFirstDirEnt(path.c_str(), &data_), expected);
    }
    nErrno = 0;
    EXPECT_EQ(oruFindFirstDirEnt(path.c_str(), &data_), ORU_INVALID_SEARCH);
    EXPECT_TRUE(nErrno == EAGAIN && oruFindCloseDirEnt(7) == 1);
    EXPECT_EQ(orumcomn_findfirstA(path.c_str(), &data_), 7);
    EXPECT_EQ(orumcomn_findfirstA(path.c_str(), &data_), 0);
    EXPECT_TRUE(orumcomn_findnextA(7, &data_) && !orumcomn_findnextA(7, &data_)) << "empty";
    for (intptr_t search = 1; search <= ORU_MAX_SEARCHES; ++search) {
        EXPECT_TRUE(oruFindNextDirEnt(search, nullptr) == 0 && orumcomn_findclose(search) == 1);
    }
    for (const intptr_t handle : {0, -1, 51, 1}) {
        nErrno = 0;
        EXPECT_EQ(oruFindNextDirEnt(handle, &data_) + oruFindCloseDirEnt(handle), 0);
        EXPECT_EQ(nErrno, EINVAL);
    }
}

// Reading while another thread closes is the caller's fault (file.h), but does no harm.
TEST_F(Search, ThreadsShareTheSlots) {
    std::atomic<bool> in_use[ORU_MAX_SEARCHES + 1]{};
    together(4, [&](int) {
        oruFindData data;
        for (int round = 0; round < 1000; ++round) {
            const intptr_t mine = oruFindFirstDirEnt((folder_ / "").c_str(), &data);
            if (mine != ORU_INVALID_SEARCH) {  // nobody else has read all
                EXPECT_FALSE(in_use[mine].exchange(true));
                oruFindNextDirEnt(round % 4 + 1, &data);
                in_use[mine] = false;
                EXPECT_EQ(oruFindCloseDirEnt(mine), 1);
            }
        }
    });
}

// The fuzz target's seeds hold every text against a model. Trying every way through these would never end.
TEST(Wildcard, TakesNullForEmptyTextAndIsQuick) {
    EXPECT_EQ(oruWildCardMatch(nullptr, "a") + oruWildCardMatch("", nullptr), 0);
    const std::string long_name = std::string(1 << 20, 'a') + 'c';
    EXPECT_EQ(oruWildCardMatch("*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*a*b", long_name.c_str()), 1);
}
