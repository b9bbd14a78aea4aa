#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "platform/platform.h"
#include "support/config.h"
#include "support/interrupted.h"
#include "support/open_file.h"
#include "support/owners.h"
#include "support/read_bytes.h"

namespace velora_com::qel::platform {

namespace {

using support::FileDescriptor;
using support::retry_interrupted;

struct Pipe {
    FileDescriptor read_end;
    FileDescriptor write_end;
};

Pipe open_pipe() {
    int ends[2];
#if defined(VLRCOMN_HAVE_PIPE2)
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return {};
    }
#else
    if (pipe(ends) != 0) {
        return {};
    }
    support::close_on_exec(ends[0]);
    support::close_on_exec(ends[1]);
#endif
    return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

// The child's half. Another thread may have held any lock at the moment of the fork, so that only
// async-signal-safe calls are possible here.
[[noreturn]] void become_shell(const char* command, int output) noexcept {
    struct sigaction standard = {};
    standard.sa_handler = SIG_DFL;
    sigaction(SIGPIPE, &standard, nullptr);
    sigset_t broken_pipe;
    sigemptyset(&broken_pipe);
    sigaddset(&broken_pipe, SIGPIPE);
    // NOLINTNEXTLINE(concurrency-mt-unsafe): the child has one thread
    sigprocmask(SIG_UNBLOCK, &broken_pipe, nullptr);
    if (output == STDOUT_FILENO) {
        fcntl(output, F_SETFD, 0);  // the process had closed its standard output
    } else {
        dup2(output, STDOUT_FILENO);
    }
    execl("/bin/sh", "sh", "-c", command, static_cast<char*>(nullptr));
    _exit(127);
}

}  // namespace

// popen in its plainest form: popen itself hands an ignored SIGPIPE down, and not every system's
// keeps the stream of one call out of the child of another.
std::optional<std::string> run_command(const char* command, size_t max_bytes) {
    std::string output;
    output.reserve(max_bytes);  // nothing may throw while the child is not waited for
    // The child has to be waited for however the call ends, so that cancelling gains nothing.
    const support::CancellationOff no_cancellation;
    Pipe pipe = open_pipe();
    if (!pipe.read_end) {
        return std::nullopt;
    }
    const pid_t child = fork();
    if (child < 0) {
        return std::nullopt;
    }
    if (child == 0) {
        become_shell(command, pipe.write_end.get());
    }
    pipe.write_end.reset();

    support::read_bytes(pipe.read_end.get(), output, max_bytes);
    pipe.read_end.reset();  // a command that still writes ends by SIGPIPE
    retry_interrupted([&] { return waitpid(child, nullptr, 0); });
    return output;
}

}  // namespace velora_com::qel::platform
