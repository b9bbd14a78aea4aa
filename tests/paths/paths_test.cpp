#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <utility>

#include "support/fault_injection.h"
#include "support/temporary_folder.h"
#include "vlrcomn/path_resolution.h"

namespace velora_com::qel {
namespace {

namespace fs = std::filesystem;

using Result = std::optional<std::string>;

// What a call gives; a failed one leaves its argument alone.
template <typename Object>
Result result_of(const Object& object, bool (Object::*get)(std::string&) const) {
    std::string out = "before";
    if ((object.*get)(out)) {
        return out;
    }
    EXPECT_EQ(out, "before");
    return std::nullopt;
}

Result flat(const FileNameFlattener& flattener) {
    return result_of(flattener, &FileNameFlattener::GetFlatPath);
}

Result resolved(const std::string& path) {
    return result_of(FileNameResolver(path), &FileNameResolver::GetAbsolutePath);
}

// A temporary folder to work in; the working directory is put back.
class Paths : public testing::Test {
protected:
    Paths() {
        fs::create_directories(root_ + "/sub/deep");
        folder_.write("file");
        fs::current_path(root_ + "/sub");
    }
    ~Paths() override { fs::current_path(before_); }

    std::string link(const std::string& target, const std::string& name) {
        fs::create_symlink(target, root_ + "/" + name);
        return root_ + "/" + name;
    }

