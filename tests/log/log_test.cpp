// The log and the signal loop, with the C library's log replaced by a list of what it was told.
#include <gmock/gmock.h>
#include <syslog.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>

#include "vlrcomn/signal_handler.h"
#include "vlrcomn/system_log.h"

static std::vector<std::string> logged;

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

class SignalLoop : public testing::Test {
protected:
    SignalLoop() { pthread_sigmask(SIG_SETMASK, nullptr, &former_); }
    ~SignalLoop() override { pthread_sigmask(SIG_SETMASK, &former_, nullptr); }

    SignalHandler signals_;
    sigset_t former_;
};

TEST_F(SignalLoop, DispatchesUntilASignalWithoutCallback) {
    static int calls;
    calls = 0;
    logged.clear();
    EXPECT_EQ(signals_.registerOnSignalCallback(SIGUSR1, nullptr), 0);
    EXPECT_EQ(signals_.registerOnSignalCallback(SIGUSR2, [] { calls += 1; }), 0);
    EXPECT_EQ(signals_.registerOnSignalCallback(SIGUSR2, [] { calls += 100; }), 0);
    for (const int signal : {SIGUSR1, SIGUSR2, SIGTERM}) {
        EXPECT_EQ(signals_.addSignalToBlock(signal), 0);
        kill(getpid(), signal);
    }
    signals_();
    EXPECT_EQ(calls, 1) << "the first that was registered";
    EXPECT_THAT(logged, ElementsAre("open [QEL]", "6 Received signal to stop QEL.", "close"));
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
