// A folder for a benchmark, in the system's folder for temporary files (TMPDIR), gone with the benchmark.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

// How much of a large workload is done: all of it, or a hundredth for a run that only shows that the
// benchmarks work.
inline size_t scaled(size_t whole) {
    static const bool is_small = std::getenv("VLRCOMN_BENCH_SMALL") != nullptr;
    return is_small ? whole / 100 : whole;
}

class BenchFolder {
public:
    BenchFolder() {
        path_ = std::filesystem::temp_directory_path() / "vlrbenchXXXXXX";
        path_ = mkdtemp(path_.data());
    }
    ~BenchFolder() { std::filesystem::remove_all(path_); }
    BenchFolder(const BenchFolder&) = delete;
    BenchFolder& operator=(const BenchFolder&) = delete;

    std::string operator/(const std::string& name) const { return path_ + "/" + name; }
    void write(const std::string& name, size_t size) const {
        const int file =
            open((*this / name).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        const std::string bytes(size, 'x');
        if (file < 0 || ::write(file, bytes.data(), size) != static_cast<ssize_t>(size) ||
            close(file) != 0) {
            std::abort();
        }
    }

private:
    std::string path_;
};
