// Path resolution against the system calls that it needs.
#include <benchmark/benchmark.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "support/bench_folder.h"
#include "support/registering.h"
#include "vlrcomn/path_resolution.h"

namespace {

namespace fs = std::filesystem;

// A file behind three links, the last one absolute, in a temporary folder.
class Links {
public:
    Links() {
        fs::create_directory(root_ / "folder");
        root_.write("folder/file", 1);
        fs::create_symlink(root_ / "folder/file", root_ / "folder/first");
        fs::create_symlink("folder/first", root_ / "second");
        fs::create_symlink("../second", root_ / "folder/third");
    }

    std::string start() const { return root_ / "folder/third"; }
    // What resolution has to look at, in its order.
    std::vector<std::string> steps() const {
        return {start(), root_ / "second", root_ / "folder/first", root_ / "folder/file"};
    }

private:
    BenchFolder root_;
};

const Links& links() {
    static const Links instance;
    return instance;
}

void resolve_ours(benchmark::State& state) {
    const std::string start = links().start();
    std::string result;
    for (auto _ : state) {
        velora_com::qel::FileNameResolver resolver(start);
        benchmark::DoNotOptimize(resolver.GetAbsolutePath(result));
    }
    if (result != links().steps().back()) {
        state.SkipWithError("not resolved");
    }
}

// The system calls alone.
void resolve_limit(benchmark::State& state) {
    const std::vector<std::string> steps = links().steps();
    for (auto _ : state) {
        for (const std::string& step : steps) {
            struct stat status;
            benchmark::DoNotOptimize(lstat(step.c_str(), &status));
            if (S_ISLNK(status.st_mode)) {
                char target[1024];
                benchmark::DoNotOptimize(readlink(step.c_str(), target, sizeof target));
            }
        }
    }
}

void resolve_realpath(benchmark::State& state) {
    const std::string start = links().start();
    for (auto _ : state) {
        char result[PATH_MAX];
        benchmark::DoNotOptimize(realpath(start.c_str(), result));
    }
}

void resolve_canonical(benchmark::State& state) {
    const fs::path start = links().start();
    for (auto _ : state) {
        benchmark::DoNotOptimize(fs::canonical(start));
    }
}

void add() {
    const char* const workload = "path_resolve_three_links";
    add_contender(workload, "ours", resolve_ours);
    add_contender(workload, "limit", resolve_limit);
    add_contender(workload, "realpath", resolve_realpath);
    add_contender(workload, "filesystem", resolve_canonical);
}
REGISTER_BENCHMARKS(add);

}  // namespace
