#include <benchmark/benchmark.h>
#include <fnmatch.h>

#include <string>

#include "vlrcomn/file.h"

namespace {

const char* const names[] = {"report-2024-11-21.txt", "a.txt", "libvlrcomn.so.1", "README",
                             "policy_enforcement_task_0001.xml"};

int ours(const char* pattern, const char* name) {
    return oruWildCardMatch(pattern, name);
}
int peer(const char* pattern, const char* name) {
    return fnmatch(pattern, name, 0);
}

template <int match(const char*, const char*)>
void run(benchmark::State& state, const char* pattern) {
    for (auto _ : state) {
        for (const char* name : names) {
            benchmark::DoNotOptimize(match(pattern, name));
        }
    }
}

const bool registered = [] {
    const struct {
        const char* workload;
        const char* pattern;
    } workloads[] = {{"suffix", "*.txt"},
                     {"all", "*"},
                     {"middle", "policy_*_task_????.xml"},
                     {"plain", "README"}};
    for (const auto& [workload, pattern] : workloads) {
        const std::string name = std::string("BM_wildcard_") + workload;
        benchmark::RegisterBenchmark((name + "/ours").c_str(), run<ours>, pattern);
        benchmark::RegisterBenchmark((name + "/fnmatch").c_str(), run<peer>, pattern);
    }
    return true;
}();

}  // namespace
