// Single properties.
#include <benchmark/benchmark.h>

#include <string>

#include "many_mounts.h"
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

template <void (*run)()>
void run_with_mounts(benchmark::State& state) {
    const ManyMounts mounts(scaled(static_cast<size_t>(state.range(0))));
    if (!mounts.why_not().empty()) {
        state.SkipWithError(mounts.why_not().c_str());
        return;
    }
    for (auto _ : state) {
        run();
    }
}

void ask_for_disks() {
    benchmark::DoNotOptimize(orumcomn_get_free_disk_space());
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
    const auto add_mounts = [](const char* contender, void (*run)(benchmark::State&)) {
        add_contender("disks_by_mounts", contender, run)->ArgName("mounts")->Arg(1000)->Arg(5000);
    };
    add_mounts("ours", run_with_mounts<ask_for_disks>);
    add_mounts("limit", run_with_mounts<raw_reads::disk>);
}
REGISTER_BENCHMARKS(add);

}  // namespace
