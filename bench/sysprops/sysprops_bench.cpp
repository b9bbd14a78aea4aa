// The property report and single properties ("ours") against the bare system calls and reads from which
// they come ("limit"): the same files read whole but not parsed, the same calls, nothing kept.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <ifaddrs.h>
#include <mntent.h>
#include <netdb.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/utsname.h>
#include <unistd.h>
#include <utmpx.h>

#include <cstdio>
#include <ctime>
#include <iostream>

#include "vlrcomn/system_properties.h"

namespace {

void read_whole(const char* path) {
    char bytes[16384];
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    while (file >= 0 && read(file, bytes, sizeof bytes) > 0) {
        benchmark::DoNotOptimize(bytes[0]);
    }
    if (file >= 0) {
        close(file);
    }
}

void processor_reads() {
    benchmark::DoNotOptimize(sysconf(_SC_NPROCESSORS_ONLN));
    read_whole("/proc/cpuinfo");
    read_whole("/sys/class/dmi/id/product_name");
}

void memory_reads() {
    read_whole("/proc/meminfo");
    benchmark::DoNotOptimize(sysconf(_SC_PAGESIZE));
}

void disk_reads() {
    FILE* const table = setmntent("/proc/self/mounts", "re");
    while (const mntent* const entry = table == nullptr ? nullptr : getmntent(table)) {
        struct stat root;
        struct statvfs space;
        if (stat(entry->mnt_dir, &root) == 0) {
            benchmark::DoNotOptimize(statvfs(entry->mnt_dir, &space));
        }
    }
    if (table != nullptr) {
        endmntent(table);
    }
}

void network_reads() {
    utsname host;
    uname(&host);
    benchmark::DoNotOptimize(gethostbyname(host.nodename));
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) == 0) {
        freeifaddrs(list);
    }
}

void misc_reads() {
    while (getutxent() != nullptr) {
    }
    setutxent();
    tzset();
    const time_t now = time(nullptr);
    tm local;
    benchmark::DoNotOptimize(localtime_r(&now, &local));
}

void os_reads() {
    struct stat status;
    benchmark::DoNotOptimize(stat("/System/Library/CoreServices/SystemVersion.plist", &status));
}

void BM_report_ours(benchmark::State& state) {
    for (auto _ : state) {
        velora_com::qel::sysprops::ISysProps properties;
        std::map<std::wstring, std::wstring> report;
        properties.GetAllSystemProperties(report);
        benchmark::DoNotOptimize(report);
    }
}
BENCHMARK(BM_report_ours)->Name("BM_property_report/ours");

void BM_report_limit(benchmark::State& state) {
    for (auto _ : state) {
        network_reads();
        processor_reads();
        memory_reads();
        disk_reads();
        misc_reads();
        os_reads();
    }
}
BENCHMARK(BM_report_limit)->Name("BM_property_report/limit");

void run_single(benchmark::State& state, std::wstring (*property)()) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(property());
    }
}

void run_reads(benchmark::State& state, void (*reads)()) {
    for (auto _ : state) {
        reads();
    }
}

struct Single {
    const char* name;
    std::wstring (*property)();
    void (*reads)();
};

constexpr Single singles[] = {
    {"BM_processor_property", orumcomn_get_cpu_type, processor_reads},
    {"BM_memory_property", orumcomn_get_free_memory, memory_reads},
    {"BM_disk_property", orumcomn_get_free_disk_space, disk_reads},
    {"BM_network_property", orumcomn_get_ip_address, network_reads},
    {"BM_user_property", orumcomn_get_user_name, misc_reads},
    {"BM_os_property", orumcomn_get_os_type, os_reads},
};

}  // namespace

int main(int count, char** arguments) {
    for (const Single& single : singles) {
        const std::string name = single.name;
        benchmark::RegisterBenchmark((name + "/ours").c_str(), run_single, single.property);
        benchmark::RegisterBenchmark((name + "/limit").c_str(), run_reads, single.reads);
    }
    benchmark::Initialize(&count, arguments);
    // Listing the users writes diagnostic lines to standard output: the figures go to standard error.
    const int null_device = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (null_device < 0 || dup2(null_device, STDOUT_FILENO) < 0) {
        return 1;
    }
    benchmark::ConsoleReporter display;
    display.SetOutputStream(&std::cerr);
    display.SetErrorStream(&std::cerr);
    benchmark::RunSpecifiedBenchmarks(&display);
    return 0;
}
