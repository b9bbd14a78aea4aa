#include <gtest/gtest.h>

#include "support/fault_injection.h"
#include "sync/error_word.h"
#include "vlrcomn/dynamic_library.h"

namespace {

using velora_com::qel::sync::nErrno;

TEST(LibraryFaults, AFailedLoadKeepsNothing) {
    const std::string path = LOADED_LIBRARY;
    const std::wstring wide(path.begin(), path.end());
    void* module = nullptr;
    const auto walked = fault_injection::walk_failures(
        [&] { return (module = oruLoadLibraryW(wide.c_str(), nullptr)) != nullptr; },
        [&] { EXPECT_EQ(oruFreeLibrary(module), 1); });
    EXPECT_GE(walked.calls, 4);
    int allocations = 0;
    for (module = nullptr; module == nullptr; ++allocations) {
        nErrno = 0;
        const fault_injection::FailNth failure(allocations + 1, "malloc");
        module = oruLoadLibraryW(wide.c_str(), nullptr);
        EXPECT_EQ(nErrno, static_cast<uint32_t>(module == nullptr ? ENOMEM : 0));
    }
    EXPECT_EQ(oruFreeLibrary(module), 1);
    EXPECT_EQ(allocations, 5) << "three texts of the path, an entry, and none";
}

}  // namespace
