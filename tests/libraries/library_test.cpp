#include <dlfcn.h>
#include <gmock/gmock.h>
#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <cwchar>
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

// What the loaded libraries do when they call back.
std::function<void(void*, uint32_t)> entered;
std::function<void(uint32_t)> constructed;

// One of the libraries built for these tests, by name.
std::string built(const std::string& kind) {
    return LOADED_FOLDER "library_" + kind + LOADED_SUFFIX;
}

int occupied_slots() {
    return static_cast<int>(std::count_if(std::begin(pDynamicLibraryList),
                                          std::end(pDynamicLibraryList),
                                          [](const auto* entry) { return entry != nullptr; }));
}

class Libraries : public testing::Test {
protected:
    Libraries() {
        alarm(100);
        entered = [this](void* module, uint32_t reason) {
            called_with_ = module;
            reasons_.push_back(reason);
        };
        constructed = [](uint32_t) {};
    }
    ~Libraries() override {
        EXPECT_EQ(occupied_slots(), 0);
        alarm(0);
    }

    void* load(const std::string& path) { return oruLoadLibrary(path.c_str(), &message_); }

    const char* message_ = nullptr;
    void* called_with_ = nullptr;
    std::vector<uint32_t> reasons_;
};

}  // namespace

extern "C" {
VLRCOMN_API void library_entered(void* module, uint32_t reason, void* reserved);
VLRCOMN_API void library_constructed(uint32_t reason);

void library_entered(void* module, uint32_t reason, void* reserved) {
    EXPECT_EQ(reserved, nullptr);
    entered(module, reason);
}
void library_constructed(uint32_t reason) {
    constructed(reason);
}
}

namespace {

TEST_F(Libraries, CountsReferencesAndCallsTheEntryPointOnce) {
    void* const module = load(built("counting"));
    ASSERT_NE(module, nullptr) << message_;
    EXPECT_STREQ(message_, "");
    EXPECT_EQ(called_with_, module);
    EXPECT_EQ(load(built("counting")), module);
    EXPECT_THAT(reasons_, ElementsAre(ORU_PROCESS_ATTACH));
    EXPECT_EQ(oruFreeLibrary(module), 1);
    EXPECT_THAT(reasons_, ElementsAre(ORU_PROCESS_ATTACH));
    EXPECT_EQ(oruFreeLibrary(module), 1);
    EXPECT_THAT(reasons_, ElementsAre(ORU_PROCESS_ATTACH, ORU_PROCESS_DETACH));
    nErrno = 0;
    EXPECT_EQ(oruFreeLibrary(module), 0);
    EXPECT_EQ(nErrno, EINVAL);
    EXPECT_EQ(oruFreeLibrary(nullptr), 0);
    EXPECT_EQ(dlopen(built("counting").c_str(), RTLD_LAZY | RTLD_NOLOAD), nullptr);
    EXPECT_EQ(oruGetModuleFileName(module, nullptr, 0), 0u);
}

TEST_F(Libraries, PathsAreComparedAsTheyAreWritten) {
    const std::string other = LOADED_FOLDER "./library_plain" LOADED_SUFFIX;
    const std::string long_path =
        LOADED_FOLDER + std::string(300, '/') + "library_plain" LOADED_SUFFIX;
    void* const module = load(built("plain"));
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(load(other), module);
    EXPECT_EQ(occupied_slots(), 2);
    EXPECT_EQ(load(long_path), module);
    EXPECT_EQ(load(long_path), module) << "not found again";
    EXPECT_EQ(load(long_path.substr(0, 259)), nullptr) << "the beginning is another name";
    EXPECT_EQ(occupied_slots(), 4);
    for (int left = 3; left >= 0; --left) {
        EXPECT_EQ(oruFreeLibrary(module), 1);
        EXPECT_EQ(occupied_slots(), left);
    }
}

TEST_F(Libraries, SaysWhyItFails) {
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(load(built("refusing")), nullptr);
        EXPECT_STREQ(message_, "dllmain returned false");
    }
    EXPECT_THAT(reasons_, ElementsAre(ORU_PROCESS_ATTACH, ORU_PROCESS_ATTACH));
    void* const left = dlopen(built("refusing").c_str(), RTLD_LAZY | RTLD_NOLOAD);
    EXPECT_NE(left, nullptr) << "the library stays loaded";
    while (left != nullptr && dlopen(built("refusing").c_str(), RTLD_LAZY | RTLD_NOLOAD) &&
           dlclose(left) == 0 && dlclose(left) == 0) {
    }

