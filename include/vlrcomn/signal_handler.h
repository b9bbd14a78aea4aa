/**
 * @file
 * @brief A loop that takes blocked signals one by one and calls what is registered for them.
 *
 * The main thread blocks the signals of interest before it starts other threads (they inherit the
 * mask), registers callbacks and runs the loop, itself or on a thread of its own. The loop ends at
 * the first signal that was blocked here and has no callback; the program then shuts down.
 *
 * @code
 * SignalHandler signals;
 * signals.addSignalToBlock(SIGHUP);
 * signals.addSignalToBlock(SIGTERM);
 * signals.registerOnSignalCallback(SIGHUP, reload);
 * signals();  // returns on SIGTERM
 * @endcode
 */
#ifndef VLRCOMN_SIGNAL_HANDLER_H
#define VLRCOMN_SIGNAL_HANDLER_H

#include <signal.h>

#include <map>

#include "vlrcomn/types.h"

namespace velora_com::qel {

/** @addtogroup utilities
 * @{ */

/**
 * Receives signals synchronously and dispatches them.
 *
 * Thread safety: nothing is locked. Block and register first, then run the loop; one loop for one
 * object. Callbacks run on the loop's thread, one at a time, as ordinary code: they may do what a
 * signal handler may not. What a callback throws leaves the loop.
 */
class VLRCOMN_API SignalHandler {
public:
    /** Blocks nothing and calls nothing yet. */
    SignalHandler();

    /**
     * Adds a signal to the set that the loop waits for, and makes that set, and nothing else, the
     * signal mask of the calling thread: signals that something else had blocked before are
     * unblocked.
     *
     * @param signal a signal number; one that does not exist is not added
     * @return 0
     */
    int addSignalToBlock(int signal);

    /**
     * Unblocks a signal in the calling thread only. The loop's set still holds it, so that the next
     * addSignalToBlock() blocks it again.
     *
     * @param signal a signal number; for one that does not exist nothing happens
     * @return 0
     */
    int unblockSignal(int signal);

    /**
     * Names what to call when a signal arrives.
     *
     * @param signal a signal number
     * @param callback the function to call; the first one registered for a signal stays. A null one
     *        makes the loop take the signal and do nothing.
     * @return 0, or -1 when memory ran out and nothing was registered
     */
    int registerOnSignalCallback(int signal, void (*callback)());

    /**
     * Waits for the signals of the set and calls their callbacks until one arrives that has none.
     *
     * Failed waits, and signals that are not in the set, are logged at velora_com::qel::SyslogInfo and
     * passed over; so is the end of the loop logged. The calling thread must have the signals blocked. Waiting
     * is a cancellation point: a cancelled thread leaves nothing behind.
     */
    void operator()();

private:
    sigset_t signals_;
    std::map<int, void (*)()> callbacks_;
};

/** @} */

}  // namespace velora_com::qel

#endif
