// What nearly every test needs: GoogleTest, the standard library, and some words of the tests' own. It is the
// precompiled header of all test programs.
#pragma once

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <future>
#include <limits>
#include <map>
#include <mutex>
#include <optional>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#if !defined(__THROW)  // as glibc declares calls that tests replace
#define __THROW
#endif

namespace fs = std::filesystem;
using testing::ElementsAre;

// Leaves a test out for lack of something. Under CI, which provides everything, that is a failure.
#define SKIP_FOR_LACK_OF(what)                                       \
    ASSERT_EQ(std::getenv("CI"), nullptr) << "for lack of " << what; \
    GTEST_SKIP() << "for lack of " << what

// Whether a thread can be cancelled while it waits on a condition. In programs for Mac OS X 10.4 it sleeps on.
#if defined(__DARWIN_UNIX03) && !__DARWIN_UNIX03
constexpr bool condition_waits_can_be_cancelled = false;
#else
constexpr bool condition_waits_can_be_cancelled = true;
#endif
#define NEEDS_CANCELLED_WAITS              \
    if (!condition_waits_can_be_cancelled) \
    GTEST_SKIP() << "nobody can be cancelled while it waits on a condition"

// A regular expression for a death test: what glibc, Mac OS X and musl say of a failed assertion.
inline std::string assertion_message(const std::string& file, const std::string& line,
                                     const std::string& function, const std::string& text) {
    return file + ":" + line + ": " + function + ": Assertion `" + text + "' failed|\\(" + text +
           "\\), function " + function + ", file " + file + ", line " + line + "|" + text + " \\(" +
           file + ": " + function + ": " + line + "\\)";
}

// Whether `check` returns true in a child of this process; it must make no assertions of its own.
template <typename Check>
bool holds_in_child(Check check) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(check() ? 0 : 1);
    }
    int status = -1;
    return waitpid(child, &status, 0) == child && status == 0;
}

// Runs `body(number)` on `count` threads that start together, and returns when all have ended.
template <typename Body>
void together(int count, Body body) {
    std::mutex starting;  // no atomic word: valgrind follows POSIX calls only
    std::unique_lock hold(starting);
    std::vector<std::thread> threads;
    for (int number = 0; number < count; ++number) {
        threads.emplace_back([&, number] {
            { const std::lock_guard start(starting); }
            body(number);
        });
    }
    hold.unlock();
    for (std::thread& thread : threads) {
        thread.join();
    }
}

// A folder of its own for a test, gone with the test, which may enter it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = fs::canonical(testing::TempDir()).string() + "/vlrXXXXXX";
        path_ = mkdtemp(pattern.data());
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        fs::current_path(before_, ignored);
        fs::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return path_; }
    // The path of something in the folder.
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }
    void enter(const std::string& name = "") const { fs::current_path(*this / name); }

    // Writes a file, with the folders above it, and returns its path.
    std::string write(const std::string& name, const std::string& contents = "") const {
        const fs::path file = *this / name;
        fs::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << contents;
        return file;
    }

private:
    const fs::path before_ = fs::current_path();
    std::string path_;
};

inline std::string contents_of(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// What lies at a path, a dangling link too.
inline bool is_there(const std::string& path) {
    return fs::symlink_status(path).type() != fs::file_type::not_found;
}
