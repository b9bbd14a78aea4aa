// The whole report, in process and as a process. The peers answer what they can of it: each tells the system,
// the processors, the memory and the interfaces, and what else is said at each.
#include <benchmark/benchmark.h>

#include <map>
#include <string>

#include "raw_reads.h"
#include "silence.h"
#include "support/child.h"
#include "support/registering.h"
#include "vlrcomn/system_properties.h"

#ifdef WITH_LIBSTATGRAB
#include <statgrab.h>
#endif
#ifdef WITH_LIBUV
#include <uv.h>
#endif

namespace {

void report_ours(benchmark::State& state) {
    const Silence silence;
    for (auto _ : state) {
        velora_com::qel::sysprops::ISysProps properties;
        std::map<std::wstring, std::wstring> report;
        properties.GetAllSystemProperties(report);
        benchmark::DoNotOptimize(report);
    }
}

void report_limit(benchmark::State& state) {
    for (auto _ : state) {
        raw_reads::network();
        raw_reads::processor();
        raw_reads::memory();
        raw_reads::disk();
        raw_reads::misc();
        raw_reads::os();
    }
}

#ifdef WITH_LIBSTATGRAB
// Its account of a processor is its load, not its kind; and it has the disks and the users.
void report_libstatgrab(benchmark::State& state) {
    sg_init(1);
    for (auto _ : state) {
        size_t count = 0;
        benchmark::DoNotOptimize(sg_get_host_info(&count));
        benchmark::DoNotOptimize(sg_get_cpu_stats(&count));
        benchmark::DoNotOptimize(sg_get_mem_stats(&count));
        benchmark::DoNotOptimize(sg_get_fs_stats(&count));
        benchmark::DoNotOptimize(sg_get_network_iface_stats(&count));
        benchmark::DoNotOptimize(sg_get_user_stats(&count));
    }
    sg_shutdown();
}
#endif

#ifdef WITH_LIBUV
// It has no disks; of users only the present one.
void report_libuv(benchmark::State& state) {
    for (auto _ : state) {
        uv_utsname_t system;
        benchmark::DoNotOptimize(uv_os_uname(&system));
        char host[UV_MAXHOSTNAMESIZE];
        size_t size = sizeof host;
        benchmark::DoNotOptimize(uv_os_gethostname(host, &size));
        uv_cpu_info_t* processors = nullptr;
        int count = 0;
        if (uv_cpu_info(&processors, &count) == 0) {
            uv_free_cpu_info(processors, count);
        }
        benchmark::DoNotOptimize(uv_get_total_memory());
        benchmark::DoNotOptimize(uv_get_free_memory());
        uv_interface_address_t* interfaces = nullptr;
        if (uv_interface_addresses(&interfaces, &count) == 0) {
            uv_free_interface_addresses(interfaces, count);
        }
        uv_passwd_t user;
        if (uv_os_get_passwd(&user) == 0) {
            uv_os_free_passwd(&user);
        }
    }
}
#endif

void process(benchmark::State& state, const std::vector<std::string>& words) {
    for (auto _ : state) {
        // Where a file may not be read, some tell what they can and exit with 1.
        const int result = run_program(words);
        if (result < 0 || result > 1) {
            state.SkipWithError("not installed");
            break;
        }
    }
}

void add() {
    const auto add_report = [](const char* contender, void (*run)(benchmark::State&)) {
        add_contender("property_report", contender, run)->UseRealTime();
    };
    add_report("ours", report_ours);
    add_report("limit", report_limit);
#ifdef WITH_LIBSTATGRAB
    add_report("libstatgrab", report_libstatgrab);
#endif
#ifdef WITH_LIBUV
    add_report("libuv", report_libuv);
#endif
    const auto add_process = [](const char* contender, const std::vector<std::string>& words) {
        add_contender("report_process", contender, process, words)->UseRealTime();
    };
    add_process("ours", {VLRPROPS});
    add_process("limit", {"/bin/true"});
    add_process("facter", {"facter"});
    add_process("inxi", {"inxi", "-Fxx"});
    add_process("shell_script",
                {"sh", "-c", "hostname; uname -a; lscpu; free; df; ip address; who; date"});
}
REGISTER_BENCHMARKS(add);

}  // namespace
