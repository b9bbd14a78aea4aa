#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "platform/platform.h"
#include "platform/posix/copy_by_blocks.h"
#include "support/owners.h"

namespace velora_com::qel::platform {
namespace {

using support::FileDescriptor;

// An unnamed file; `folder` chooses the file system.
FileDescriptor scratch(const char* folder = "/tmp") {
    std::string name = std::string(folder) + "/copy_contents_XXXXXX";
    FileDescriptor file(mkstemp(name.data()));
    unlink(name.c_str());
    return file;
}

std::string made_text(size_t size) {
    std::string text(size, '\0');
    for (size_t i = 0; i < size; ++i) {
        text[i] = static_cast<char>(i * 7 + i / 251);
    }
    return text;
}

std::string contents(const FileDescriptor& file) {
    std::string text;
    char block[4096];
    off_t offset = 0;
    for (ssize_t got; (got = pread(file.get(), block, sizeof block, offset)) > 0; offset += got) {
        text.append(block, static_cast<size_t>(got));
    }
    return text;
}

class CopyContents : public testing::TestWithParam<bool (*)(int, int)> {};
INSTANTIATE_TEST_SUITE_P(, CopyContents, testing::Values(copy_contents, copy_by_blocks),
                         [](const auto& copy) {
                             return copy.param == copy_contents ? "copy_contents"
                                                                : "copy_by_blocks";
                         });

TEST_P(CopyContents, EverySizeBetweenFileSystems) {
    for (const char* folder : {"/tmp", "/dev/shm"}) {
        for (const size_t size : {0U, 1U, 511U, 512U, 513U, 32767U, 32768U, 32769U, 3'000'001U}) {
            SCOPED_TRACE(testing::Message() << size << " bytes to " << folder);
            const FileDescriptor source = scratch();
            const FileDescriptor destination = scratch(folder);
            ASSERT_TRUE(source && destination);
            const std::string text = made_text(size);
            ASSERT_EQ(write(source.get(), text.data(), size), static_cast<ssize_t>(size));
            lseek(source.get(), 0, SEEK_SET);
            EXPECT_TRUE(GetParam()(source.get(), destination.get()));
            EXPECT_EQ(contents(destination), text);
        }
    }
}

TEST_P(CopyContents, FromOnePositionToTheOther) {
    const FileDescriptor source = scratch();
    const FileDescriptor destination = scratch();
    ASSERT_EQ(write(source.get(), "0123456789", 10), 10);
    ASSERT_EQ(write(destination.get(), "abcdef", 6), 6);
    lseek(source.get(), 7, SEEK_SET);
    lseek(destination.get(), 2, SEEK_SET);
    EXPECT_TRUE(GetParam()(source.get(), destination.get()));
    EXPECT_EQ(contents(destination), "ab789f");
}

// What the kernel's own copy refuses or passes over: appending, files without a size, pipes.
TEST_P(CopyContents, OtherKindsOfFiles) {
    const FileDescriptor appending = scratch();
    ASSERT_EQ(fcntl(appending.get(), F_SETFL, O_APPEND), 0);
    const FileDescriptor source = scratch();
    ASSERT_EQ(write(source.get(), "0123456789", 10), 10);
    for (int i = 0; i < 2; ++i) {
        lseek(source.get(), 0, SEEK_SET);
        EXPECT_TRUE(GetParam()(source.get(), appending.get()));
    }
    EXPECT_EQ(contents(appending), "01234567890123456789");

    const FileDescriptor sizeless(open("/proc/self/mounts", O_RDONLY));
    const FileDescriptor destination = scratch();
    EXPECT_TRUE(GetParam()(sizeless.get(), destination.get()));
    std::stringstream mounts;
    mounts << std::ifstream("/proc/self/mounts").rdbuf();
    EXPECT_EQ(contents(destination), mounts.str());

    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const FileDescriptor reader(ends[0]);
    const FileDescriptor writer(ends[1]);
    lseek(source.get(), 0, SEEK_SET);
    EXPECT_TRUE(GetParam()(source.get(), writer.get()));
    char text[11] = {};
    EXPECT_EQ(read(reader.get(), text, sizeof text), 10);
    EXPECT_STREQ(text, "0123456789");
}

TEST_P(CopyContents, FailuresSayWhy) {
    const FileDescriptor source = scratch();
    ASSERT_EQ(write(source.get(), "x", 1), 1);
    const FileDescriptor full(open("/dev/full", O_WRONLY));
    const FileDescriptor read_only(open("/dev/null", O_RDONLY));
    const FileDescriptor folder(open("/tmp", O_RDONLY));
    struct Case {
        int source, destination, error;
    };
    for (const Case& c : {Case{source.get(), -1, EBADF},
                          {-1, source.get(), EBADF},
                          {source.get(), read_only.get(), EBADF},
                          {source.get(), full.get(), ENOSPC},
                          {folder.get(), full.get(), EISDIR}}) {
        SCOPED_TRACE(c.error);
        lseek(source.get(), 0, SEEK_SET);
        errno = 0;
        EXPECT_FALSE(GetParam()(c.source, c.destination));
        EXPECT_EQ(errno, c.error);
    }
}

}  // namespace
}  // namespace velora_com::qel::platform