    EXPECT_EQ(load("no such library"), nullptr);
    EXPECT_THAT(message_, HasSubstr("no such library"));
    EXPECT_EQ(load(std::string(2000, 'x')), nullptr);
    EXPECT_EQ(std::strlen(message_), 510u);
    EXPECT_EQ(oruLoadLibrary(nullptr, &message_), nullptr);
    EXPECT_STREQ(message_, "");
    EXPECT_EQ(oruLoadLibrary("no such library", nullptr), nullptr);
}

TEST_F(Libraries, WidePathsAndMessages) {
    const TemporaryFolder folder;
    const std::string path = folder / "\xc3\xa4\xe2\x82\xac" LOADED_SUFFIX;
    std::filesystem::copy_file(built("plain"), path);
    const std::wstring folder_path(folder.path().begin(), folder.path().end());
    const std::string suffix = LOADED_SUFFIX;
    const wchar_t* message = nullptr;
    void* const module = oruLoadLibraryW(
        (folder_path + L"/\u00e4\u20ac" + std::wstring(suffix.begin(), suffix.end())).c_str(),
        &message);
    ASSERT_NE(module, nullptr);
    EXPECT_STREQ(message, L"");
    EXPECT_EQ(load(path), module) << "the same entry";
    EXPECT_EQ(oruFreeLibrary(module), 1);
    EXPECT_EQ(oruFreeLibrary(module), 1);

    EXPECT_EQ(oruLoadLibraryW(L"no such \u00e4 library", &message), nullptr);
    EXPECT_NE(std::wcsstr(message, L"no such \u00e4 library"), nullptr) << message;
    EXPECT_EQ(oruLoadLibraryW(std::wstring(2000, L'x').c_str(), &message), nullptr);
    EXPECT_EQ(std::wcslen(message), 510u);
    EXPECT_EQ(oruLoadLibraryW(L"no such library", nullptr), nullptr);
    EXPECT_STREQ(message, L"") << "emptied by every call";
    EXPECT_EQ(oruLoadLibraryW(nullptr, &message), nullptr);
    EXPECT_STREQ(message, L"");
}

TEST_F(Libraries, SymbolsAndStrings) {
    void* const module = load(built("strings"));
    ASSERT_NE(module, nullptr);
    const char* message = nullptr;
    void* const function = oruGetProcAddress(module, "in_every_library", &message);
    ASSERT_NE(function, nullptr);
    EXPECT_STREQ(message, "");
    EXPECT_EQ(reinterpret_cast<int (*)()>(function)(), 42);
    EXPECT_EQ(oruGetProcAddress(module, "no_such_symbol", &message), nullptr);
    EXPECT_THAT(message, HasSubstr("no_such_symbol"));
    EXPECT_EQ(oruGetProcAddress(module, std::string(2000, 'x').c_str(), &message), nullptr);
    EXPECT_EQ(std::strlen(message), 510u);
    EXPECT_EQ(oruGetProcAddress(module, "symbol_without_address", &message), nullptr);
    EXPECT_STREQ(message, "");
    EXPECT_EQ(oruGetProcAddress(module, nullptr, nullptr), nullptr);

    char text[16] = "";
    EXPECT_EQ(oruLoadString(module, 4000000000u, text, sizeof text), 15);
    EXPECT_STREQ(text, "text 4000000000");
    EXPECT_EQ(oruFreeLibrary(module), 1);
    void* const plain = load(built("plain"));
    EXPECT_EQ(oruLoadString(plain, 1, text, sizeof text), 0);
    EXPECT_EQ(oruLoadString(nullptr, 1, text, sizeof text), 0);
    EXPECT_EQ(oruFreeLibrary(plain), 1);
}

TEST_F(Libraries, FiftyFillTheList) {
    const TemporaryFolder folder;
    std::vector<void*> modules;
    for (int i = 0; i <= ORU_MAX_LIBRARIES; ++i) {
        const std::string path = folder / std::to_string(i);
        std::filesystem::copy_file(built("plain"), path);
        nErrno = 0;
        modules.push_back(load(path));
    }
    EXPECT_EQ(modules.back(), nullptr);
    EXPECT_STREQ(message_, "library list full");
    EXPECT_EQ(nErrno, ENOMEM);
    modules.pop_back();
    EXPECT_EQ(load(folder / "7"), modules[7]) << "one more reference needs no slot";
    EXPECT_EQ(oruFreeLibrary(modules[7]), 1);
    EXPECT_EQ(oruFreeLibrary(modules[7]), 1);
    EXPECT_EQ(pDynamicLibraryList[7], nullptr);
    modules[7] = load(folder / "50");
    ASSERT_NE(pDynamicLibraryList[7], nullptr) << "the lowest empty slot";
    EXPECT_EQ(pDynamicLibraryList[7]->module, modules[7]);
    for (void* const module : modules) {
        EXPECT_EQ(oruFreeLibrary(module), 1);
    }
}

