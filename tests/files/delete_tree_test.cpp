#include <climits>

#include "support/fault_injection.h"
#include "vlrcomn/file_system.h"

struct DeleteTree : testing::Test {
    const TemporaryFolder folder_;
    const std::string tree_ = folder_ / "tree";
};

TEST_F(DeleteTree, TakesEverythingButFollowsNoLink) {
    const std::string kept = folder_.write("outside/kept"), link = folder_ / "link";
    for (const char* name : {"tree/.hidden", "tree/a/b/file", "tree/\xff ?"}) {
        folder_.write(name);
    }
    fs::create_directory_symlink("../outside", tree_ + "/link");
    fs::create_directory_symlink(".", tree_ + "/loop");
    fs::create_directory_symlink("tree", link);
    const std::string long_path = tree_ + std::string(260 - tree_.size(), '/');
    for (const std::string& nothing : {std::string(), long_path, kept}) {
        orumcomn_deltree(nothing.c_str());
    }
    EXPECT_TRUE(is_there(tree_ + "/a/b/file"));
    orumcomn_deltree(link.c_str());
    EXPECT_TRUE(is_there(link) && fs::is_empty(tree_)) << "the argument stays, but is followed";
    folder_.write("tree/again");
    orumcomn_delsubtree(tree_.c_str());
    EXPECT_TRUE(fs::is_empty(tree_));
    orumcomn_deltree(long_path.substr(0, 259).c_str());
    EXPECT_TRUE(!is_there(tree_) && is_there(kept));
}

#if defined(FAULT_INJECTION)
// A link to the outside takes the place of a folder before each call that deletion makes, in turn: of one
// near the top, and of one whose folder is too deep for a path, as it can still be named itself.
TEST_F(DeleteTree, AFolderSwappedForALinkIsNotEntered) {
    const std::string outside = folder_ / "outside", kept = folder_.write("outside/sub/kept");
    const std::string aside = folder_ / "aside";
    // The deepest folder in which everything can still be named, also when "/." stands behind the top.
    const size_t length = PATH_MAX - NAME_MAX - 2 - (folder_ / "/./inner").size();
    std::string deep = "tree";
    while (deep.size() + 1 < length) {
        deep += '/' + std::string(std::min<size_t>(200, length - deep.size() - 1), 'd');
    }
    const std::pair<std::string, const char*> cases[] = {
        {"tree", nullptr}, {deep, "opendir"}, {deep, "lstat"}, {deep, "rename"}};
    for (const auto& [parent, calls] : cases) {
        const std::string inner = folder_ / parent + "/inner";
        const std::function<void()> swap = [&] {
            if (is_there(inner) && !is_there(aside)) {
                fs::rename(inner, aside);
                fs::create_directory_symlink(outside, inner);
            }
        };
        const char* before = "";
        for (int call = 1; before != nullptr; ++call) {
            folder_.write(parent + "/inner/sub/kept");
            fault_injection::FailNth swapping(call, calls, &swap);
            orumcomn_deltree(tree_.c_str());
            swapping.disarm();
            before = swapping.fired();
            ASSERT_TRUE(is_there(kept)) << "swapped before " << before << ", call " << call;
            orumcomn_deltree(tree_.c_str());
            fs::remove_all(aside);
        }
    }
    const std::string too_deep = folder_.write(deep + "/inner/sub/file");
    fault_injection::FailNth refusing(1, "rename");
    orumcomn_deltree(tree_.c_str());
    refusing.disarm();
    EXPECT_EQ(is_there(too_deep), refusing.fired() != nullptr) << "what cannot be moved stays";
    // One byte longer than the deepest folder, so that this file cannot be named where it lies.
    folder_.write(deep + "/inner1/" + std::string(NAME_MAX, 'f'));
    orumcomn_deltree(tree_.c_str());
    EXPECT_FALSE(is_there(tree_));
}
#endif

// Neither a path nor the descriptors left to the process reach the deepest folder.
TEST_F(DeleteTree, AnyDepthWithFewDescriptors) {
    EXPECT_TRUE(holds_in_child([&] {
        // The first name that a folder moved up would get is taken.
        folder_.write("tree/0/file");
        bool made = chdir(tree_.c_str()) == 0;
        for (int depth = 0; depth < PATH_MAX / 4; ++depth) {
            made = made && mkdir("a_level", 0700) == 0 && chdir("a_level") == 0;
        }
        std::ofstream("file");
        made = made && chdir("/") == 0;
        for (int descriptor = 3; descriptor < 8; ++descriptor) {
            close(descriptor);
        }
        const rlimit five_left{8, 8};
        setrlimit(RLIMIT_NOFILE, &five_left);
        orumcomn_deltree(tree_.c_str());
        return made && !is_there(tree_);
    }));
}
