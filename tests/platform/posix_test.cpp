// The answers that both systems share, and the kernel's own copy on Linux.

#include "platform/posix/block_counts.h"
#include "platform/posix/copy_by_blocks.h"
#include "support/owners.h"
#include "support/test.h"

using namespace velora_com::qel::platform;

using velora_com::qel::support::FileDescriptor;

// An unnamed file that holds `text`, with the position behind it.
static FileDescriptor scratch(const std::string& text) {
    char name[] = "/tmp/copy_contents_XXXXXX";
    FileDescriptor file(mkstemp(name));
    unlink(name);
    EXPECT_EQ(write(file.get(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
    return file;
}

static std::string contents(const FileDescriptor& file) {
    std::string text(size_t{4} << 20, '\0');
    text.resize(static_cast<size_t>(pread(file.get(), text.data(), text.size(), 0)));
    return text;
}

class CopyContents : public testing::TestWithParam<bool (*)(int, int)> {};
INSTANTIATE_TEST_SUITE_P(, CopyContents, testing::Values(copy_contents, copy_by_blocks),
                         [](const auto& way) { return way.index == 0 ? "System" : "Blocks"; });

TEST_P(CopyContents, FromOnePositionToTheOtherWhateverTheSize) {
    std::string text;
    for (const size_t size : {0U, 65536U, 3'000'001U}) {
        while (text.size() < size) {
            text += std::to_string(text.size()) + ' ';
        }
        const FileDescriptor source = scratch("before" + text);
        const FileDescriptor destination = scratch("kept");
        lseek(source.get(), 6, SEEK_SET);
        EXPECT_TRUE(GetParam()(source.get(), destination.get()));
        EXPECT_EQ(contents(destination), "kept" + text) << size;
    }
    // What the kernel's own copy refuses or passes over: appending, files without a size.
    const FileDescriptor appending = scratch("text "), sizeless(open("/proc/version", O_RDONLY));
    ASSERT_EQ(fcntl(appending.get(), F_SETFL, O_APPEND), 0);
    lseek(appending.get(), 0, SEEK_SET);
    EXPECT_TRUE(GetParam()(sizeless.get(), appending.get()));
    EXPECT_EQ(contents(appending), "text " + contents(sizeless));
}

TEST(BlockCounts, LargeSizesAreGivenInLargerBlocks) {
    const auto sized = [](uint64_t block_size, uint64_t blocks, uint64_t free_blocks) {
        MountedFileSystem result{};
        set_block_counts(result, block_size, blocks, free_blocks);
        return std::tuple(result.block_size, result.blocks, result.free_blocks);
    };
    EXPECT_EQ(sized(4096, INT32_MAX, 5), std::tuple(4096, INT32_MAX, 5));
    EXPECT_EQ(sized(4096, 1U << 31, 5), std::tuple(8192, 1 << 30, 2));
    EXPECT_EQ(sized(512, UINT64_MAX / 4, 9), std::tuple(1 << 20, INT32_MAX, 0));
    EXPECT_EQ(sized(UINT64_MAX, 7, UINT64_MAX), std::tuple(INT32_MAX, 7, INT32_MAX));
    EXPECT_EQ(sized(4096, UINT64_MAX, 5), std::tuple(0, 0, 0)) << "a size that is not known";
}

TEST(RunCommand, ReturnsTheBeginningOfTheOutputAndLeavesNothing) {
    const int lowest_free = dup(0);
    close(lowest_free);
    EXPECT_EQ(run_command("yes", 5), "y\ny\ny");
    EXPECT_EQ(run_command("printf abc", 0), "");
    EXPECT_EQ(run_command("printf a; printf b; printf c", 1024), "abc");
    EXPECT_EQ(run_command("kill -9 $$", 1024), "");
    // The shell holds no end of a pipe but its standard output.
    std::istringstream listed(run_command("ls /proc/$$/fd", 4096).value());
    for (int descriptor; listed >> descriptor;) {
        EXPECT_TRUE(descriptor <= 2 || fcntl(descriptor, F_GETFD) == 0) << descriptor;
    }
    EXPECT_EQ(dup(0), lowest_free);
    close(lowest_free);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST(RunCommand, InAProcessInAnOddState) {
    EXPECT_TRUE(holds_in_child([] {
        close(0);
        close(1);
        return run_command("echo x", 100) == "x\n";
    }));
    EXPECT_TRUE(holds_in_child([] {
        const rlimit none = {0, 0};
        setrlimit(RLIMIT_NOFILE, &none);
        return !run_command("echo x", 100) && errno == EMFILE;
    }));
    // A shell that gets SIGPIPE by default ends by it; this process keeps what it had.
    EXPECT_TRUE(holds_in_child([] {
        std::signal(SIGPIPE, SIG_IGN);
        sigset_t pipe_signal;
        sigemptyset(&pipe_signal);
        sigaddset(&pipe_signal, SIGPIPE);
        sigprocmask(SIG_BLOCK, &pipe_signal, nullptr);
        const bool ended = run_command("kill -PIPE $$; echo survived", 100) == "";
        return ended && std::signal(SIGPIPE, SIG_DFL) == SIG_IGN;
    }));
}

TEST(RunCommand, CancellationWaitsForTheEnd) {
    std::optional<std::string> output;
    std::thread([&] {
        pthread_cancel(pthread_self());
        output = run_command("echo x", 100);
        pthread_testcancel();
        output = "went on";
    }).join();
    EXPECT_EQ(output, "x\n");
}
