#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <sstream>
#include <thread>

#include "platform/platform.h"

namespace velora_com::qel::platform {
namespace {

using testing::Optional;

TEST(RunCommand, ReturnsTheBeginningOfTheOutput) {
    const struct {
        const char* command;
        size_t max_bytes;
        const char* output;
    } cases[] = {{"printf abc", 3, "abc"},
                 {"printf abc", 2, "ab"},
                 {"printf abc", 0, ""},
                 {"yes", 5, "y\ny\ny"},
                 {"printf a; printf b; printf c", 1024, "abc"},
                 {"kill -9 $$", 1024, ""}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.command);
        EXPECT_THAT(run_command(c.command, c.max_bytes), Optional(std::string(c.output)));
    }
}

// A shell that gets SIGPIPE by default ends by it.
TEST(RunCommand, TheChildStartsWithTheDefaultOfSigpipe) {
    constexpr const char* command = "kill -PIPE $$; echo survived";
    struct sigaction before;
    struct sigaction ignored = {};
    ignored.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &ignored, &before);
    sigset_t pipe_signal;
    sigemptyset(&pipe_signal);
    sigaddset(&pipe_signal, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe_signal, nullptr);
    EXPECT_THAT(run_command(command, 100), Optional(std::string()));
    pthread_sigmask(SIG_UNBLOCK, &pipe_signal, nullptr);
    sigaction(SIGPIPE, &before, &ignored);
    EXPECT_EQ(ignored.sa_handler, SIG_IGN);  // this process keeps what it had
}

TEST(RunCommand, LeavesNoDescriptorAndNoChild) {
    const int free_before = dup(0);
    close(free_before);
    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(run_command("yes", 5));
    }
    const int free_after = dup(0);
    close(free_after);
    EXPECT_EQ(free_after, free_before);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

// The shell of one call holds no end of its own or another's pipe but its standard output.
TEST(RunCommand, TheChildInheritsNoDescriptorOfTheLibrary) {
    std::thread other([] { run_command("sleep 0.2", 10); });
    const auto listed = run_command("ls /proc/$$/fd", 4096);
    other.join();
    ASSERT_TRUE(listed);
    std::istringstream descriptors(*listed);
    for (int descriptor; descriptors >> descriptor;) {
        EXPECT_TRUE(descriptor <= 2 || fcntl(descriptor, F_GETFD) == 0) << descriptor;
    }
}

TEST(RunCommand, WorksWithoutStandardStreams) {
    EXPECT_EXIT(
        {
            for (const int stream : {0, 1}) {
                close(stream);
            }
            const auto output = run_command("echo x", 100);
            _exit(output == std::string("x\n") ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(RunCommand, NothingWithoutDescriptors) {
    rlimit before;
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none = {0, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    const auto output = run_command("echo x", 100);
    const int error = errno;
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_FALSE(output);
    EXPECT_EQ(error, EMFILE);
}

TEST(RunCommand, CancellationWaitsForTheEnd) {
    std::optional<std::string> output;
    bool went_on = false;
    std::thread thread([&] {
        pthread_cancel(pthread_self());
        output = run_command("echo x", 100);
        pthread_testcancel();
        went_on = true;
    });
    thread.join();
    EXPECT_THAT(output, Optional(std::string("x\n")));
    EXPECT_FALSE(went_on);
}

}  // namespace
}  // namespace velora_com::qel::platform