// Neither hangs, though the list is held while they run.
TEST_F(Libraries, EntryPointsAndConstructorsFindTheListLocked) {
    int attempts = 0;
    const auto come_back = [&] {
        ++attempts;
        const char* message = nullptr;
        nErrno = 0;
        EXPECT_EQ(oruLoadLibrary(built("plain").c_str(), &message), nullptr);
        EXPECT_STREQ(message, "locked");
        EXPECT_EQ(nErrno, EBUSY);
    };
    constructed = [&](uint32_t) { come_back(); };
    entered = [&](void* module, uint32_t reason) {
        come_back();
        EXPECT_NE(oruGetProcAddress(module, "in_every_library", nullptr), nullptr);
        const bool listed = reason == ORU_PROCESS_DETACH;
        EXPECT_EQ(oruDisableThreadLibraryCalls(module), listed ? 1 : 0);
        nErrno = 0;
        EXPECT_EQ(oruFreeLibrary(module), 0);
        EXPECT_EQ(nErrno, listed ? EBUSY : EINVAL);
    };
    void* const module = load(built("nesting"));
    ASSERT_NE(module, nullptr) << message_;
    EXPECT_EQ(oruDisableThreadLibraryCalls(module), 1);
    EXPECT_EQ(pDynamicLibraryList[0]->thread_calls_disabled, 1);
    EXPECT_EQ(oruDisableThreadLibraryCalls(&attempts), 0);
    EXPECT_EQ(oruDisableThreadLibraryCalls(nullptr), 0);
    EXPECT_EQ(oruFreeLibrary(module), 1);
    EXPECT_EQ(attempts, 4);
}

void* load_in_thread(void* path) {
    void* const module = oruLoadLibrary(static_cast<const char*>(path), nullptr);
    pthread_testcancel();
    return module;
}

TEST_F(Libraries, ACancelledLoadLosesNoLock) {
    std::string path = built("counting");
    entered = [](void*, uint32_t reason) {
        if (reason == ORU_PROCESS_ATTACH) {
            pthread_cancel(pthread_self());
            pthread_testcancel();
            usleep(1);
        }
    };
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, nullptr, load_in_thread, path.data()), 0);
    void* result = nullptr;
    ASSERT_EQ(pthread_join(thread, &result), 0);
    EXPECT_EQ(result, PTHREAD_CANCELED);
    void* const module = load(path);
    EXPECT_EQ(oruFreeLibrary(module), 1);
    EXPECT_EQ(oruFreeLibrary(module), 1);
}

TEST_F(Libraries, LoadedAndFreedInParallel) {
    std::atomic<int> inside{0};
    entered = [&](void*, uint32_t) {
        EXPECT_EQ(inside.fetch_add(1), 0) << "one entry point at a time";
        --inside;
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 6; ++i) {
        threads.emplace_back([i] {
            const std::string path = built(i % 2 == 0 ? "counting" : "plain");
            for (int round = 0; round < 100; ++round) {
                void* const module = oruLoadLibrary(path.c_str(), nullptr);
                ASSERT_NE(module, nullptr);
                EXPECT_NE(oruGetProcAddress(module, "in_every_library", nullptr), nullptr);
                EXPECT_EQ(oruGetProcAddress(module, "no_such_symbol", nullptr), nullptr);
                EXPECT_EQ(oruDisableThreadLibraryCalls(module), 1);
                EXPECT_EQ(oruFreeLibrary(module), 1);
                EXPECT_EQ(oruFreeLibrary(nullptr), 0);
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
    EXPECT_EQ(load_shared_object_image(nullptr, built("plain").c_str(), message), 0);
    EXPECT_EQ(load_shared_object_image(&module, nullptr, message), 0);
    EXPECT_STREQ(message, "so: ");
    EXPECT_EQ(load_shared_object_image(&module, "no such library", message), 0);
    EXPECT_EQ(std::string(message).rfind("so: no such library", 0), 0u) << message;
    EXPECT_EQ(load_shared_object_image(&module, std::string(2000, 'x').c_str(), message), 0);
    EXPECT_EQ(std::strlen(message), 511u) << "filled up, not overrun";
    EXPECT_EQ(load_shared_object_image(&module, "no such library", nullptr), 0);
    EXPECT_EQ(module, nullptr);
    ASSERT_EQ(load_shared_object_image(&module, built("plain").c_str(), message), 1);
    EXPECT_EQ(oruDisableThreadLibraryCalls(module), 0) << "not in the list";
    EXPECT_EQ(unload_shared_object_image(module), 1);
    EXPECT_EQ(unload_shared_object_image(nullptr), 0);
}

}  // namespace
