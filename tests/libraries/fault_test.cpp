#include <gtest/gtest.h>

#include "portability/library_list.h"
#include "support/fault_injection.h"

namespace {

TEST(LibraryFaults, AFailedLoadKeepsNothing) {
    void* module = nullptr;
    const auto load = [&] {
        module = oruLoadLibrary(LOADED_FOLDER "library_plain" LOADED_SUFFIX, nullptr);
        return module != nullptr;
    };
    fault_injection::walk_failures(load, [&] { EXPECT_EQ(oruFreeLibrary(module), 1); });
    EXPECT_EQ(velora_com::qel::portability::pDynamicLibraryList[0], nullptr);
}

}  // namespace
