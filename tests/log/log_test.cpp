// The log and the signal loop, with the C library's log replaced by a list of what it was told.
#include <gmock/gmock.h>
#include <syslog.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <deque>

#include "vlrcomn/signal_handler.h"
#include "vlrcomn/system_log.h"

static std::vector<std::string> logged;

// Answers of sigwait, before the real one is asked.
struct Wait {
    int result, error, signal;
};
static std::deque<Wait> waits;

extern "C" {
void __wrap_openlog(const char* tag, int options, int facility) {
    errno = ENOTCONN;
    const bool usual = options == (LOG_CONS | LOG_NDELAY) && facility == LOG_USER;
    logged.push_back(std::string(usual ? "open " : "open wrongly ") + tag);
}
void __wrap_vsyslog(int level, const char* format, va_list arguments)
    __attribute__((format(printf, 2, 0)));
void __wrap_vsyslog(int level, const char* format, va_list arguments) {
    char text[200];
    std::vsnprintf(text, sizeof text, format, arguments);
    logged.push_back(std::to_string(level) + " " + text);
}
void __wrap_closelog() {
    errno = ENOTCONN;
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
    EXPECT_EQ(LogInSystemLog(SyslogWarning, "tag", "%s-%d", "text", 5), 1);
    errno = ENOENT;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat"  // "%m" is the log's own
    EXPECT_EQ(LogInSystemLog(SyslogError, "%m %d", 1), 1);
#pragma GCC diagnostic pop
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(LogInSystemLog(static_cast<SyslogPriority>(-7), "i"), 1);
    EXPECT_EQ(LogInSystemLog(SyslogError, nullptr), 1);
    EXPECT_THAT(logged, ElementsAre("open tag", "4 text-5", "close",                         //
                                    "open [QEL]", "3 No such file or directory 1", "close",  //
                                    "open [QEL]", "6 i", "close"));
}

int usr2_calls = 0;
void count_usr2() {
    ++usr2_calls;
}
void wrong_callback() {
    usr2_calls += 100;
}

class SignalLoop : public testing::Test {
protected:
    SignalLoop() { pthread_sigmask(SIG_SETMASK, nullptr, &former_); }
    ~SignalLoop() override { pthread_sigmask(SIG_SETMASK, &former_, nullptr); }

    SignalHandler signals_;
    sigset_t former_;
};

TEST_F(SignalLoop, DispatchesUntilASignalWithoutCallback) {
    logged.clear();
    EXPECT_EQ(signals_.registerOnSignalCallback(SIGUSR2, count_usr2), 0);
    EXPECT_EQ(signals_.registerOnSignalCallback(SIGUSR2, wrong_callback), 0);
    EXPECT_EQ(signals_.registerOnSignalCallback(SIGUSR1, nullptr), 0);
    // Taken when the answers below are used up, the lowest number first.
    for (const int signal : {SIGUSR1, SIGUSR2, SIGTERM}) {
        EXPECT_EQ(signals_.addSignalToBlock(signal), 0);
        kill(getpid(), signal);
    }
    waits = {{-1, EINTR, 0}, {EINVAL, 0, 0}, {0, 0, SIGHUP}, {0, 0, 12345}};
    signals_();
    EXPECT_EQ(usr2_calls, 1);
    std::string messages;
    for (size_t i = 1; i < logged.size(); i += 3) {
        messages += logged[i] + '\n';
    }
    EXPECT_EQ(messages,
              "6 Error (4) occurred waiting for signal ... ignoring.\n"
              "6 Error (22) occurred waiting for signal ... ignoring.\n"
              "6 QEL received unknown signal ... ignoring.\n"
              "6 QEL received invalid signal ... ignoring.\n"
              "6 Received signal to stop QEL.\n");
}

TEST_F(SignalLoop, SetsTheWholeMask) {
    const auto blocks = [](int signal) {
        sigset_t mask;
        pthread_sigmask(SIG_SETMASK, nullptr, &mask);
        return sigismember(&mask, signal) == 1;
    };
    sigset_t before;
    sigemptyset(&before);
    sigaddset(&before, SIGHUP);
    pthread_sigmask(SIG_BLOCK, &before, nullptr);
    signals_.addSignalToBlock(SIGINT);
    EXPECT_TRUE(blocks(SIGINT) && !blocks(SIGHUP));
    EXPECT_EQ(signals_.unblockSignal(SIGINT), 0);
    EXPECT_FALSE(blocks(SIGINT));
    signals_.addSignalToBlock(SIGTERM);
    EXPECT_TRUE(blocks(SIGTERM) && blocks(SIGINT)) << "it stays one of the set";
}

}  // namespace
}  // namespace velora_com::qel
