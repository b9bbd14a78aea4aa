#include <gtest/gtest.h>

#include <string>

#include "support/fault_injection.h"
#include "support/temporary_folder.h"
#include "vlrcomn/file.h"
#include "vlrcomn/file_system.h"
#include "vlrcomn/handle.h"

using fault_injection::walk_failures;

namespace {

class FileFaults : public testing::Test {
protected:
    const TemporaryFolder folder_;
    const std::string name_ = folder_.write("file", "text");
};

TEST_F(FileFaults, CreatingFunctionsUndoWhatTheyBegan) {
    orFile* file = nullptr;
    const auto opened = walk_failures(
        [&] {
            return orCreateFile(name_.c_str(), ORU_ACCESS_READ, 0, ORU_OPEN_EXISTING, 0, &file) ==
                   ORU_SUCCESS;
        },
        [&] { EXPECT_EQ(orCloseFile(file), ORU_SUCCESS); });
    EXPECT_EQ(opened.calls, 7);  // object, table, open, two records, two locks
    EXPECT_EQ(opened.tolerated, 0);

    const std::string pattern = folder_ / "fi*";
    intptr_t search = 0;
    oruFindData data;
    const auto searched = walk_failures(
        [&] {
            search = oruFindFirstDirEnt(pattern.c_str(), &data);
            return search != ORU_INVALID_SEARCH;
        },
        [&] { EXPECT_EQ(oruFindCloseDirEnt(search), 1); });
    EXPECT_GE(searched.calls, 3);
    EXPECT_EQ(searched.tolerated, 1) << "an entry without a status is found all the same";
    EXPECT_EQ(search, 1) << "a slot was lost";
}

TEST_F(FileFaults, ACopyThatFailsLosesNothing) {
    const std::string to = folder_ / "to";
    const auto copied =
        walk_failures([&] { return orumcomn_copy_file(name_.c_str(), to.c_str(), 1); },
                      [&] {
                          EXPECT_EQ(contents_of(to), "text");
                          std::filesystem::remove(to);
                      });
    EXPECT_GE(copied.calls, 5);
    EXPECT_EQ(contents_of(name_), "text");

    fault_injection::FailNth failure(1, "close");
    const bool closed = orumcomn_copy_file(name_.c_str(), to.c_str(), 1);
    const int error = errno;
    failure.disarm();
    EXPECT_STREQ(failure.fired(), "close");
    EXPECT_FALSE(closed);
    EXPECT_EQ(error, EIO);
}

}  // namespace
