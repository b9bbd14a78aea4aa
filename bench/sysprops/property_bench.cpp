// Single properties.
#include <benchmark/benchmark.h>

#include <string>

#include "raw_reads.h"
#include "silence.h"
#include "support/registering.h"
#include "vlrcomn/system_properties.h"

namespace {

void run_property(benchmark::State& state, std::wstring (*property)()) {
    const Silence silence;
    for (auto _ : state) {
        benchmark::DoNotOptimize(property());
    }
}

void run_reads(benchmark::State& state, void (*reads)()) {
    for (auto _ : state) {
        reads();
    }
}

void add() {
    const struct {
        const char* workload;
        std::wstring (*property)();
        void (*reads)();
    } singles[] = {
        {"processor_property", orumcomn_get_cpu_type, raw_reads::processor},
        {"memory_property", orumcomn_get_free_memory, raw_reads::memory},
        {"disk_property", orumcomn_get_free_disk_space, raw_reads::disk},
        {"network_property", orumcomn_get_ip_address, raw_reads::network},
        {"user_property", orumcomn_get_user_name, raw_reads::misc},
        {"os_property", orumcomn_get_os_type, raw_reads::os},
    };
    for (const auto& [workload, property, reads] : singles) {
        add_contender(workload, "ours", run_property, property);
        add_contender(workload, "limit", run_reads, reads);
    }
}
REGISTER_BENCHMARKS(add);

}  // namespace
