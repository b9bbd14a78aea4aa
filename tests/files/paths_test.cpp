#include "support/fault_injection.h"
#include "vlrcomn/path_resolution.h"

using namespace velora_com::qel;

// What a call gives; a failed one leaves its argument alone.
static std::string flat(const FileNameFlattener& flattener) {
    std::string out = "un";
    return flattener.GetFlatPath(out) ? out : out + "told";
}
static std::string resolved(const std::string& path) {
    std::string out = "un";
    return FileNameResolver(path).GetAbsolutePath(out) ? out : out + "told";
}

struct Paths : testing::Test {
    Paths() {
        fs::create_directories(root_ + "/sub/deep");
        folder_.enter("sub");
    }

    std::string link(const std::string& target, const std::string& name) {
        fs::create_symlink(target, folder_ / name);
        return folder_ / name;
    }

    const TemporaryFolder folder_;
    const std::string& root_ = folder_.path();
    const std::string file_ = folder_.write("file");
};

// The fuzz target's seeds hold every text against a second implementation.
TEST_F(Paths, AreFlattenedBelowTheRootToo) {
    EXPECT_EQ(flat({"a/./b/../c", "/x"}), "/x/a/c");
    fs::current_path("/");
    EXPECT_EQ(flat(FileNameFlattener("a")), "//a");
    EXPECT_EQ(flat({"/../etc", "/x"}), "untold");
}

TEST_F(Paths, ResolvesToRegularFilesOnly) {
    link("../file", "sub/up");
    link(root_ + "/sub/up", "twice");
    link("sub", "folder");
    link("/..", "above");
    EXPECT_EQ(resolved("up"), file_);
    EXPECT_EQ(resolved(root_ + "/twice"), file_) << "against the link's folder";
    // A link above the last component is the system's affair.
    EXPECT_EQ(resolved(root_ + "/folder/deep/../up"), file_);
    for (const char* name : {"", "/folder", "/missing", "/above", "/.."}) {
        EXPECT_EQ(resolved(root_ + name), "untold") << name;
    }
    EXPECT_EQ(resolved(file_ + std::string("\0x", 2)), "untold");
}

TEST_F(Paths, BoundsLinksAndTheirTexts) {
    std::string target = "file";
    for (int i = 1; i <= 51; ++i) {
        link(target, std::to_string(i));
        target = std::to_string(i);
    }
    EXPECT_EQ(resolved(root_ + "/50"), file_);
    EXPECT_EQ(resolved(root_ + "/51"), "untold");
    const std::string longest = root_ + std::string(1023 - file_.size(), '/') + "/file";
    EXPECT_EQ(resolved(link(longest, "longest")), longest);
    EXPECT_EQ(resolved(link("/" + longest, "longer")), "untold");
}

TEST_F(Paths, ServesCCallersWhateverFails) {
    const auto make = orumcomn_filenameresolver_create;
    const auto get = orumcomn_filenameresolver_get_absolute_filename;
    const std::string start = link(file_, "link");
    char buffer[4096] = "before";
    unsigned size = static_cast<unsigned>(file_.size());
    void* handle = nullptr;
    ASSERT_EQ(make(start.c_str(), &handle), ORU_SUCCESS);
    EXPECT_EQ(get(handle, buffer, &size), ORU_FAILURE);
    EXPECT_STREQ(buffer, "before");
    ASSERT_EQ(size, file_.size() + 1);
    EXPECT_TRUE(get(handle, buffer, &size) == ORU_SUCCESS && buffer == file_);
    const auto release = [&] { orumcomn_filenameresolver_destroy(std::exchange(handle, nullptr)); };
    release();
    const auto create = [&] {
        make(start.c_str(), &handle);
        const bool told = get(handle, buffer, &size) == ORU_SUCCESS;
        return told || (release(), false);
    };
    EXPECT_EQ(fault_injection::walk_failures(create, release).tolerated, 0);
    EXPECT_EQ(make(nullptr, &handle), ORU_FAILURE);
    EXPECT_EQ(make(start.c_str(), nullptr), ORU_FAILURE);
    EXPECT_EQ(get(nullptr, buffer, &size), ORU_FAILURE);
    EXPECT_EQ(orumcomn_filenameresolver_destroy(nullptr), ORU_SUCCESS);
}
