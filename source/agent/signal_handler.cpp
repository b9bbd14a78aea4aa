#include "vlrcomn/signal_handler.h"

#include <cerrno>

#include "support/boundary.h"
#include "vlrcomn/system_log.h"

namespace velora_com::qel {

SignalHandler::SignalHandler() {
    sigemptyset(&signals_);
}

int SignalHandler::addSignalToBlock(int signal) {
    sigaddset(&signals_, signal);
    pthread_sigmask(SIG_SETMASK, &signals_, nullptr);
    return 0;
}

int SignalHandler::unblockSignal(int signal) {
    sigset_t one;
    sigemptyset(&one);
    sigaddset(&one, signal);
    pthread_sigmask(SIG_UNBLOCK, &one, nullptr);
    return 0;
}

int SignalHandler::registerOnSignalCallback(int signal, void (*callback)()) {
    return support::or_failure(-1, [&] {
        callbacks_.emplace(signal, callback);
        return 0;
    });
}

void SignalHandler::operator()() {
    for (;;) {
        int received = 0;
        if (const int result = sigwait(&signals_, &received); result != 0) {
            LogInSystemLog(SyslogInfo, "Error (%d) occurred waiting for signal ... ignoring.",
                           result == -1 ? errno : result);
            continue;
        }
        const int member = sigismember(&signals_, received);
        if (member != 1) {
            LogInSystemLog(SyslogInfo, member == 0 ? "QEL received unknown signal ... ignoring."
                                                   : "QEL received invalid signal ... ignoring.");
            continue;
        }
        const auto callback = callbacks_.find(received);
        if (callback == callbacks_.end()) {
            break;
        }
        if (callback->second != nullptr) {
            callback->second();
        }
    }
    LogInSystemLog(SyslogInfo, "Received signal to stop QEL.");
}

}  // namespace velora_com::qel
