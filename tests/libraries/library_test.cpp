#include <dlfcn.h>
#include <gmock/gmock.h>

#include <atomic>
#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "libraries/library_list.h"
#include "support/temporary_folder.h"
#include "sync/error_word.h"
#include "vlrcomn/thread.h"

// What the library does in its constructor and destructor, which name no module, and in its entry point, which
// returns the result. Never destroyed: musl keeps freed libraries until the program has ended.
static std::function<int(void* module, uint32_t reason)>& called =
    *new std::function<int(void* module, uint32_t reason)>;

extern "C" VLRCOMN_API int library_called(void* module, uint32_t reason, void* reserved);

int library_called(void* module, uint32_t reason, void*) {
    return called ? called(module, reason) : 1;
}

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using velora_com::qel::libraries::pDynamicLibraryList;
using velora_com::qel::sync::nErrno;

const std::string library = LOADED_LIBRARY;

class Libraries : public testing::Test {
protected:
    ~Libraries() override {
        EXPECT_THAT(pDynamicLibraryList, testing::Each(nullptr));
        called = nullptr;
    }

    void* load(const std::string& path) { return oruLoadLibrary(path.c_str(), &message_); }

    const char* message_ = nullptr;
};

TEST_F(Libraries, CountsReferencesAndCallsTheEntryPointOnce) {
    std::vector<uint32_t> reasons;
    called = [&](void* module, uint32_t reason) {
        pthread_testcancel();  // the cancellation waits for the end of the load
        if (module != nullptr) {
            reasons.push_back(reason);
        }
        return 1;
    };
    std::thread([] {
        pthread_cancel(pthread_self());
        oruLoadLibrary(library.c_str(), nullptr);
    }).join();
    void* const module = load(library);
    EXPECT_STREQ(message_, "");
    EXPECT_EQ(oruFreeLibrary(module), 1);
    EXPECT_THAT(reasons, ElementsAre(ORU_PROCESS_ATTACH));
    EXPECT_EQ(oruFreeLibrary(module), 1);
    EXPECT_THAT(reasons, ElementsAre(ORU_PROCESS_ATTACH, ORU_PROCESS_DETACH));
    EXPECT_EQ(oruFreeLibrary(module), 0);
    EXPECT_EQ(dlopen(library.c_str(), RTLD_LAZY | RTLD_NOLOAD), nullptr);
}

TEST_F(Libraries, PathsAreComparedAsTheyAreWritten) {
    const std::string long_path = std::string(300, '/') + library;
    void* const module = load(library);
    EXPECT_EQ(load(long_path), module);
    EXPECT_EQ(load(long_path), module) << "not found again";
    for (const int freed : {1, 1, 1, 0}) {
        EXPECT_EQ(oruFreeLibrary(module), freed);
    }
}

