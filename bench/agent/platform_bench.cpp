// The platform matcher.
#include <benchmark/benchmark.h>
#include <fnmatch.h>

#include <string>

#include "support/registering.h"
#include "vlrcomn/agent_identity.h"

namespace {

// The nearest thing at hand for "does one of these patterns name this text": the C library's
// wildcard matcher over the same texts. It reads no numbers.
constexpr const char platform[] = "MACX:10:4:11";
constexpr const char platform_list[] = "WIN:5:0:0-6:1:7600|LNX:2:4|SOL:8-10|MAC:10:4:0-10:5:0";

void platform_ours(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(orumcomn_IsPlatformMatch(platform, platform_list));
    }
}

void platform_fnmatch(benchmark::State& state) {
    const std::string patterns[] = {"*WIN*:5:0:0-6:1:7600", "*LNX*:2:4", "*SOL*:8-10",
                                    "*MAC*:10:4:*"};
    for (auto _ : state) {
        for (const std::string& one : patterns) {
            benchmark::DoNotOptimize(fnmatch(one.c_str(), platform, 0));
        }
    }
}

// Nothing can decide without having looked at both texts once.
void platform_scan(benchmark::State& state) {
    for (auto _ : state) {
        int sum = 0;
        for (const char* text : {platform, platform_list}) {
            benchmark::DoNotOptimize(text);
            for (; *text != '\0'; ++text) {
                sum += *text;
            }
        }
        benchmark::DoNotOptimize(sum);
    }
}

void add() {
    add_contender("platform_match", "ours", platform_ours);
    add_contender("platform_match", "limit", platform_scan);
    add_contender("platform_match", "fnmatch", platform_fnmatch);
}
REGISTER_BENCHMARKS(add);

}  // namespace
