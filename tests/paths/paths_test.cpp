#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <utility>

#include "support/fault_injection.h"
#include "support/temporary_folder.h"
#include "vlrcomn/path_resolution.h"

namespace velora_com::qel {
namespace {

namespace fs = std::filesystem;

// What a call gives; a failed one leaves its argument alone.
std::string flat(const FileNameFlattener& flattener) {
    std::string out = "failed";
    const bool told = flattener.GetFlatPath(out);
    EXPECT_EQ(told, out != "failed");
    return out;
}
std::string resolved(const std::string& path) {
    std::string out = "failed";
    const bool told = FileNameResolver(path).GetAbsolutePath(out);
    EXPECT_EQ(told, out != "failed");
    return out;
}

class Paths : public testing::Test {
protected:
    Paths() {
        fs::create_directories(root_ + "/sub/deep");
        fs::current_path(root_ + "/sub");
    }
    ~Paths() override { fs::current_path(before_); }

    std::string link(const std::string& target, const std::string& name) {
        fs::create_symlink(target, folder_ / name);
        return folder_ / name;
    }

    const fs::path before_ = fs::current_path();
    const TemporaryFolder folder_;
    const std::string& root_ = folder_.path();
    const std::string file_ = folder_.write("file");
};

// The fuzz target holds every text against the steps of the contract.
TEST_F(Paths, FlattensText) {
    const struct {
        std::string path, base, expected;
    } cases[] = {
        {"a/./b/../c", "/x", "/x/a/c"}, {"/../etc", "/x", "failed"},
        {"/a", "/..", "failed"},  // the base counts, also when it is not needed
        {"a", "..", root_ + "/a"},      {"a", "", root_ + "/sub//a"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(flat(FileNameFlattener(each.path, each.base)), each.expected)
            << each.path << " against " << each.base;
    }
    EXPECT_EQ(flat(FileNameFlattener("./a")), root_ + "/sub/a");
}

TEST_F(Paths, ResolvesToRegularFilesOnly) {
    mkfifo((root_ + "/fifo").c_str(), 0600);
    link("../file", "sub/up");
    link(root_ + "/sub/up", "twice");
    link("missing", "dangling");
    link("sub", "folder");
    EXPECT_EQ(resolved("up"), file_);
    EXPECT_EQ(resolved(root_ + "/twice"), file_) << "against the link's folder";
    // A link above the last component is the system's affair.
    EXPECT_EQ(resolved(root_ + "/folder/deep/../up"), file_);
    for (const char* name : {"", "/folder", "/fifo", "/dangling", "/.."}) {
        EXPECT_EQ(resolved(root_ + name), "failed") << name;
    }
    EXPECT_EQ(resolved(file_ + std::string("\0x", 2)), "failed");
}

TEST_F(Paths, BoundsLinksAndTheirTexts) {
    std::string target = "file";
    for (int i = 1; i <= 51; ++i) {
        link(target, std::to_string(i));
        target = std::to_string(i);
    }
    EXPECT_EQ(resolved(root_ + "/50"), file_);
    EXPECT_EQ(resolved(root_ + "/51"), "failed");
    for (const size_t size : {1023u, 1024u}) {
        const std::string text = root_ + std::string(size - file_.size(), '/') + "/file";
        EXPECT_EQ(resolved(link(text, std::to_string(size))), size == 1023 ? text : "failed");
    }
}

TEST_F(Paths, ServesCCallersWhateverFails) {
    const auto get = orumcomn_filenameresolver_get_absolute_filename;
    const std::string start = link(file_, "link");
    char buffer[4096] = "before";
    unsigned size = 3;
    void* handle = nullptr;
    const auto release = [&] { orumcomn_filenameresolver_destroy(std::exchange(handle, nullptr)); };
    ASSERT_EQ(orumcomn_filenameresolver_create(start.c_str(), &handle), ORU_SUCCESS);
    EXPECT_EQ(get(nullptr, buffer, &size), ORU_FAILURE);
    size = static_cast<unsigned>(file_.size());
    EXPECT_EQ(get(handle, buffer, &size), ORU_FAILURE);
    EXPECT_STREQ(buffer, "before");
    ASSERT_EQ(size, file_.size() + 1);
    EXPECT_EQ(get(handle, buffer, &size), ORU_SUCCESS);
    EXPECT_EQ(buffer, file_);
    release();

    const auto create = [&] {
        if (orumcomn_filenameresolver_create(start.c_str(), &handle) == ORU_SUCCESS &&
            get(handle, buffer, &size) == ORU_SUCCESS) {
            return true;
        }
        release();
        return false;
    };
    const fault_injection::Walk walk = fault_injection::walk_failures(create, release);
    EXPECT_EQ(walk.tolerated, 0);
}

}  // namespace
}  // namespace velora_com::qel