    const fs::path before_ = fs::current_path();
    const TemporaryFolder folder_;
    const std::string& root_ = folder_.path();
};

TEST_F(Paths, FlattensText) {
    const std::string cwd = root_ + "/sub";
    const struct {
        const char* path;
        const char* base;
        Result expected;
    } cases[] = {
        {"a/./b/../c", "/x", "/x/a/c"},
        {"/../etc", "/x", std::nullopt},
        {"..", "/x/y", "/x"},
        {"../../../../../../../../../../../../..", "y", std::nullopt},
        {"/a/..", "/x", ""},
        {"", "/x", "/x/"},
        {"//", "/x", "/"},
        {"/a//../b/", "/x", "/a/b"},
        {"/./.a/..b/.../", "/x", "/.a/..b/..."},
        {"/a", "/..", std::nullopt},  // the base counts, also when it is not needed
        {"a", "..", root_ + "/a"},
        {"a", "", cwd + "//a"},
        {"a", "/a/..", "/a"},
    };
    for (const auto& c : cases) {
        FileNameFlattener flattener(c.path, c.base);
        EXPECT_EQ(flat(flattener), c.expected) << c.path << " against " << c.base;
        EXPECT_EQ(flattener.Flatten(), c.expected.has_value());
    }
    EXPECT_EQ(flat(FileNameFlattener("./a")), cwd + "/a");
    EXPECT_EQ(flat(FileNameFlattener("/")), cwd + "/");
}

TEST_F(Paths, ResolvesToRegularFilesOnly) {
    const std::string file = root_ + "/file";
    mkfifo((root_ + "/fifo").c_str(), 0600);
    link("../file", "sub/up");
    link(root_ + "/sub/up", "twice");
    link("missing", "dangling");
    link("sub", "folder");
    link("loop2", "loop1");
    link("loop1", "loop2");
    EXPECT_EQ(resolved(file), file);
    EXPECT_EQ(resolved("../file"), file);
    EXPECT_EQ(resolved("up"), file);
    // Against the link's folder, wherever the process works.
    fs::current_path(root_ + "/sub/deep");
    EXPECT_EQ(resolved(root_ + "/twice"), file);
    for (const char* name :
         {"", "/sub", "/folder", "/fifo", "/missing", "/dangling", "/loop1", "/.."}) {
        EXPECT_EQ(resolved(root_ + name), std::nullopt) << name;
    }
    EXPECT_EQ(resolved(file + std::string("\0x", 2)), std::nullopt);
    // A link above the last component is the system's affair.
    EXPECT_EQ(resolved(root_ + "/folder/up"), root_ + "/file");
    EXPECT_EQ(resolved(root_ + "/folder/deep/../../file"), file);
}

TEST_F(Paths, BoundsLinksAndTheirTexts) {
    std::string target = "file";
    for (int i = 1; i <= 51; ++i) {
        const std::string name = "link" + std::to_string(i);
        link(target, name);
        target = name;
    }
    EXPECT_EQ(resolved(root_ + "/link50"), root_ + "/file");
    EXPECT_EQ(resolved(root_ + "/link51"), std::nullopt);

    for (const size_t size : {1023u, 1024u}) {
        std::string text = root_;
        while (text.size() + 2 + 5 <= size) {
            text += "/.";
        }
        text += size - text.size() == 5 ? "/file" : "//file";
        ASSERT_EQ(text.size(), size);
        const Result found = resolved(link(text, std::to_string(size)));
        EXPECT_EQ(found.has_value(), size == 1023) << size;
    }
}

// In the root folder, too, a link counts from its folder. The test needs a root folder of its own.
TEST_F(Paths, ResolvesLinksInTheRootFolder) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "chroot needs root";
    }
    link("file", "link");
    const pid_t child = fork();
    if (child == 0) {
        const bool right = chroot(root_.c_str()) == 0 && chdir("/sub") == 0 &&
                           resolved("/link") == "/file" && resolved("//link") == "/file";
        _exit(right ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

TEST_F(Paths, ServesCCallers) {
    const std::string file = root_ + "/file";
    void* handle = nullptr;
    EXPECT_EQ(orumcomn_filenameresolver_create(nullptr, &handle), ORU_FAILURE);
    EXPECT_EQ(orumcomn_filenameresolver_create("x", nullptr), ORU_FAILURE);
    EXPECT_EQ(orumcomn_filenameresolver_destroy(nullptr), ORU_SUCCESS);

    const auto get = orumcomn_filenameresolver_get_absolute_filename;
    char buffer[4096] = "before";
    unsigned size = 3;
    ASSERT_EQ(orumcomn_filenameresolver_create(root_.c_str(), &handle), ORU_SUCCESS);
    EXPECT_EQ(get(handle, buffer, &size), ORU_FAILURE) << "a folder";
    EXPECT_EQ(size, 3u);
    EXPECT_EQ(orumcomn_filenameresolver_destroy(handle), ORU_SUCCESS);

    ASSERT_EQ(orumcomn_filenameresolver_create(file.c_str(), &handle), ORU_SUCCESS);
    EXPECT_EQ(get(nullptr, buffer, &size), ORU_FAILURE);
    EXPECT_EQ(get(handle, nullptr, &size), ORU_FAILURE);
    EXPECT_EQ(get(handle, buffer, nullptr), ORU_FAILURE);
    size = static_cast<unsigned>(file.size());
    EXPECT_EQ(get(handle, buffer, &size), ORU_FAILURE);
    EXPECT_STREQ(buffer, "before");
    ASSERT_EQ(size, file.size() + 1);
    EXPECT_EQ(get(handle, buffer, &size), ORU_SUCCESS);
    EXPECT_EQ(buffer, file);
    EXPECT_EQ(orumcomn_filenameresolver_destroy(handle), ORU_SUCCESS);
}

TEST_F(Paths, SurvivesMissingMemoryAndFailingLookUps) {
    const std::string start = link(root_ + "/file", "link");
    void* handle = nullptr;
    const auto release = [&] { orumcomn_filenameresolver_destroy(std::exchange(handle, nullptr)); };
    const auto create = [&] {
        char buffer[4096];
        unsigned size = sizeof buffer;
        if (orumcomn_filenameresolver_create(start.c_str(), &handle) == ORU_SUCCESS &&
            orumcomn_filenameresolver_get_absolute_filename(handle, buffer, &size) == ORU_SUCCESS) {
            return true;
        }
        release();
        return false;
    };
    const fault_injection::Walk walk = fault_injection::walk_failures(create, release);
    EXPECT_GT(walk.calls, 5);
    EXPECT_EQ(walk.tolerated, 0);
}

}  // namespace
}  // namespace velora_com::qel
