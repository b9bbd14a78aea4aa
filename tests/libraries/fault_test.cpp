#include <gtest/gtest.h>

#include <string>

#include "portability/library_list.h"
#include "support/fault_injection.h"
#include "vlrcomn/dynamic_library.h"

namespace {

using velora_com::qel::portability::pDynamicLibraryList;

TEST(LibraryFaults, AFailedLoadKeepsNothing) {
    const std::string path = LOADED_FOLDER "library_plain" LOADED_SUFFIX;
    void* module = nullptr;
    const char* message = nullptr;
    const auto load = [&] {
        module = oruLoadLibrary(path.c_str(), &message);
        return module != nullptr;
    };
    const auto release = [&] { EXPECT_EQ(oruFreeLibrary(module), 1); };
    fault_injection::walk_failures(load, release);
    EXPECT_EQ(pDynamicLibraryList[0], nullptr);

    const struct {
        const char* call;
        int nth;
        const char* message;
    } cases[] = {{"pthread_mutex_lock", 1, "locked"}, {"malloc", 1, "out of memory"}};
    for (const auto& each : cases) {
        fault_injection::FailNth failure(each.nth, each.call);
        const bool loaded = load();
        failure.disarm();
        EXPECT_FALSE(loaded) << each.call;
        EXPECT_STREQ(message, each.message);
    }
}

}  // namespace
