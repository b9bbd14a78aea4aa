#include <dlfcn.h>
#include <gmock/gmock.h>
#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "portability/errors.h"
#include "portability/library_list.h"
#include "support/temporary_folder.h"
#include "vlrcomn/dynamic_library.h"
#include "vlrcomn/thread.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using velora_com::qel::portability::nErrno;
using velora_com::qel::portability::pDynamicLibraryList;

const std::string full = LOADED_FOLDER "library_full" LOADED_SUFFIX;
const std::string plain = LOADED_FOLDER "library_plain" LOADED_SUFFIX;

// What the full library does in its constructor and destructor, which name no module, and in its entry
// point, which returns the result. Never destroyed: musl keeps freed libraries until the program has ended.
std::function<int(void* module, uint32_t reason)>& called =
    *new std::function<int(void* module, uint32_t reason)>;

int occupied_slots() {
    return static_cast<int>(ORU_MAX_LIBRARIES - std::count(std::begin(pDynamicLibraryList),
                                                           std::end(pDynamicLibraryList), nullptr));
}

class Libraries : public testing::Test {
protected:
    Libraries() {
        called = [this](void* module, uint32_t reason) {
            if (module != nullptr) {
                reasons_.push_back(reason);
            }
            return answer_;
        };
    }
    ~Libraries() override {
        EXPECT_EQ(occupied_slots(), 0);
        called = [](void*, uint32_t) { return 1; };
    }

    void* load(const std::string& path) {
        nErrno = 0;
        return oruLoadLibrary(path.c_str(), &message_);
    }
    // Frees a module; what a failure notes, or -1 for a success.
    static int free(void* module) {
        nErrno = 0;
        return oruFreeLibrary(module) == 1 ? -1 : static_cast<int>(nErrno);
    }

    const char* message_ = nullptr;
    int answer_ = 1;
    std::vector<uint32_t> reasons_;
};

}  // namespace

extern "C" {
VLRCOMN_API int library_called(void* module, uint32_t reason, void* reserved);

int library_called(void* module, uint32_t reason, void* reserved) {
    EXPECT_EQ(reserved, nullptr);
    return called(module, reason);
}
}

