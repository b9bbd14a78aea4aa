#include <gtest/gtest.h>

#include "support/fault_injection.h"
#include "vlrcomn/dynamic_library.h"

namespace {

TEST(LibraryFaults, AFailedLoadKeepsNothing) {
    const std::string path = LOADED_LIBRARY;
    const std::wstring wide(path.begin(), path.end());
    void* module = nullptr;
    const auto walked = fault_injection::walk_failures(
        [&] { return (module = oruLoadLibraryW(wide.c_str(), nullptr)) != nullptr; },
        [&] { EXPECT_EQ(oruFreeLibrary(module), 1); });
    EXPECT_GE(walked.calls, 3);  // two paths and an entry
}

}  // namespace
