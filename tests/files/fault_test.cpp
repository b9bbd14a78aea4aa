#include <gtest/gtest.h>

#include <string>

#include "support/fault_injection.h"
#include "support/temporary_folder.h"
#include "vlrcomn/file.h"
#include "vlrcomn/file_system.h"
#include "vlrcomn/handle.h"

using fault_injection::FailNth;
using fault_injection::walk_failures;

namespace {

TEST(FileFaults, CreatingFunctionsUndoWhatTheyBegan) {
    const TemporaryFolder folder;
    const std::string name = folder.write("file", "text"), pattern = folder / "fi*";

    oruHandle handle = nullptr;
    auto walked = walk_failures(
        [&] {
            handle = oruCreateFileAW(name.c_str(), ORU_ACCESS_READ, 0, nullptr, ORU_OPEN_EXISTING,
                                     0, nullptr);
            return handle != nullptr;
        },
        [&] { EXPECT_EQ(oruCloseHandle(handle), 1); });
    EXPECT_EQ(walked.calls, 5);  // open, two records, two locks
    EXPECT_EQ(walked.tolerated, 0);

    orFile* file = nullptr;
    walked = walk_failures(
        [&] {
            return orCreateFile(name.c_str(), ORU_ACCESS_READ, 0, ORU_OPEN_EXISTING, 0, &file) ==
                   ORU_SUCCESS;
        },
        [&] { EXPECT_EQ(orCloseFile(file), ORU_SUCCESS); });
    EXPECT_EQ(walked.calls, 7);
    EXPECT_EQ(walked.tolerated, 0);

    intptr_t search = 0;
    oruFindData data;
    walked = walk_failures(
        [&] {
            search = oruFindFirstDirEnt(pattern.c_str(), &data);
            return search != ORU_INVALID_SEARCH;
        },
        [&] { EXPECT_EQ(oruFindCloseDirEnt(search), 1); });
    EXPECT_GE(walked.calls, 3);
    EXPECT_EQ(walked.tolerated, 1) << "an entry without a status is found all the same";
    EXPECT_EQ(search, 1) << "a slot was lost";
}

TEST(FileFaults, ACopyThatFailsLosesNothing) {
    const TemporaryFolder folder;
    const std::string from = folder.write("from", "text"), to = folder / "to";
    const auto walked =
        walk_failures([&] { return orumcomn_copy_file(from.c_str(), to.c_str(), 1); },
                      [&] {
                          EXPECT_EQ(contents_of(to), "text");
                          std::filesystem::remove(to);
                      });
    EXPECT_GE(walked.calls, 5);
    EXPECT_EQ(contents_of(from), "text");
}

TEST(FileFaults, AFailingCloseFailsTheCopy) {
    const TemporaryFolder folder;
    const std::string from = folder.write("from", "text"), to = folder / "to";
    FailNth failure(1, "close");
    const bool copied = orumcomn_copy_file(from.c_str(), to.c_str(), 1);
    const int error = errno;
    failure.disarm();
    EXPECT_STREQ(failure.fired(), "close");
    EXPECT_FALSE(copied);
    EXPECT_EQ(error, EIO);
}

}  // namespace
