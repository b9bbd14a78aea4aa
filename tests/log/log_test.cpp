// The log and the signal loop, with the C library's log replaced by a list of what it was told. The
// loop changes the signal mask, so it runs in child processes.
#include <gmock/gmock.h>
#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <deque>
#include <string>
#include <vector>

#include "vlrcomn/signal_handler.h"
#include "vlrcomn/system_log.h"

namespace {

std::vector<std::string> logged;

// Answers for sigwait, before the real one is asked.
struct Wait {
    int result;
    int error;
    int signal;
};
std::deque<Wait> waits;

}  // namespace

extern "C" {
void __wrap_openlog(const char* tag, int options, int facility) {
    errno = ENOTCONN;
    logged.push_back(
        std::string("open ") + (tag == nullptr ? "-" : tag) +
        (options == (LOG_CONS | LOG_NDELAY) && facility == LOG_USER ? "" : " wrongly"));
}
void __wrap_vsyslog(int level, const char* format, va_list arguments)
    __attribute__((format(printf, 2, 0)));
void __wrap_vsyslog(int level, const char* format, va_list arguments) {
    char text[200];
    std::vsnprintf(text, sizeof text, format, arguments);
    logged.push_back(std::to_string(level) + " " + text);
}
void __wrap_closelog() {
    logged.emplace_back("close");
}

int __real_sigwait(const sigset_t* set, int* signal);
int __wrap_sigwait(const sigset_t* set, int* signal) {
    if (waits.empty()) {
        return __real_sigwait(set, signal);
    }
    const Wait wait = waits.front();
    waits.pop_front();
    EXPECT_EQ(*signal, 0);
    errno = wait.error;
    *signal = wait.signal;
    return wait.result;
}
}

namespace velora_com::qel {
namespace {

using testing::ElementsAre;

TEST(SystemLog, OpensWritesAndClosesForEveryMessage) {
    logged.clear();
    EXPECT_EQ(LogInSystemLog(SyslogCritical, "plain"), 1);
    EXPECT_EQ(LogInSystemLog(SyslogWarning, "tag", "%s-%d", "text", 5), 1);
    errno = ENOENT;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat"  // "%m" is the log's own
    EXPECT_EQ(LogInSystemLog(SyslogError, "%m %d", 1), 1);
#pragma GCC diagnostic pop
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(LogInSystemLog(static_cast<SyslogPriority>(-7), "i"), 1);
    EXPECT_EQ(LogInSystemLog(SyslogError, nullptr), 1);
    EXPECT_EQ(LogInSystemLog(SyslogError, "tag", nullptr), 1);
    EXPECT_THAT(logged, ElementsAre("open [QEL]", "2 plain", "close",                        //
                                    "open tag", "4 text-5", "close",                         //
                                    "open [QEL]", "3 No such file or directory 1", "close",  //
                                    "open [QEL]", "6 i", "close"));
}

// Runs `body` in a child process, which must end with its checks passed.
template <typename Body>
void in_child(Body body) {
    EXPECT_EXIT(
        {
            logged.clear();
            body();
            std::fflush(nullptr);
            _exit(testing::Test::HasFailure() ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
}

int usr1_calls;
void count_usr1() {
    ++usr1_calls;
}
void wrong_callback() {
    usr1_calls += 100;
}

TEST(SignalLoop, DispatchesUntilASignalWithoutCallback) {
    in_child([] {
        SignalHandler signals;
        for (const int signal : {SIGUSR1, SIGUSR2, SIGTERM}) {
            EXPECT_EQ(signals.addSignalToBlock(signal), 0);
            kill(getpid(), signal);  // taken later, the lowest number first
        }
        EXPECT_EQ(signals.registerOnSignalCallback(SIGUSR1, count_usr1), 0);
        EXPECT_EQ(signals.registerOnSignalCallback(SIGUSR1, wrong_callback), 0);
        EXPECT_EQ(signals.registerOnSignalCallback(SIGUSR2, nullptr), 0);
        signals();
        EXPECT_EQ(usr1_calls, 1);
        EXPECT_THAT(logged, ElementsAre("open [QEL]", "6 Received signal to stop QEL.", "close"));
    });
}

TEST(SignalLoop, LogsWhatItPassesOver) {
    in_child([] {
        SignalHandler signals;
        signals.addSignalToBlock(SIGTERM);
        waits = {{-1, EINTR, 0}, {EINVAL, 0, 0}, {0, 0, SIGHUP}, {0, 0, 12345}, {0, 0, SIGTERM}};
        signals();
        for (const char* const word : {"open [QEL]", "close"}) {
            logged.erase(std::remove(logged.begin(), logged.end(), word), logged.end());
        }
        EXPECT_THAT(logged, ElementsAre("6 Error (4) occurred waiting for signal ... ignoring.",
                                        "6 Error (22) occurred waiting for signal ... ignoring.",
                                        "6 QEL received unknown signal ... ignoring.",
                                        "6 QEL received invalid signal ... ignoring.",
                                        "6 Received signal to stop QEL."));
    });
}

TEST(SignalLoop, SetsTheWholeMask) {
    in_child([] {
        const auto blocked = [] {
            sigset_t mask;
            pthread_sigmask(SIG_SETMASK, nullptr, &mask);
            std::vector<int> list;
            for (int signal = 1; signal < 32; ++signal) {
                if (sigismember(&mask, signal) == 1) {
                    list.push_back(signal);
                }
            }
            return list;
        };
        sigset_t before;
        sigemptyset(&before);
        sigaddset(&before, SIGHUP);
        pthread_sigmask(SIG_BLOCK, &before, nullptr);
        SignalHandler signals;
        signals.addSignalToBlock(SIGINT);
        EXPECT_THAT(blocked(), ElementsAre(SIGINT));
        signals.addSignalToBlock(SIGTERM);
        EXPECT_EQ(signals.addSignalToBlock(12345), 0);
        EXPECT_THAT(blocked(), ElementsAre(SIGINT, SIGTERM));
        EXPECT_EQ(signals.unblockSignal(SIGINT), 0);
        EXPECT_THAT(blocked(), ElementsAre(SIGTERM));
        signals.addSignalToBlock(SIGQUIT);
        EXPECT_THAT(blocked(), ElementsAre(SIGINT, SIGQUIT, SIGTERM));
    });
}

TEST(SignalLoop, CanBeCancelled) {
    in_child([] {
        SignalHandler signals;
        signals.addSignalToBlock(SIGTERM);
        pthread_t loop;
        const auto run = [](void* handler) -> void* {
            (*static_cast<SignalHandler*>(handler))();
            return nullptr;
        };
        ASSERT_EQ(pthread_create(&loop, nullptr, run, &signals), 0);
        pthread_cancel(loop);
        void* result = nullptr;
        pthread_join(loop, &result);
        EXPECT_EQ(result, PTHREAD_CANCELED);
        EXPECT_THAT(logged, testing::IsEmpty());
    });
}

}  // namespace
}  // namespace velora_com::qel
