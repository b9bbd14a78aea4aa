// Names of benchmarks: BM_workload/contender[/argument...], from which scripts/bench_table.py makes tables.
#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <utility>

// Registers run(state, arguments...) as one contender of a workload.
template <typename Run, typename... Arguments>
benchmark::internal::Benchmark* add_contender(const std::string& workload,
                                              const std::string& contender, Run&& run,
                                              Arguments&&... arguments) {
    return benchmark::RegisterBenchmark(("BM_" + workload + "/" + contender).c_str(),
                                        std::forward<Run>(run),
                                        std::forward<Arguments>(arguments)...);
}

// Registers add() before main; a file of benchmarks ends in one of these.
#define REGISTER_BENCHMARKS(add)             \
    [[maybe_unused]] const bool added = [] { \
        add();                               \
        return true;                         \
    }()
