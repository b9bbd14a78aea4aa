// Path resolution and the platform matcher against what a caller would use instead.
#include <benchmark/benchmark.h>
#include <fnmatch.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "vlrcomn/agent_identity.h"
#include "vlrcomn/path_resolution.h"

namespace {

namespace fs = std::filesystem;

// A file behind three links, the last one absolute, in a temporary folder.
class Links {
public:
    Links() {
        std::string pattern = fs::temp_directory_path().string() + "/linksXXXXXX";
        root_ = mkdtemp(pattern.data());
        fs::create_directory(root_ / "folder");
        std::ofstream(root_ / "folder/file") << "x";
        fs::create_symlink(root_ / "folder/file", root_ / "folder/first");
        fs::create_symlink("folder/first", root_ / "second");
        fs::create_symlink("../second", root_ / "folder/third");
    }
    ~Links() { fs::remove_all(root_); }

    std::string start() const { return root_ / "folder/third"; }
    // What resolution has to look at, in its order.
    std::vector<std::string> steps() const {
        return {start(), root_ / "second", root_ / "folder/first", root_ / "folder/file"};
    }

private:
    fs::path root_;
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

BENCHMARK(resolve_ours)->Name("BM_path_resolve_three_links/ours");
BENCHMARK(resolve_limit)->Name("BM_path_resolve_three_links/limit");
BENCHMARK(resolve_realpath)->Name("BM_path_resolve_three_links/realpath");
BENCHMARK(resolve_canonical)->Name("BM_path_resolve_three_links/std_filesystem");

// The nearest thing at hand for "does one of these patterns name this text": the C library's
// wildcard matcher over the same texts. It reads no numbers.
constexpr const char platform[] = "MACX:10:4:11";
constexpr const char platform_list[] = "WIN:5:0:0-6:1:7600|LNX:2:4|SOL:8-10|MAC:10:4:0-10:5:0";

void platform_ours(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(orumcomn_IsPlatformMatch(platform, platform_list));
    }
}

void platform_fnmatch(benchmark::State& state) {
    const std::string patterns[] = {"*WIN*:5:0:0-6:1:7600", "*LNX*:2:4", "*SOL*:8-10",
                                    "*MAC*:10:4:*"};
    for (auto _ : state) {
        for (const std::string& one : patterns) {
            benchmark::DoNotOptimize(fnmatch(one.c_str(), platform, 0));
        }
    }
}

BENCHMARK(platform_ours)->Name("BM_platform_match/ours");
BENCHMARK(platform_fnmatch)->Name("BM_platform_match/fnmatch");

}  // namespace

BENCHMARK_MAIN();
