// A mount table as long as one likes, seen by this thread alone. Nothing of it outlives the object.
#pragma once

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "support/bench_folder.h"
#include "support/owners.h"

class ManyMounts {
public:
    explicit ManyMounts(size_t count)
        : former_(open("/proc/thread-self/ns/mnt", O_RDONLY | O_CLOEXEC)),
          place_(open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        if (geteuid() != 0) {
            why_not_ = "needs root";
        } else if (!former_ || !place_ || unshare(CLONE_NEWNS) != 0) {
            why_not_ = "mount namespaces cannot be made here";
        } else {
            inside_ = true;
            if (!mount_all(count)) {
                why_not_ = "the mounts are refused";
            }
        }
    }
    ~ManyMounts() {
        if (inside_ && (setns(former_.get(), CLONE_NEWNS) != 0 || fchdir(place_.get()) != 0)) {
            std::abort();
        }
    }
    ManyMounts(const ManyMounts&) = delete;
    ManyMounts& operator=(const ManyMounts&) = delete;

    // Empty when everything worked.
    const std::string& why_not() const { return why_not_; }

private:
    bool mount_all(size_t count) const {
        const std::string top = folder_ / "mounts";
        if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mkdir(top.c_str(), 0777) != 0 || mount("none", top.c_str(), "tmpfs", 0, nullptr) != 0) {
            return false;
        }
        for (size_t number = 0; number < count; ++number) {
            const std::string point = top + "/" + std::to_string(number);
            if (mkdir(point.c_str(), 0777) != 0 ||
                mount(point.c_str(), point.c_str(), nullptr, MS_BIND, nullptr) != 0) {
                return false;
            }
        }
        return true;
    }

    BenchFolder folder_;
    velora_com::qel::support::FileDescriptor former_;
    velora_com::qel::support::FileDescriptor place_;
    bool inside_ = false;
    std::string why_not_;
};
