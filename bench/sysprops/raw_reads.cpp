#include "raw_reads.h"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <ifaddrs.h>
#include <netdb.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/utsname.h>
#include <unistd.h>
#include <utmpx.h>

#include <cstdio>
#include <ctime>

namespace raw_reads {
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

}  // namespace

void processor() {
    benchmark::DoNotOptimize(sysconf(_SC_NPROCESSORS_ONLN));
    read_whole("/proc/cpuinfo");
    read_whole("/sys/class/dmi/id/product_name");
}

void memory() {
    read_whole("/proc/meminfo");
    benchmark::DoNotOptimize(sysconf(_SC_PAGESIZE));
}

void disk() {
    FILE* const table = fopen("/proc/self/mountinfo", "re");
    char line[8192];
    char path[4096];
    while (table != nullptr && fgets(line, sizeof line, table) != nullptr) {
        struct statvfs space;
        if (std::sscanf(line, "%*s %*s %*s %*s %4095s", path) == 1) {
            benchmark::DoNotOptimize(statvfs(path, &space));
        }
    }
    if (table != nullptr) {
        fclose(table);
    }
}

void network() {
    utsname host;
    uname(&host);
    benchmark::DoNotOptimize(gethostbyname(host.nodename));
    ifaddrs* list = nullptr;
    if (getifaddrs(&list) == 0) {
        freeifaddrs(list);
    }
}

void misc() {
    while (getutxent() != nullptr) {
    }
    setutxent();
    tzset();
    const time_t now = time(nullptr);
    tm local;
    benchmark::DoNotOptimize(localtime_r(&now, &local));
}

void os() {
    struct stat status;
    benchmark::DoNotOptimize(stat("/System/Library/CoreServices/SystemVersion.plist", &status));
}

}  // namespace raw_reads
