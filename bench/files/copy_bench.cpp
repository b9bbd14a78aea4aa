// Copies of 1 KiB, 1 MiB and 256 MiB to a new name.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <set>

#include "support/bench_folder.h"
#include "support/child.h"
#include "support/registering.h"
#include "vlrcomn/file_system.h"

#ifdef WITH_APR
#include <apr_file_io.h>
#include "support/apr_memory.h"
#endif
#ifdef WITH_POCO
#include <Poco/File.h>
#endif

namespace {

bool ours(const std::string& from, const std::string& to) {
    return orumcomn_copy_file(from.c_str(), to.c_str(), 1);
}

bool limit(const std::string& from, const std::string& to) {
    const int source = open(from.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status;
    fstat(source, &status);
    const int destination = open(to.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    off_t left = status.st_size;
    while (left > 0) {
        const ssize_t copied =
            copy_file_range(source, nullptr, destination, nullptr, static_cast<size_t>(left), 0);
        if (copied <= 0) {
            break;
        }
        left -= copied;
    }
    close(source);
    return close(destination) == 0 && left == 0;
}

bool with_filesystem(const std::string& from, const std::string& to) {
    return std::filesystem::copy_file(from, to);
}

bool with_cp(const std::string& from, const std::string& to) {
    return run_program({"cp", from, to}) == 0;
}

#ifdef WITH_APR
bool with_apr(const std::string& from, const std::string& to) {
    const AprMemory memory;
    return apr_file_copy(from.c_str(), to.c_str(), APR_FPROT_FILE_SOURCE_PERMS, memory.get()) ==
           APR_SUCCESS;
}
#endif

#ifdef WITH_POCO
bool with_poco(const std::string& from, const std::string& to) {
    Poco::File(from).copyTo(to);
    return true;
}
#endif

// A file of a size, made once.
std::string source(size_t size) {
    static const BenchFolder folder;
    static std::set<size_t> sizes;
    const std::string name = std::to_string(size);
    if (sizes.insert(size).second) {
        folder.write(name, size);
    }
    return folder / name;
}

// Each copy gets a new name. The small ones stay until the end: freed inodes would hold up the next.
template <bool copy(const std::string&, const std::string&)>
void run(benchmark::State& state, size_t size) {
    const BenchFolder folder;
    const std::string from = source(size);
    std::string to = folder / "copy";
    int copies = 0;
    for (auto _ : state) {
        if (!copy(from, to)) {
            state.SkipWithError("the copy failed");
            break;
        }
        state.PauseTiming();
        if (size > 1024) {
            unlink(to.c_str());
        }
        to = folder / "copy" + std::to_string(++copies);
        state.ResumeTiming();
    }
}

void add_size(const std::string& workload, size_t size) {
    const auto add_one = [&](const char* contender, auto run_one) {
        add_contender(workload, contender, run_one, size)->UseRealTime();
    };
    add_one("ours", run<ours>);
    add_one("limit", run<limit>);
    add_one("filesystem", run<with_filesystem>);
    add_one("cp", run<with_cp>);
#ifdef WITH_APR
    add_one("apr", run<with_apr>);
#endif
#ifdef WITH_POCO
    add_one("poco", run<with_poco>);
#endif
}

void add() {
    add_size("copy_1KiB", size_t{1} << 10);
    add_size("copy_1MiB", size_t{1} << 20);
    add_size("copy_256MiB", scaled(size_t{1} << 28));
}
REGISTER_BENCHMARKS(add);

}  // namespace
