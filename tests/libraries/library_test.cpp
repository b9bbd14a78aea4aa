#include <dlfcn.h>

#include "libraries/library_list.h"
#include "support/fault_injection.h"
#include "support/owners.h"
#include "sync/error_word.h"
#include "vlrcomn/thread.h"

// What the library does in its constructor and destructor, which name no module, and in its entry point, which
// returns the result. Never destroyed: musl keeps freed libraries until the program has ended.
static std::function<int(void* module, uint32_t reason)>& called =
    *new std::function<int(void* module, uint32_t reason)>;

extern "C" VLRCOMN_API int library_called(void* module, uint32_t reason, void*) {
    return called ? called(module, reason) : 1;
}

using testing::HasSubstr;
using velora_com::qel::libraries::pDynamicLibraryList;
using velora_com::qel::libraries::slots_mutex;
using velora_com::qel::support::MutexGuard;
using velora_com::qel::sync::nErrno;

const std::string library = LOADED_LIBRARY;
const std::wstring wide_library(library.begin(), library.end());

struct Libraries : testing::Test {
    ~Libraries() override {
        EXPECT_THAT(pDynamicLibraryList, testing::Each(nullptr));
        called = nullptr;
    }

    void* load(const std::string& path) { return oruLoadLibrary(path.c_str(), &message_); }

    const char* message_ = nullptr;
};

TEST_F(Libraries, CountsReferencesByThePathAsItIsWritten) {
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
    EXPECT_THAT(reasons, ElementsAre(ORU_PROCESS_ATTACH));
    const std::string long_path = std::string(300, '/') + library;  // is not found again
    EXPECT_TRUE(load(long_path) == module && load(long_path) == module);
    for (const int freed : {1, 1, 1, 1, 0}) {
        EXPECT_EQ(oruFreeLibrary(module), freed);
    }
    EXPECT_THAT(reasons, ElementsAre(1, 1, 1, 0, 0, 0)) << "attached and detached by each path";
    EXPECT_EQ(dlopen(library.c_str(), RTLD_LAZY | RTLD_NOLOAD), nullptr);
}

TEST_F(Libraries, SaysWhyItFails) {
    called = [](void*, uint32_t) { return 0; };
    EXPECT_EQ(load(library), nullptr);
    EXPECT_STREQ(message_, "dllmain returned false");
    void* module = dlopen(library.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    ASSERT_NE(module, nullptr) << "the library stays loaded";
    EXPECT_EQ(dlclose(module) + dlclose(module), 0);
    const std::string endless(2000, 'x');
    EXPECT_EQ(load(endless), nullptr);
    EXPECT_EQ(std::string(message_).size(), 510u);
    char message[ORU_LIBRARY_MESSAGE_SIZE] = "so: ";
    EXPECT_FALSE(load_shared_object_image(&module, endless.c_str(), message) ||
                 load_shared_object_image(&module, endless.c_str(), nullptr) ||
                 load_shared_object_image(nullptr, library.c_str(), message) ||
                 unload_shared_object_image(nullptr) || oruDisableThreadLibraryCalls(nullptr));
    EXPECT_TRUE(std::string(message).find("so: ") == 0 && std::string(message).size() == 511)
        << "filled up, not overrun";
    EXPECT_EQ(oruLoadLibrary(nullptr, &message_), nullptr);
    EXPECT_STREQ(message_, "");
    const wchar_t* wide_message = nullptr;
    EXPECT_EQ(oruLoadLibraryW(nullptr, &wide_message), nullptr);
    EXPECT_STREQ(wide_message, L"");
    EXPECT_EQ(oruLoadLibraryW(L"/nowhere/\u00e4\u20ac", &wide_message), nullptr);
    EXPECT_THAT(std::wstring(wide_message), HasSubstr(L"/nowhere/\u00e4\u20ac"));
    const wchar_t surrogate = 0xD800;
    for (const std::wstring& path : {wide_library + surrogate, surrogate + wide_library}) {
        EXPECT_EQ(oruLoadLibraryW(path.c_str(), &wide_message), nullptr) << "not its beginning";
        EXPECT_STREQ(wide_message, L"path has no form in UTF-8");
        EXPECT_EQ(nErrno.exchange(0), static_cast<uint32_t>(EINVAL));
    }
}

TEST_F(Libraries, SymbolsAndStrings) {
    void* const module = load(library);
    EXPECT_EQ(oruGetProcAddress(module, "no_such_symbol", &message_), nullptr);
    EXPECT_THAT(message_, HasSubstr("no_such_symbol"));
    EXPECT_NE(oruGetProcAddress(module, "loadString", &message_), nullptr);
    EXPECT_STREQ(message_, "");
    EXPECT_EQ(oruGetProcAddress(nullptr, "malloc", nullptr), nullptr) << "no module is no program";
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
    {
        const MutexGuard lock(slots_mutex);
        EXPECT_NE(pDynamicLibraryList[7], nullptr) << "the lowest empty slot";
    }
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
        const bool emptied = *message_ == '\0' && (calls == 0 || *wide_message == L'\0');
        EXPECT_TRUE(emptied || calls % 4 != 0);
        ++calls;
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
    module = oruLoadLibraryW(wide_library.c_str(), nullptr);
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
    together(4, [](int number) {
        const std::string path = std::string(static_cast<size_t>(number % 2), '/') + library;
        for (int round = 0; round < 100; ++round) {
            void* const module = oruLoadLibrary(path.c_str(), nullptr);
            ASSERT_NE(module, nullptr);
            EXPECT_EQ(oruDisableThreadLibraryCalls(module), 1);
            EXPECT_EQ(oruFreeLibrary(module), 1);
        }
    });
}

#if defined(FAULT_INJECTION)
TEST_F(Libraries, AFailedLoadKeepsNothing) {
    void* module = nullptr;
    const auto wide_load = [&] {
        return (module = oruLoadLibraryW(wide_library.c_str(), nullptr)) != nullptr;
    };
    const auto give_back = [&] { EXPECT_EQ(oruFreeLibrary(module), 1); };
    EXPECT_GE(fault_injection::walk_failures(wide_load, give_back).calls, 4);
    int allocations = 0;
    for (bool loaded = false; !loaded; ++allocations) {
        nErrno = 0;
        const fault_injection::FailNth failure(allocations + 1, "malloc");
        loaded = wide_load();
        EXPECT_EQ(nErrno, static_cast<uint32_t>(loaded ? 0 : ENOMEM));
    }
    give_back();
    EXPECT_EQ(allocations, 5) << "three texts of the path, an entry, and none";
}
#endif
