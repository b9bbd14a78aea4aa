#include <gtest/gtest.h>

#include "portability/library_list.h"
#include "support/fault_injection.h"

namespace {

TEST(LibraryFaults, AFailedLoadKeepsNothingAndSaysWhy) {
    void* module = nullptr;
    const char* message = nullptr;
    const auto load = [&] {
        module = oruLoadLibrary(LOADED_FOLDER "library_plain" LOADED_SUFFIX, &message);
        return module != nullptr;
    };
    fault_injection::walk_failures(load, [&] { EXPECT_EQ(oruFreeLibrary(module), 1); });
    EXPECT_EQ(velora_com::qel::portability::pDynamicLibraryList[0], nullptr);
    for (const auto& [call, words] :
         {std::pair{"pthread_mutex_lock", "locked"}, {"malloc", "out of memory"}}) {
        fault_injection::FailNth failure(1, call);
        const bool loaded = load();
        failure.disarm();
        EXPECT_FALSE(loaded) << call;
        EXPECT_STREQ(message, words);
    }
}

}  // namespace
