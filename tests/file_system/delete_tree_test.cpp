#include <dirent.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <atomic>
#include <string>
#include <thread>

#include "support/temporary_folder.h"
#include "vlrcomn/file_system.h"

namespace {

namespace fs = std::filesystem;

class DeleteTree : public testing::Test {
protected:
    DeleteTree() { fs::create_directory(tree_); }

    void deltree() { orumcomn_deltree(tree_.c_str()); }

    const TemporaryFolder folder_;
    const std::string tree_ = folder_ / "tree";
};

int open_descriptors() {
    int count = 0;
    for ([[maybe_unused]] const auto& each : fs::directory_iterator("/proc/self/fd")) {
        ++count;
    }
    return count;
}

// A chain of folders below `top`, each with a file. Paths of any length: every step is taken from the
// folder before.
void make_deep(const std::string& top, int depth) {
    int folder = open(top.c_str(), O_RDONLY | O_DIRECTORY);
    for (int i = 0; i < depth; ++i) {
        ASSERT_EQ(mkdirat(folder, "deeper", 0700), 0);
        close(openat(folder, "file", O_WRONLY | O_CREAT, 0600));
        const int next = openat(folder, "deeper", O_RDONLY | O_DIRECTORY);
        close(folder);
        folder = next;
    }
    close(folder);
}

TEST_F(DeleteTree, TakesEverythingAndNothingElse) {
    for (const char* name :
         {"tree/.hidden", "tree/a/b/c/file", "tree/\xff\xfe", "tree/ * ?", "other"}) {
        folder_.write(name, "x");
    }
    fs::create_directories(folder_ / "tree/empty/.also");
    fs::permissions(folder_ / "tree/.hidden", fs::perms::none);
    orumcomn_delsubtree(tree_.c_str());
    EXPECT_TRUE(fs::is_empty(tree_));
    folder_.write("tree/again");
    const int before = open_descriptors();
    deltree();
    EXPECT_EQ(open_descriptors(), before);
    EXPECT_FALSE(is_there(tree_));
    EXPECT_TRUE(is_there(folder_ / "other"));
}

TEST_F(DeleteTree, RefusesWhatItCannotMean) {
    const std::string name(255, 'n');
    const std::string long_path = tree_ + std::string(260 - tree_.size(), '/');
    folder_.write("tree/file");
    orumcomn_deltree(nullptr);
    orumcomn_deltree("");
    orumcomn_deltree(long_path.c_str());
    orumcomn_delsubtree(long_path.c_str());
    orumcomn_deltree((folder_ / "missing").c_str());
    orumcomn_deltree((folder_ / "tree/file").c_str());
    EXPECT_TRUE(is_there(folder_ / "tree/file"));
    orumcomn_deltree(long_path.substr(0, 259).c_str());
    EXPECT_FALSE(is_there(tree_));
}

TEST_F(DeleteTree, LinksAreNotFollowed) {
    folder_.write("outside/kept");
    folder_.write("tree/real/file");
    fs::create_directory_symlink("../outside", folder_ / "tree/link");
    fs::create_directory_symlink(folder_ / "outside", folder_ / "tree/real/link");
    fs::create_symlink("nowhere", folder_ / "tree/dangling");
    fs::create_directory_symlink(".", folder_ / "tree/loop");
    fs::create_directory_symlink("tree", folder_ / "argument");
    orumcomn_deltree((folder_ / "argument").c_str());
    EXPECT_TRUE(is_there(folder_ / "argument")) << "a link as the argument stays";
    EXPECT_TRUE(fs::is_empty(tree_)) << "but is followed";
    EXPECT_TRUE(is_there(folder_ / "outside/kept"));
}

// The folder's name leads to the outside and back all the time; what lies outside has to stay.
TEST_F(DeleteTree, AFolderSwappedForALinkIsNotEntered) {
    folder_.write("outside/kept");
    folder_.write("outside/sub/kept");
    const std::string name = folder_ / "tree/swapped", aside = folder_ / "aside";
    std::atomic<bool> done{false};
    std::thread swapper([&] {
        while (!done) {
            fs::create_directory(tree_);
            if (mkdir(name.c_str(), 0700) == 0) {
                close(open((name + "/file").c_str(), O_WRONLY | O_CREAT, 0600));
                if (rename(name.c_str(), aside.c_str()) == 0) {
                    std::ignore = symlink("../outside", name.c_str());
                    orumcomn_deltree(aside.c_str());
                }
            }
            unlink(name.c_str());
        }
    });
    for (int i = 0; i < 2000; ++i) {
        deltree();
    }
    done = true;
    swapper.join();
    EXPECT_TRUE(is_there(folder_ / "outside/kept"));
    EXPECT_TRUE(is_there(folder_ / "outside/sub/kept"));
}

TEST_F(DeleteTree, EntriesComeAndGo) {
    std::atomic<bool> done{false};
    std::thread rival([&] {
        for (int i = 0; !done; ++i) {
            std::error_code ignored;
            const std::string name = folder_ / "tree/sub" + std::to_string(i % 7);
            fs::create_directories(name, ignored);
            std::ofstream(name + "/file") << i;
            fs::remove_all(folder_ / "tree/sub" + std::to_string((i + 3) % 7), ignored);
        }
    });
    for (int i = 0; i < 500; ++i) {
        deltree();
    }
    done = true;
    rival.join();
    deltree();
    EXPECT_FALSE(is_there(tree_));
}

// By descriptors far deeper than any path, and either way with few descriptors left.
TEST_F(DeleteTree, DepthCostsNoDescriptors) {
#if defined(VLRCOMN_TEST_BY_PATH)
    make_deep(tree_, 500);
#else
    make_deep(tree_, 1000);
#endif
    rlimit files;
    getrlimit(RLIMIT_NOFILE, &files);
    const rlimit few{static_cast<rlim_t>(open_descriptors()) + 4, files.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    deltree();
    setrlimit(RLIMIT_NOFILE, &files);
    EXPECT_FALSE(is_there(tree_));
}

// As a user whom permissions bind. What is forbidden stays, all else goes.
TEST_F(DeleteTree, PermissionsKeepOnlyWhatTheyForbid) {
    for (const char* name : {"a_gone/file", "unreadable/kept", "read_only/kept",
                             "unsearchable/kept", "read_only_file", "z_gone/deep/er/file"}) {
        folder_.write(std::string("tree/") + name);
    }
    fs::create_directories(folder_ / "tree/unreadable_empty");
    const std::pair<const char*, mode_t> modes[] = {{"unreadable", 0},
                                                    {"read_only", 0500},
                                                    {"unsearchable", 0400},
                                                    {"read_only_file", 0},
                                                    {"unreadable_empty", 0}};
    for (const auto& [name, mode] : modes) {
        ASSERT_EQ(chmod((tree_ + "/" + name).c_str(), mode), 0);
    }
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0) {
            const uid_t nobody = 65534;
            std::error_code ignored;
            for (const auto& each : fs::recursive_directory_iterator(folder_.path(), ignored)) {
                if (lchown(each.path().c_str(), nobody, nobody) != 0) {
                    _exit(77);
                }
            }
            if (chown(folder_.path().c_str(), nobody, nobody) != 0 || setgid(nobody) != 0 ||
                setuid(nobody) != 0) {
                _exit(77);
            }
        }
        deltree();
        _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    for (const auto& [name, mode] : modes) {
        chmod((tree_ + "/" + name).c_str(), 0700);
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == 77) {
        GTEST_SKIP() << "cannot become another user";
    }
    ASSERT_EQ(status, 0);
    std::string left;
    for (const char* name : {"a_gone", "read_only", "read_only_file", "unreadable",
                             "unreadable_empty", "unsearchable", "z_gone"}) {
        left += is_there(tree_ + "/" + name) ? std::string(name) + " " : "";
    }
    EXPECT_EQ(left, "read_only unreadable unsearchable ");
}

}  // namespace
