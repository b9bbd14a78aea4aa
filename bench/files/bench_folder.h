// A folder for a benchmark, in the system's folder for temporary files (TMPDIR), gone with the benchmark.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

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
        std::ofstream(*this / name) << std::string(size, 'x');
    }

private:
    std::string path_;
};
