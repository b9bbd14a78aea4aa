#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <sstream>
#include <thread>

#include "platform/platform.h"
#include "support/owners.h"

namespace velora_com::qel::platform {
namespace {

using testing::Optional;

TEST(RunCommand, ReturnsTheBeginningOfTheOutput) {
    const std::tuple<const char*, size_t, std::string> cases[] = {
        {"printf abc", 3, "abc"}, {"printf abc", 2, "ab"},
        {"printf abc", 0, ""},    {"printf a; printf b; printf c", 1024, "abc"},
        {"kill -9 $$", 1024, ""},
    };
    for (const auto& [command, max_bytes, output] : cases) {
        EXPECT_THAT(run_command(command, max_bytes), Optional(output)) << command;
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
    const support::FileDescriptor before(dup(0));
    EXPECT_THAT(run_command("yes", 5), Optional(std::string("y\ny\ny")));
    const support::FileDescriptor after(dup(0));
    EXPECT_EQ(after.get(), before.get() + 1);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

// The shell holds no end of a pipe but its standard output.
TEST(RunCommand, TheChildInheritsNoDescriptorOfTheLibrary) {
    std::istringstream listed(run_command("ls /proc/$$/fd", 4096).value());
    for (int descriptor; listed >> descriptor;) {
        EXPECT_TRUE(descriptor <= 2 || fcntl(descriptor, F_GETFD) == 0) << descriptor;
    }
}

// In a child process each.
TEST(RunCommand, WorksWithoutStandardStreamsButNotWithoutDescriptors) {
    const auto without_streams = [] {
        close(0);
        close(1);
        _exit(run_command("echo x", 100) == "x\n" ? 0 : 1);
    };
    const auto without_descriptors = [] {
        const rlimit none = {0, 0};
        setrlimit(RLIMIT_NOFILE, &none);
        _exit(!run_command("echo x", 100) && errno == EMFILE ? 0 : 1);
    };
    EXPECT_EXIT(without_streams(), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(without_descriptors(), testing::ExitedWithCode(0), "");
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
