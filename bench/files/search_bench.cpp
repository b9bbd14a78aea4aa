// A search of 10,000 entries, all of which match or every tenth.
#include <benchmark/benchmark.h>
#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <glob.h>
#include <sys/stat.h>

#include "bench_folder.h"
#include "vlrcomn/file.h"

namespace {

const BenchFolder& folder() {
    static const BenchFolder made;
    static const bool filled = [] {
        for (int i = 0; i < 10000; ++i) {
            made.write("entry" + std::to_string(i) + (i % 10 == 0 ? ".txt" : ".dat"), 0);
        }
        return true;
    }();
    static_cast<void>(filled);
    return made;
}

size_t ours(const std::string& pattern) {
    size_t size = 0;
    oruFindData data;
    const intptr_t search = oruFindFirstDirEnt((folder() / pattern).c_str(), &data);
    do {
        size += data.size + 1;
    } while (oruFindNextDirEnt(search, &data) == 1);
    oruFindCloseDirEnt(search);
    return size;
}

// Nothing but the calls that any search needs.
size_t limit(const std::string& pattern) {
    size_t size = 0;
    DIR* const stream = opendir((folder() / "").c_str());
    while (const dirent* const entry = readdir(stream)) {
        struct stat status;
        if (fnmatch(pattern.c_str(), entry->d_name, 0) == 0 &&
            fstatat(dirfd(stream), entry->d_name, &status, 0) == 0) {
            size += static_cast<size_t>(status.st_size) + 1;
        }
    }
    closedir(stream);
    return size;
}

size_t with_glob(const std::string& pattern) {
    size_t size = 0;
    glob_t found{};
    glob((folder() / pattern).c_str(), GLOB_NOSORT, nullptr, &found);
    for (size_t i = 0; i < found.gl_pathc; ++i) {
        struct stat status;
        size += stat(found.gl_pathv[i], &status) == 0 ? static_cast<size_t>(status.st_size) + 1 : 0;
    }
    globfree(&found);
    return size;
}

size_t with_filesystem(const std::string& pattern) {
    size_t size = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder() / "")) {
        if (fnmatch(pattern.c_str(), entry.path().filename().c_str(), 0) == 0) {
            size += entry.file_size() + 1;
        }
    }
    return size;
}

template <size_t search(const std::string&)>
void run(benchmark::State& state, const char* pattern) {
    folder();
    for (auto _ : state) {
        benchmark::DoNotOptimize(search(pattern));
    }
}

void add(const std::string& workload, const char* pattern) {
    benchmark::RegisterBenchmark((workload + "/ours").c_str(), run<ours>, pattern);
    benchmark::RegisterBenchmark((workload + "/limit").c_str(), run<limit>, pattern);
    benchmark::RegisterBenchmark((workload + "/glob").c_str(), run<with_glob>, pattern);
    benchmark::RegisterBenchmark((workload + "/filesystem").c_str(), run<with_filesystem>, pattern);
}

const bool registered = [] {
    add("BM_search_tenth", "*.txt");
    add("BM_search_all", "*");
    return true;
}();

}  // namespace
