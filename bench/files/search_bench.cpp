// A search of 10,000 entries, all of which match or every tenth.
#include <benchmark/benchmark.h>
#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <glob.h>
#include <sys/stat.h>

#include "support/bench_folder.h"
#include "support/registering.h"
#include "vlrcomn/file.h"

#ifdef WITH_APR
#include <apr_file_info.h>
#include <apr_fnmatch.h>
#include "support/apr_memory.h"
#endif
#ifdef WITH_WINPR
#include <winpr/file.h>
#endif

namespace {

const BenchFolder& folder() {
    static const BenchFolder made;
    static const bool filled = [] {
        for (size_t i = 0; i < scaled(10000); ++i) {
            made.write("entry" + std::to_string(i) + (i % 10 == 0 ? ".txt" : ".dat"), 0);
        }
        return true;
    }();
    static_cast<void>(filled);
    return made;
}

// Every match is asked for its size.
void note(uint64_t size) {
    benchmark::DoNotOptimize(size);
}

size_t ours(const std::string& pattern) {
    size_t found = 0;
    oruFindData data;
    const intptr_t search = oruFindFirstDirEnt((folder() / pattern).c_str(), &data);
    do {
        note(data.size);
        ++found;
    } while (oruFindNextDirEnt(search, &data) == 1);
    oruFindCloseDirEnt(search);
    return found;
}

// Nothing but the calls that any search needs.
size_t limit(const std::string& pattern) {
    size_t found = 0;
    DIR* const stream = opendir((folder() / "").c_str());
    while (const dirent* const entry = readdir(stream)) {
        struct stat status;
        if (fnmatch(pattern.c_str(), entry->d_name, 0) == 0 &&
            fstatat(dirfd(stream), entry->d_name, &status, 0) == 0) {
            note(static_cast<uint64_t>(status.st_size));
            ++found;
        }
    }
    closedir(stream);
    return found;
}

size_t with_glob(const std::string& pattern) {
    glob_t names{};
    glob((folder() / pattern).c_str(), GLOB_NOSORT, nullptr, &names);
    for (size_t i = 0; i < names.gl_pathc; ++i) {
        struct stat status;
        if (stat(names.gl_pathv[i], &status) == 0) {
            note(static_cast<uint64_t>(status.st_size));
        }
    }
    const size_t found = names.gl_pathc;
    globfree(&names);
    return found;
}

size_t with_filesystem(const std::string& pattern) {
    size_t found = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder() / "")) {
        if (fnmatch(pattern.c_str(), entry.path().filename().c_str(), 0) == 0) {
            note(entry.file_size());
            ++found;
        }
    }
    return found;
}

#ifdef WITH_APR
size_t with_apr(const std::string& pattern) {
    size_t found = 0;
    const AprMemory memory;
    const std::string path = folder() / "";
    apr_dir_t* stream = nullptr;
    apr_dir_open(&stream, path.c_str(), memory.get());
    apr_finfo_t entry;
    apr_finfo_t status;
    while (apr_dir_read(&entry, APR_FINFO_NAME, stream) != APR_ENOENT) {
        if (apr_fnmatch(pattern.c_str(), entry.name, 0) == APR_SUCCESS &&
            apr_stat(&status, (path + entry.name).c_str(), APR_FINFO_SIZE, memory.get()) ==
                APR_SUCCESS) {
            note(static_cast<uint64_t>(status.size));
            ++found;
        }
    }
    apr_dir_close(stream);
    return found;
}
#endif

#ifdef WITH_WINPR
size_t with_winpr(const std::string& pattern) {
    size_t found = 0;
    WIN32_FIND_DATAA data;
    const HANDLE search = FindFirstFileA((folder() / pattern).c_str(), &data);
    do {
        note(data.nFileSizeLow);
        ++found;
    } while (FindNextFileA(search, &data));
    FindClose(search);
    return found;
}
#endif

template <size_t search(const std::string&)>
void run(benchmark::State& state, const char* pattern) {
    folder();
    size_t found = 0;
    for (auto _ : state) {
        found = search(pattern);
    }
    // Some contenders count "." and ".." as well.
    state.counters["found"] = static_cast<double>(found);
}

void add_pattern(const char* workload, const char* pattern) {
    add_contender(workload, "ours", run<ours>, pattern);
    add_contender(workload, "limit", run<limit>, pattern);
    add_contender(workload, "glob", run<with_glob>, pattern);
    add_contender(workload, "filesystem", run<with_filesystem>, pattern);
#ifdef WITH_APR
    add_contender(workload, "apr", run<with_apr>, pattern);
#endif
#ifdef WITH_WINPR
    add_contender(workload, "winpr", run<with_winpr>, pattern);
#endif
}

void add() {
    add_pattern("search_tenth", "*.txt");
    add_pattern("search_all", "*");
}
REGISTER_BENCHMARKS(add);

}  // namespace
