#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <cstdio>
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

int lowest_free_descriptor() {
    const int descriptor = open("/", O_RDONLY);
    close(descriptor);
    return descriptor;
}

TEST_F(DeleteTree, TakesEverythingAndNothingElse) {
    for (const char* name : {"tree/.hidden", "tree/a/b/c/file", "tree/\xff ?", "other"}) {
        folder_.write(name, "x");
    }
    fs::create_directories(folder_ / "tree/empty/.also");
    const int before = lowest_free_descriptor();
    orumcomn_delsubtree(tree_.c_str());
    EXPECT_TRUE(fs::is_empty(tree_));
    folder_.write("tree/again");
    deltree();
    EXPECT_EQ(lowest_free_descriptor(), before);
    EXPECT_FALSE(is_there(tree_));
    EXPECT_TRUE(is_there(folder_ / "other"));
}

TEST_F(DeleteTree, RefusesWhatItCannotMean) {
    const std::string long_path = tree_ + std::string(260 - tree_.size(), '/');
    folder_.write("tree/file");
    for (const std::string& path :
         {std::string(), long_path, folder_ / "missing", folder_ / "tree/file"}) {
        orumcomn_deltree(path.c_str());
        orumcomn_delsubtree(path.c_str());
    }
    EXPECT_TRUE(is_there(folder_ / "tree/file"));
    orumcomn_deltree(long_path.substr(0, 259).c_str());
    EXPECT_FALSE(is_there(tree_));
}

TEST_F(DeleteTree, LinksAreNotFollowed) {
    folder_.write("outside/kept");
    folder_.write("tree/real/file");
    fs::create_directory_symlink("../outside", folder_ / "tree/link");
    fs::create_symlink("nowhere", folder_ / "tree/real/dangling");
    fs::create_directory_symlink(".", folder_ / "tree/loop");
    fs::create_directory_symlink("tree", folder_ / "argument");
    orumcomn_deltree((folder_ / "argument").c_str());
    EXPECT_TRUE(is_there(folder_ / "argument")) << "a link as the argument stays";
    EXPECT_TRUE(fs::is_empty(tree_)) << "but is followed";
    EXPECT_TRUE(is_there(folder_ / "outside/kept"));
}

// Links to the outside take the places of folders while the tree is deleted; what lies outside has to stay.
TEST_F(DeleteTree, AFolderSwappedForALinkIsNotEntered) {
    const std::string kept = folder_.write("outside/kept");
    for (int round = 0; round < 5 && is_there(kept); ++round) {
        for (int i = 0; i < 40; ++i) {
            folder_.write("tree/" + std::to_string(i) + "/file");
        }
        fs::create_directory(folder_ / "aside");
        std::thread swapper([&] {
            for (int i = 0; i < 40; ++i) {
                const std::string name = folder_ / "tree/" + std::to_string(i);
                if (rename(name.c_str(), (folder_ / "aside/" + std::to_string(i)).c_str()) == 0) {
                    std::ignore = symlink("../outside", name.c_str());
                }
            }
        });
        deltree();
        swapper.join();
        deltree();
        EXPECT_FALSE(is_there(tree_));
        fs::remove_all(folder_ / "aside");
    }
    EXPECT_TRUE(is_there(kept));
}

// By descriptors far deeper than any path, and either way with few descriptors left.
TEST_F(DeleteTree, DepthCostsNoDescriptors) {
#if defined(VLRCOMN_TEST_BY_PATH)
    const int depth = 500;
#else
    const int depth = 1000;
#endif
    int folder = open(tree_.c_str(), O_RDONLY | O_DIRECTORY);
    for (int i = 0; i < depth; ++i) {
        ASSERT_EQ(mkdirat(folder, "deeper", 0700), 0);
        close(std::exchange(folder, openat(folder, "deeper", O_RDONLY | O_DIRECTORY)));
    }
    close(folder);
    rlimit files;
    getrlimit(RLIMIT_NOFILE, &files);
    const rlimit few{static_cast<rlim_t>(lowest_free_descriptor()) + 4, files.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    deltree();
    setrlimit(RLIMIT_NOFILE, &files);
    EXPECT_FALSE(is_there(tree_));
}

}  // namespace
