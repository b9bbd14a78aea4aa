// The wildcard matcher against the C library's, on names of several lengths.
#include <benchmark/benchmark.h>
#include <fnmatch.h>

#include <string>

#include "support/registering.h"
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

// Nothing can decide without having looked at both texts once.
int scan(const char* pattern, const char* name) {
    int sum = 0;
    for (const char* const text : {pattern, name}) {
        for (const char* byte = text; *byte != '\0'; ++byte) {
            sum += *byte;
        }
    }
    return sum;
}

template <int match(const char*, const char*)>
void run(benchmark::State& state, const char* pattern) {
    for (auto _ : state) {
        for (const char* name : names) {
            benchmark::DoNotOptimize(match(pattern, name));
        }
    }
}

void add() {
    const struct {
        const char* workload;
        const char* pattern;
    } workloads[] = {{"wildcard_suffix", "*.txt"},
                     {"wildcard_all", "*"},
                     {"wildcard_middle", "policy_*_task_????.xml"},
                     {"wildcard_plain", "README"}};
    for (const auto& [workload, pattern] : workloads) {
        add_contender(workload, "ours", run<ours>, pattern);
        add_contender(workload, "limit", run<scan>, pattern);
        add_contender(workload, "fnmatch", run<peer>, pattern);
    }
}
REGISTER_BENCHMARKS(add);

}  // namespace