namespace {

constexpr int success = -1;

TEST_F(Libraries, CountsReferencesAndCallsTheEntryPointOnce) {
    void* const module = load(full);
    ASSERT_NE(module, nullptr) << message_;
    EXPECT_STREQ(message_, "");
    EXPECT_EQ(load(full), module);
    EXPECT_EQ(free(module), success);
    EXPECT_THAT(reasons_, ElementsAre(ORU_PROCESS_ATTACH));
    EXPECT_EQ(free(module), success);
    EXPECT_THAT(reasons_, ElementsAre(ORU_PROCESS_ATTACH, ORU_PROCESS_DETACH));
    EXPECT_EQ(free(module), EINVAL);
    EXPECT_EQ(free(nullptr), EINVAL);
    EXPECT_EQ(dlopen(full.c_str(), RTLD_LAZY | RTLD_NOLOAD), nullptr);
    EXPECT_EQ(oruGetModuleFileName(module, nullptr, 0), 0u);
}

TEST_F(Libraries, PathsAreComparedAsTheyAreWritten) {
    const std::string long_path =
        LOADED_FOLDER + std::string(300, '/') + "library_plain" LOADED_SUFFIX;
    void* const module = load(plain);
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(load(long_path), module);
    EXPECT_EQ(load(long_path), module) << "not found again";
    for (int left = 3; left > 0; --left) {
        EXPECT_EQ(occupied_slots(), left);
        EXPECT_EQ(free(module), success);
    }
}

TEST_F(Libraries, SaysWhyItFails) {
    answer_ = 0;
    EXPECT_EQ(load(full), nullptr);
    EXPECT_STREQ(message_, "dllmain returned false");
    void* const left = dlopen(full.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    ASSERT_NE(left, nullptr) << "the library stays loaded";
    dlclose(left);
    dlclose(left);
    EXPECT_EQ(load("no such library"), nullptr);
    EXPECT_THAT(message_, HasSubstr("no such library"));
    EXPECT_EQ(load(std::string(2000, 'x')), nullptr);
    EXPECT_EQ(std::strlen(message_), 510u);
    EXPECT_EQ(oruLoadLibrary(nullptr, &message_), nullptr);
    EXPECT_STREQ(message_, "");
}

TEST_F(Libraries, WidePathsAreUtf8) {
    const TemporaryFolder folder;
    const std::string path = folder / "\xc3\xa4\xe2\x82\xac";
    std::filesystem::copy_file(plain, path);
    const std::wstring wide_folder(folder.path().begin(), folder.path().end());
    const wchar_t* message = nullptr;
    void* const module = oruLoadLibraryW((wide_folder + L"/\u00e4\u20ac").c_str(), &message);
    ASSERT_NE(module, nullptr) << message;
    EXPECT_EQ(load(path), module) << "the same entry";
    EXPECT_EQ(free(module), success);
    EXPECT_EQ(free(module), success);
}

TEST_F(Libraries, SymbolsAndStrings) {
    void* const module = load(full);
    ASSERT_NE(module, nullptr);
    const char* message = nullptr;
    void* const function = oruGetProcAddress(module, "in_every_library", &message);
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(reinterpret_cast<int (*)()>(function)(), 42);
    EXPECT_EQ(oruGetProcAddress(module, "no_such_symbol", &message), nullptr);
    EXPECT_THAT(message, HasSubstr("no_such_symbol"));
    EXPECT_EQ(oruGetProcAddress(nullptr, "malloc", &message), nullptr) << "no module is no program";
    EXPECT_STREQ(message, "");
    char text[16] = "";
    EXPECT_EQ(oruLoadString(module, 4000000000u, text, sizeof text), 15);
    EXPECT_STREQ(text, "text 4000000000");
    EXPECT_EQ(free(module), success);
}

TEST_F(Libraries, FiftyFillTheList) {
    const TemporaryFolder folder;
    std::vector<void*> modules;
    for (int i = 0; i <= ORU_MAX_LIBRARIES; ++i) {
        const std::string path = folder / std::to_string(i);
        std::filesystem::copy_file(plain, path);
        modules.push_back(load(path));
    }
    EXPECT_EQ(modules.back(), nullptr);
    EXPECT_STREQ(message_, "library list full");
    EXPECT_EQ(nErrno, ENOMEM);
    modules.pop_back();
    EXPECT_EQ(free(modules[7]), success);
    modules[7] = load(folder / "50");
    EXPECT_NE(pDynamicLibraryList[7], nullptr) << "the lowest empty slot";
    for (void* const module : modules) {
        EXPECT_EQ(free(module), success);
    }
}

// Nothing hangs, though the list is held while they run.
TEST_F(Libraries, EntryPointsAndConstructorsFindTheListLocked) {
    int calls = 0;
    called = [&](void* module, uint32_t reason) {
        ++calls;
        EXPECT_EQ(load(plain), nullptr);
        EXPECT_STREQ(message_, "locked");
        EXPECT_EQ(nErrno, EBUSY);
        if (module != nullptr) {
            const bool listed = reason == ORU_PROCESS_DETACH;
            EXPECT_NE(oruGetProcAddress(module, "in_every_library", nullptr), nullptr);
            EXPECT_EQ(oruDisableThreadLibraryCalls(module), listed ? 1 : 0);
            EXPECT_EQ(free(module), listed ? EBUSY : EINVAL);
        }
        return 1;
    };
    void* const module = load(full);
    ASSERT_NE(module, nullptr) << message_;
    EXPECT_EQ(free(module), success);
    EXPECT_EQ(calls, 4);
}

TEST_F(Libraries, ACancelledLoadLosesNoLock) {
    called = [](void*, uint32_t) {
        pthread_testcancel();
        return 1;
    };
    std::thread([] {
        pthread_cancel(pthread_self());
        oruLoadLibrary(full.c_str(), nullptr);
    }).join();
    void* const module = load(full);
    EXPECT_EQ(free(module), success);
    EXPECT_EQ(free(module), success);
}

TEST_F(Libraries, LoadedAndFreedInParallel) {
    std::atomic<int> inside{0};
    called = [&](void*, uint32_t) {
        EXPECT_EQ(inside.fetch_add(1), 0) << "one at a time";
        --inside;
        return 1;
    };
    std::vector<std::thread> threads;
    for (const std::string& path : {full, plain, full, plain, full, plain}) {
        threads.emplace_back([path] {
            for (int round = 0; round < 100; ++round) {
                void* const module = oruLoadLibrary(path.c_str(), nullptr);
                ASSERT_NE(module, nullptr);
                EXPECT_NE(oruGetProcAddress(module, "in_every_library", nullptr), nullptr);
                EXPECT_EQ(oruDisableThreadLibraryCalls(module), 1);
                EXPECT_EQ(oruFreeLibrary(module), 1);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(LibraryImage, OpensApartFromTheList) {
    void* module = nullptr;
    char message[ORU_LIBRARY_MESSAGE_SIZE] = "so: ";
    EXPECT_EQ(load_shared_object_image(&module, std::string(2000, 'x').c_str(), message), 0);
    EXPECT_THAT(message, testing::StartsWith("so: xx"));
    EXPECT_EQ(std::strlen(message), 511u) << "filled up, not overrun";
    ASSERT_EQ(load_shared_object_image(&module, plain.c_str(), message), 1);
    EXPECT_EQ(occupied_slots(), 0);
    EXPECT_EQ(unload_shared_object_image(module), 1);
}

}  // namespace
