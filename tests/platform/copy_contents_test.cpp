#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <fstream>

#include "platform/platform.h"
#include "platform/posix/copy_by_blocks.h"
#include "support/owners.h"

namespace velora_com::qel::platform {
namespace {

using support::FileDescriptor;

// An unnamed file; `folder` chooses the file system. What is written stands before the position.
FileDescriptor scratch(const std::string& text = {}, const std::string& folder = "/tmp") {
    std::string name = folder + "/copy_contents_XXXXXX";
    FileDescriptor file(mkstemp(name.data()));
    unlink(name.c_str());
    EXPECT_EQ(write(file.get(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
    return file;
}

std::string contents(const FileDescriptor& file) {
    std::string text(size_t{4} << 20, '\0');
    const ssize_t got = pread(file.get(), text.data(), text.size(), 0);
    text.resize(static_cast<size_t>(std::max<ssize_t>(got, 0)));
    return text;
}

class CopyContents : public testing::TestWithParam<bool (*)(int, int)> {};
INSTANTIATE_TEST_SUITE_P(, CopyContents, testing::Values(copy_contents, copy_by_blocks));

TEST_P(CopyContents, FromOnePositionToTheOtherWhateverTheSize) {
    for (const char* folder : {"/tmp", "/dev/shm"}) {
        for (const size_t size : {0U, 1U, 65535U, 65536U, 65537U, 3'000'001U}) {
            SCOPED_TRACE(testing::Message() << size << " bytes to " << folder);
            std::string text;
            while (text.size() < size) {
                text += std::to_string(text.size()) + ' ';
            }
            text.resize(size);
            const FileDescriptor source = scratch("before" + text);
            const FileDescriptor destination = scratch("kept", folder);
            lseek(source.get(), 6, SEEK_SET);
            EXPECT_TRUE(GetParam()(source.get(), destination.get()));
            EXPECT_EQ(contents(destination), "kept" + text);
        }
    }
}

// What the kernel's own copy refuses or passes over: appending, files without a size.
TEST_P(CopyContents, OtherKindsOfFiles) {
    const FileDescriptor appending = scratch("text ");
    ASSERT_EQ(fcntl(appending.get(), F_SETFL, O_APPEND), 0);
    lseek(appending.get(), 0, SEEK_SET);
    const FileDescriptor sizeless(open("/proc/version", O_RDONLY));
    EXPECT_TRUE(GetParam()(sizeless.get(), appending.get()));
    std::string version;
    std::getline(std::ifstream("/proc/version"), version);
    EXPECT_EQ(contents(appending), "text " + version + "\n");
}

}  // namespace
}  // namespace velora_com::qel::platform
