// A folder for a benchmark, in the system's folder for temporary files (TMPDIR), gone with the benchmark.
#pragma once

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
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
        std::string pattern = std::filesystem::temp_directory_path() / "vlrbenchXXXXXX";
        top_ = mkdtemp(pattern.data());
        spread_folders_in(top_);
        pattern = top_ + "/XXXXXX";
        path_ = mkdtemp(pattern.data());
    }
    ~BenchFolder() { std::filesystem::remove_all(top_); }
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
    // Ext4 takes the inode of a new file from its folder's place, but none that was freed a short while ago:
    // where many were, it looks at each of them first, for half a millisecond and more. Below a marked
    // folder every folder begins at a place of its own, which its name decides.
    static void spread_folders_in(const std::string& folder) {
        const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        int flags = 0;
        if (ioctl(descriptor, FS_IOC_GETFLAGS, &flags) == 0) {
            flags |= FS_TOPDIR_FL;
            ioctl(descriptor, FS_IOC_SETFLAGS, &flags);
        }
        close(descriptor);
    }

    std::string top_;
    std::string path_;
};
