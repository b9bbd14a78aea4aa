// daemon: works until SIGTERM or SIGINT and reads its settings anew on SIGHUP.
//
// Shows: the signal loop, a worker beside it, the system log. It stays in the foreground, where a
// supervisor (launchd, systemd) wants it.
#include <vlrcomn/handle.h>
#include <vlrcomn/signal_handler.h>
#include <vlrcomn/sync.h>
#include <vlrcomn/system_log.h>
#include <vlrcomn/thread.h>

#include <cstdio>

using namespace velora_com::qel;

// Runs on the loop's thread as ordinary code: it may lock, allocate and print.
static void reload() {
    std::puts("reloaded");
}

// A round each second until the event is set. Only waits of whole seconds never fail in between.
static uint32_t work(void* parameter) {
    const auto stop = static_cast<oruHandle>(parameter);
    while (oruWaitForSingleObject(stop, 0) == ORU_WAIT_TIMEOUT) {
        // A round of work belongs here.
        oruWaitForSingleObject(stop, 1000);
    }
    return 0;
}

int main() {
    if (setvbuf(stdout, nullptr, _IOLBF, 0) != 0) {  // each line at once, also into a pipe
        return 1;
    }

    // Before any thread starts: threads inherit the mask, so that only the loop takes the signals.
    SignalHandler signals;
    for (const int signal : {SIGHUP, SIGTERM, SIGINT}) {
        signals.addSignalToBlock(signal);
    }
    const bool registered = signals.registerOnSignalCallback(SIGHUP, reload) == 0;

    oruHandle stop = oruCreateEvent(nullptr, 1, 0, nullptr);
    oruHandle worker = stop ? oruCreateThread(nullptr, 0, work, stop, 0, nullptr) : nullptr;
    if (!registered || worker == nullptr) {
        LogInSystemLog(SyslogError, "cannot start");
        return 1;
    }

    std::puts("running");
    signals();  // returns at the first signal that has no callback

    oruSetEvent(stop);
    while (oruWaitForSingleObject(worker, 0) == ORU_WAIT_TIMEOUT) {  // has it ended?
        oruWaitForSingleObject(worker, ORU_INFINITE);                // may wake without cause
    }
    oruCloseHandle(worker);
    oruCloseHandle(stop);  // after the worker's end, which uses it
    std::puts("stopped");
}
