// Deletion of 10,000 files in 100 folders. The tree is made outside the measured time.
#include <benchmark/benchmark.h>
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <chrono>

#include "support/bench_folder.h"
#include "support/child.h"
#include "support/registering.h"
#include "vlrcomn/file_system.h"

namespace {

void ours(const std::string& tree) {
    orumcomn_deltree(tree.c_str());
}

void with_filesystem(const std::string& tree) {
    std::filesystem::remove_all(tree);
}

void with_rm(const std::string& tree) {
    run_program({"rm", "-rf", tree});
}

// Nothing but the calls that this very tree needs.
void limit_in(int parent, const char* name, bool has_folders) {
    const int folder = openat(parent, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR* const stream = fdopendir(folder);
    while (const dirent* const entry = readdir(stream)) {
        if (entry->d_name[0] == '.') {
            continue;
        }
        if (has_folders) {
            limit_in(folder, entry->d_name, false);
        } else {
            unlinkat(folder, entry->d_name, 0);
        }
    }
    closedir(stream);
    unlinkat(parent, name, AT_REMOVEDIR);
}

void limit(const std::string& tree) {
    limit_in(AT_FDCWD, tree.c_str(), true);
}

template <void remove(const std::string&)>
void run(benchmark::State& state) {
    for (auto _ : state) {
        const BenchFolder folder;
        const std::string tree = folder / "tree";
        for (size_t i = 0; i < scaled(100); ++i) {
            const std::string sub = "tree/folder" + std::to_string(i) + "/";
            std::filesystem::create_directories(folder / sub);
            for (int j = 0; j < 100; ++j) {
                folder.write(sub + "file" + std::to_string(j), 0);
            }
        }
        const auto start = std::chrono::steady_clock::now();
        remove(tree);
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        if (std::filesystem::exists(tree)) {
            state.SkipWithError("something is left");
            break;
        }
    }
}

void add_one(const char* contender, void (*run_one)(benchmark::State&)) {
    add_contender("delete_tree", contender, run_one)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

void add() {
    add_one("ours", run<ours>);
    add_one("limit", run<limit>);
    add_one("filesystem", run<with_filesystem>);
    add_one("rm", run<with_rm>);
}
REGISTER_BENCHMARKS(add);

}  // namespace
