#include <gtest/gtest.h>

#include <string>

#include "support/fault_injection.h"
#include "support/temporary_folder.h"
#include "vlrcomn/file.h"
#include "vlrcomn/file_system.h"
#include "vlrcomn/handle.h"

using fault_injection::walk_failures;

namespace {

TEST(FileFaults, CreatingFunctionsUndoWhatTheyBegan) {
    const TemporaryFolder folder;
    const std::string name = folder.write("file", "text");
    orFile* file = nullptr;
    const auto opened = walk_failures(
        [&] {
            return orCreateFile(name.c_str(), ORU_ACCESS_READ, 0, ORU_OPEN_EXISTING, 0, &file) ==
                   ORU_SUCCESS;
        },
        [&] { EXPECT_EQ(orCloseFile(file), ORU_SUCCESS); });
    EXPECT_EQ(opened.calls, 7);  // object, table, open, two records, two locks
    EXPECT_EQ(opened.tolerated, 0);

    const std::string pattern = folder / "fi*";
    intptr_t search = 0;
    oruFindData data;
    const auto searched = walk_failures(
        [&] {
            search = oruFindFirstDirEnt(pattern.c_str(), &data);
            return search != ORU_INVALID_SEARCH;
        },
        [&] { EXPECT_EQ(oruFindCloseDirEnt(search), 1); });
    EXPECT_EQ(searched.tolerated, 1) << "an entry without a status is found all the same";
    EXPECT_EQ(search, 1) << "a slot was lost";
}

TEST(FileFaults, ACopyThatFailsLosesNothing) {
    const TemporaryFolder folder;
    const std::string name = folder.write("file", "text"), to = folder / "to";
    const auto copied =
        walk_failures([&] { return orumcomn_copy_file(name.c_str(), to.c_str(), 1); },
                      [&] {
                          EXPECT_EQ(contents_of(to), "text");
                          std::filesystem::remove(to);
                      });
    EXPECT_GE(copied.calls, 5);
    EXPECT_EQ(contents_of(name), "text");
}

}  // namespace
