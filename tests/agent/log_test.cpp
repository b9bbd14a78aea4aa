// The log and the signal loop, with the C library's log replaced by a list of what it was told.
#include <syslog.h>

#include "support/test.h"
#include "vlrcomn/signal_handler.h"
#include "vlrcomn/system_log.h"

#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat"  // "%m" is the log's own

using namespace velora_com::qel;

static std::string logged;
static std::deque<std::pair<int, int>> waits;  // what sigwait gives next: its result, the signal

// Each call is whole, and another thread or a cancellation may come after it, as in the C library.
static void append(const std::string& words) {
    static std::mutex mutex;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        logged += words;
    }
    std::this_thread::yield();
    pthread_testcancel();
}

extern "C" {
void __wrap_openlog(const char* tag, int options, int facility) {
    errno = ENOTCONN;
    const bool usual = options == (LOG_CONS | LOG_NDELAY) && facility == LOG_USER;
    append(std::string(usual ? "open " : "open wrongly ") + tag + "; ");
}
void __wrap_vsyslog(int level, const char* format, va_list arguments) {
    char text[200];
    std::vsnprintf(text, sizeof text, format, arguments);
    append(std::to_string(level) + " " + text + "; ");
}
void __wrap___vsyslog_chk(int level, int, const char* format, va_list arguments) {
    __wrap_vsyslog(level, format, arguments);  // as an optimised build of glibc's headers calls it
}
void __wrap_closelog() {
    errno = ENOTCONN;
    append("close\n");
}
int __real_sigwait(const sigset_t* set, int* signal);
int __wrap_sigwait(const sigset_t* set, int* signal) {
    if (waits.empty()) {
        return __real_sigwait(set, signal);
    }
    const int result = waits.front().first;
    *signal = waits.front().second;
    waits.pop_front();
    errno = EINTR;
    return result;
}
}

TEST(SystemLog, OpensWritesAndClosesForEveryMessage) {
    EXPECT_EQ(LogInSystemLog(SyslogWarning, "tag", "%s-%d", "text", 5), 1);
    errno = ENOENT;
    EXPECT_EQ(LogInSystemLog(SyslogError, "%m %d", 1), 1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(LogInSystemLog(SyslogCritical, "c"), 1);
    EXPECT_EQ(LogInSystemLog(static_cast<SyslogPriority>(-7), "i"), 1);
    EXPECT_EQ(LogInSystemLog(SyslogError, nullptr), 1);
    EXPECT_EQ(std::exchange(logged, ""),
              "open tag; 4 text-5; close\n"
              "open [QEL]; 3 No such file or directory 1; close\n"
              "open [QEL]; 2 c; close\n"
              "open [QEL]; 6 i; close\n");
}

TEST(SystemLog, AMessageKeepsItsTag) {
    constexpr const char* names[] = {"a", "b", "c", "d"};
    together(4, [&](int number) {
        for (int i = 0; i < 200; ++i) {
            LogInSystemLog(SyslogInfo, names[number], "of %s", names[number]);
        }
        pthread_cancel(pthread_self());  // no message is left half written
        LogInSystemLog(SyslogInfo, names[number], "of %s", names[number]);
    });
    std::istringstream stream(std::exchange(logged, ""));
    std::multiset<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.insert(line);
    }
    for (const std::string name : names) {
        EXPECT_EQ(lines.count("open " + name + "; 6 of " + name + "; close"), 201u);
    }
    EXPECT_EQ(lines.size(), 804u);
}

TEST(SignalLoop, DispatchesUntilASignalWithoutCallback) {
    SignalHandler signals;
    EXPECT_EQ(signals.registerOnSignalCallback(SIGUSR1, nullptr), 0);
    EXPECT_EQ(signals.registerOnSignalCallback(SIGUSR2, [] { logged += "first; "; }), 0);
    EXPECT_EQ(signals.registerOnSignalCallback(SIGUSR2, [] { logged += "second; "; }), 0);
    for (const int signal : {SIGUSR1, SIGUSR2, SIGTERM}) {
        EXPECT_EQ(signals.addSignalToBlock(signal), 0);
        kill(getpid(), signal);
    }
    waits = {{EINVAL, 0}, {-1, 0}, {0, SIGHUP}, {0, -1}};
    signals();
    EXPECT_EQ(std::exchange(logged, ""),
              "open [QEL]; 6 Error (22) occurred waiting for signal ... ignoring.; close\n"
              "open [QEL]; 6 Error (4) occurred waiting for signal ... ignoring.; close\n"
              "open [QEL]; 6 QEL received unknown signal ... ignoring.; close\n"
              "open [QEL]; 6 QEL received invalid signal ... ignoring.; close\n"
              "first; open [QEL]; 6 Received signal to stop QEL.; close\n");

    const auto blocked = [](int signal) {
        sigset_t mask;
        pthread_sigmask(SIG_SETMASK, nullptr, &mask);
        return sigismember(&mask, signal) == 1;
    };
    EXPECT_EQ(signals.unblockSignal(SIGUSR1), 0);
    EXPECT_TRUE(!blocked(SIGUSR1) && blocked(SIGTERM));
    SignalHandler().addSignalToBlock(SIGHUP);
    EXPECT_TRUE(blocked(SIGHUP) && !blocked(SIGTERM)) << "the set and nothing else";
    signals.addSignalToBlock(SIGINT);
    EXPECT_TRUE(blocked(SIGUSR1) && blocked(SIGINT)) << "it stayed one of the set";
}
