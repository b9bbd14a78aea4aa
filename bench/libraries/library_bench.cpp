// Symbols, and loading and freeing a library that is loaded already.
#include <benchmark/benchmark.h>
#include <dlfcn.h>

#include "support/registering.h"
#include "vlrcomn/dynamic_library.h"

#ifdef WITH_APR
#include <apr_dso.h>
#include "support/apr_memory.h"
#endif
#ifdef WITH_GMODULE
#include <gmodule.h>
#endif
#ifdef WITH_WINPR
#include <winpr/library.h>
#endif

namespace {

struct Ours {
    static constexpr const char* name = "ours";
    void* module = oruLoadLibrary(LOADED_LIBRARY, nullptr);
    ~Ours() { oruFreeLibrary(module); }
    void* symbol() { return oruGetProcAddress(module, "answer", nullptr); }
};

struct Bare {
    static constexpr const char* name = "limit";
    void* module = dlopen(LOADED_LIBRARY, RTLD_LAZY);
    ~Bare() { dlclose(module); }
    void* symbol() { return dlsym(module, "answer"); }
};

#ifdef WITH_APR
struct Apr {
    static constexpr const char* name = "apr";
    AprMemory memory;
    apr_dso_handle_t* module = nullptr;
    Apr() { apr_dso_load(&module, LOADED_LIBRARY, memory.get()); }
    ~Apr() { apr_dso_unload(module); }
    void* symbol() {
        apr_dso_handle_sym_t found = nullptr;
        apr_dso_sym(&found, module, "answer");
        return found;
    }
};
#endif

#ifdef WITH_GMODULE
struct Glib {
    static constexpr const char* name = "gmodule";
    GModule* module = g_module_open(LOADED_LIBRARY, G_MODULE_BIND_LAZY);
    ~Glib() { g_module_close(module); }
    void* symbol() {
        gpointer found = nullptr;
        g_module_symbol(module, "answer", &found);
        return found;
    }
};
#endif

#ifdef WITH_WINPR
struct Winpr {
    static constexpr const char* name = "winpr";
    HMODULE module = LoadLibraryA(LOADED_LIBRARY);
    ~Winpr() { FreeLibrary(module); }
    void* symbol() { return reinterpret_cast<void*>(GetProcAddress(module, "answer")); }
};
#endif

template <typename Library>
void symbol(benchmark::State& state) {
    Library library;
    if (library.symbol() == nullptr) {
        state.SkipWithError("no such symbol");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(library.symbol());
    }
}

template <typename Library>
void reload(benchmark::State& state) {
    const Library keeps_it_loaded;
    for (auto _ : state) {
        const Library library;
        benchmark::DoNotOptimize(library.module);
    }
}

template <typename Library>
void add_library() {
    add_contender("symbol", Library::name, symbol<Library>);
    add_contender("load_free_loaded", Library::name, reload<Library>);
}

void add() {
    add_library<Ours>();
    add_library<Bare>();
#ifdef WITH_APR
    add_library<Apr>();
#endif
#ifdef WITH_GMODULE
    add_library<Glib>();
#endif
#ifdef WITH_WINPR
    add_library<Winpr>();
#endif
}
REGISTER_BENCHMARKS(add);

}  // namespace
