// Symbols, and loading and freeing a library that is loaded already.
#include <benchmark/benchmark.h>
#include <dlfcn.h>

#include "vlrcomn/dynamic_library.h"

namespace {

// Keeps the library loaded through a benchmark.
class Loaded {
public:
    Loaded() : module_(oruLoadLibrary(LOADED_LIBRARY, nullptr)) {}
    ~Loaded() { oruFreeLibrary(module_); }
    Loaded(const Loaded&) = delete;
    Loaded& operator=(const Loaded&) = delete;
    void* get() const { return module_; }

private:
    void* module_;
};

void symbol_ours(benchmark::State& state) {
    const Loaded library;
    for (auto _ : state) {
        benchmark::DoNotOptimize(oruGetProcAddress(library.get(), "answer", nullptr));
    }
}
void symbol_limit(benchmark::State& state) {
    const Loaded library;
    for (auto _ : state) {
        benchmark::DoNotOptimize(dlsym(library.get(), "answer"));
    }
}
BENCHMARK(symbol_ours)->Name("BM_symbol/ours");
BENCHMARK(symbol_limit)->Name("BM_symbol/limit");

void reload_ours(benchmark::State& state) {
    const Loaded library;
    for (auto _ : state) {
        oruFreeLibrary(oruLoadLibrary(LOADED_LIBRARY, nullptr));
    }
}
void reload_limit(benchmark::State& state) {
    const Loaded library;
    for (auto _ : state) {
        dlclose(dlopen(LOADED_LIBRARY, RTLD_LAZY));
    }
}
BENCHMARK(reload_ours)->Name("BM_load_free_loaded/ours");
BENCHMARK(reload_limit)->Name("BM_load_free_loaded/limit");

}  // namespace