TEST_F(Libraries, SaysWhyItFails) {
    called = [](void*, uint32_t) { return 0; };
    EXPECT_EQ(load(library), nullptr);
    EXPECT_STREQ(message_, "dllmain returned false");
    void* const left = dlopen(library.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    ASSERT_NE(left, nullptr) << "the library stays loaded";
    dlclose(left);
    dlclose(left);
    const std::string endless(2000, 'x');
    EXPECT_EQ(load(endless), nullptr);
    EXPECT_EQ(std::strlen(message_), 510u);
    char message[ORU_LIBRARY_MESSAGE_SIZE] = "so: ";
    void* module = nullptr;
    EXPECT_EQ(load_shared_object_image(&module, endless.c_str(), message), 0);
    EXPECT_EQ(std::strlen(message), 511u) << "filled up, not overrun";
    EXPECT_THAT(message, testing::StartsWith("so: "));
    EXPECT_EQ(load_shared_object_image(&module, endless.c_str(), nullptr), 0);
    EXPECT_EQ(load_shared_object_image(nullptr, library.c_str(), message), 0);
    EXPECT_EQ(unload_shared_object_image(nullptr), 0);
    EXPECT_EQ(oruDisableThreadLibraryCalls(nullptr), 0);
    EXPECT_EQ(oruLoadLibrary(nullptr, &message_), nullptr);
    EXPECT_STREQ(message_, "");
    const wchar_t* wide_message = nullptr;
    EXPECT_EQ(oruLoadLibraryW(nullptr, &wide_message), nullptr);
    EXPECT_STREQ(wide_message, L"");
    EXPECT_EQ(oruLoadLibraryW(L"/nowhere/\u00e4\u20ac", &wide_message), nullptr);
    EXPECT_THAT(std::wstring(wide_message), HasSubstr(L"/nowhere/\u00e4\u20ac"));
    const std::wstring wide(library.begin(), library.end());
    const wchar_t surrogate = 0xD800;
    for (const std::wstring& path : {wide + surrogate, surrogate + wide}) {
        EXPECT_EQ(oruLoadLibraryW(path.c_str(), &wide_message), nullptr)
            << "what its beginning names";
        EXPECT_STREQ(wide_message, L"path has no form in UTF-8");
        EXPECT_EQ(nErrno.exchange(0), static_cast<uint32_t>(EINVAL));
    }
}

TEST_F(Libraries, SymbolsAndStrings) {
    void* const module = load(library);
    const char* message = nullptr;
    EXPECT_EQ(oruGetProcAddress(module, "no_such_symbol", &message), nullptr);
    EXPECT_THAT(message, HasSubstr("no_such_symbol"));
    EXPECT_NE(oruGetProcAddress(module, "loadString", &message), nullptr);
    EXPECT_STREQ(message, "");
    EXPECT_EQ(oruGetProcAddress(nullptr, "malloc", &message), nullptr) << "no module is no program";
    char text[16] = "";
    EXPECT_EQ(oruLoadString(module, 4000000000u, text, sizeof text), 15);
    EXPECT_STREQ(text, "text 4000000000");
    EXPECT_EQ(oruLoadString(nullptr, 1, text, sizeof text), 0);
    EXPECT_EQ(oruGetModuleFileName(module, text, sizeof text), 0u);
    EXPECT_EQ(oruFreeLibrary(module), 1);
}

TEST_F(Libraries, FiftyFillTheList) {
    const TemporaryFolder folder;
    std::vector<void*> modules;
    for (int i = 0; i <= ORU_MAX_LIBRARIES; ++i) {
        const std::string path = folder / std::to_string(i);
        std::filesystem::copy_file(library, path);
        modules.push_back(load(path));
    }
    EXPECT_EQ(modules.back(), nullptr);
    EXPECT_STREQ(message_, "library list full");
    EXPECT_EQ(nErrno, static_cast<uint32_t>(ENOMEM));
    EXPECT_EQ(oruFreeLibrary(modules[7]), 1);
    modules[7] = load(folder / "50");
    EXPECT_NE(pDynamicLibraryList[7], nullptr) << "the lowest empty slot";
    modules.pop_back();
    for (void* const module : modules) {
        EXPECT_EQ(oruFreeLibrary(module), 1);
    }
}

// Nothing hangs, though the list is held while they run.
TEST_F(Libraries, EntryPointsAndConstructorsFindTheListLocked) {
    int calls = 0;
    const wchar_t* wide_message = nullptr;
    called = [&](void* module, uint32_t reason) {
        if (++calls % 4 == 1) {
            EXPECT_TRUE(*message_ == '\0' && (calls == 1 || *wide_message == L'\0'))
                << "emptied first";
        }
        EXPECT_EQ(oruLoadLibraryW(L"x", &wide_message), nullptr);
        EXPECT_STREQ(wide_message, L"locked");
        EXPECT_EQ(load(library), nullptr);
        EXPECT_STREQ(message_, "locked");
        EXPECT_EQ(nErrno, EBUSY);
        if (module != nullptr) {
            const bool listed = reason == ORU_PROCESS_DETACH;
            EXPECT_EQ(oruDisableThreadLibraryCalls(module), listed ? 1 : 0);
            EXPECT_EQ(oruFreeLibrary(module), 0);
            EXPECT_EQ(nErrno, static_cast<uint32_t>(listed ? EBUSY : EINVAL));
        }
        return 1;
    };
    void* module = load(library);
    EXPECT_STREQ(message_, "") << "the load itself succeeded";
    EXPECT_EQ(oruFreeLibrary(module), 1);
    const std::wstring wide(library.begin(), library.end());
    module = oruLoadLibraryW(wide.c_str(), nullptr);
    EXPECT_STREQ(message_, "");
    EXPECT_STREQ(wide_message, L"");
    EXPECT_EQ(oruFreeLibrary(module), 1);
    EXPECT_EQ(calls, 8);
}

TEST_F(Libraries, LoadedAndFreedInParallel) {
    std::atomic<int> inside{0};
    called = [&](void*, uint32_t) {
        EXPECT_EQ(inside.fetch_add(1), 0) << "one at a time";
        --inside;
        return 1;
    };
    std::vector<std::thread> threads;
    for (const std::string& path : {library, "/" + library, library, "/" + library}) {
        threads.emplace_back([path] {
            for (int round = 0; round < 100; ++round) {
                void* const module = oruLoadLibrary(path.c_str(), nullptr);
                ASSERT_NE(module, nullptr);
                EXPECT_EQ(oruDisableThreadLibraryCalls(module), 1);
                EXPECT_EQ(oruFreeLibrary(module), 1);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

}  // namespace
