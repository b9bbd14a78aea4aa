/**
 * @file
 * @brief Thread registry, spin word, and the shared/exclusive lock ("SE lock").
 *
 * An SE lock is held either shared by any number of threads, or exclusively by one thread, which may take it again in
 * any mode (recursion) and must release it as often as it took it. A thread that has to wait queues and sleeps on its
 * own event; whoever lets it in first makes it the holder and then sets that event, so a lock never looks free while
 * it is on its way to a waiter. On machines with several processors it looks before: for a moment whether
 * the lock falls free, and only then queues; and for some microseconds whether it is let in, and only then sleeps.
 *
 * Attaching and holding with owners of C++ (examples/table.cpp):
 * @snippet table.cpp hold
 *
 * | held       | Exclusive, Notify | SharedWaitForExclusive         | SharedStarveExclusive |
 * |------------|-------------------|--------------------------------|-----------------------|
 * | free       | granted           | granted                        | granted               |
 * | shared     | waits             | granted if no writer is queued | granted               |
 * | by me      | one level deeper  | one level deeper               | one level deeper      |
 * | by another | waits             | waits                          | waits                 |
 *
 * ("Waits" of the notify form means: a callback is registered instead.)
 *
 * **Order and starvation.** When the lock falls free the *most recently* queued exclusive waiter gets it, last come
 * first served; only without one do all shared waiters get it together; only without those are notifications called.
 * So later writers can starve an earlier one, a stream of writers starves readers, and a stream of
 * SharedStarveExclusive holders starves writers. SharedWaitForExclusive lets queued writers pass first, and a
 * downgrade lets every waiting reader in, writers queued or not.
 *
 * **Rules for callers.**
 * - The process calls orSO_ProcessAttach() once; each thread calls orSO_ThreadAttach() before it
 * uses an SE lock and orSO_ThreadDetach() before it ends. Detaching while holding a lock
 * exclusively hands the ownership to whichever thread's event is later made at the same address.
 * - **The end of any thread started by oruBeginThread() frees every thread-local index of the
 * process, the registry's too.** All threads are unattached from then on, whatever the index comes to
 * hold for somebody else: orSO_ThreadDetach() and orSO_ProcessDetach() give 0 and touch nothing. Call
 * orSO_ProcessAttach() again after such an end, then orSO_ThreadAttach() in each thread; the events
 * made before are left behind. Better: do not let such threads end while SE locks are in use. Threads
 * that already wait are still woken, since the lock keeps their events.
 * - Never ends: asking for exclusive access while holding shared access (two threads that both try to upgrade among
 * them). Can end never: a second shared hold by SharedWaitForExclusive while a writer is queued behind the first.
 * - A release by a thread that is no holder, or one release too many, breaks exclusion; neither is detected.
 * - After `fork` in a process with threads the child must not use a lock, only `exec`. In a process
 *   without other threads the child may go on, with its own process id in the records.
 *
 * **Memory order.** What a holder did before it released is visible to every later holder.
 *
 * **Cancellation.** A thread that is cancelled (deferred type) while it waits leaves the queue, or releases the lock
 * if it had just been granted; it then holds what it held before the call. Readers that only a cancelled writer kept
 * waiting are let in. A sleep is the only cancellation point here. Cancellation of the asynchronous type is not
 * supported. On Mac OS X 10.4 a thread that sleeps for a lock is not cancelled before it has been let in, and one
 * with a pending cancellation may end where it asks for a spin word that stays taken, without it, or at the end of a
 * release that met such a word, done with it.
 *
 * Functions may be called from any thread at any time unless they say otherwise, but not from a
 * signal handler. A null lock makes every lock function return 0 or do nothing. Flags are true when exactly 1.
 */
#ifndef VLRCOMN_SE_LOCK_H
#define VLRCOMN_SE_LOCK_H

#include <stdint.h>

#include "vlrcomn/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @addtogroup lists
 * @{ */

/** @name Thread registry
 *
 * A thread's identity is its own event (a handle of the portability layer) as a pointer-wide
 * number, kept in one thread-local index of the process.
 * @{ */

/** The identity of a thread that is not attached; in a lock, of no owner. All-ones, pointer-wide. */
#define ORSO_NO_THREAD UINTPTR_MAX

/**
 * Sets the registry up for the process. Call it once, before any thread attaches, and again after the end of a
 * layer-started thread has freed the index. It must not race with other calls of this file.
 *
 * A second call without that need takes a new index, and every thread is unattached again; the old
 * index stays allocated.
 *
 * @return the registry's thread-local index, 0 to 511; -1 when none is free or memory is short
 */
VLRCOMN_API int32_t orSO_ProcessAttach(void);

/**
 * Gives the registry's index back. Threads should have detached: their events are not closed here.
 *
 * @return what oruTlsFree() says: 1, or 0 when the registry was not set up or its index has been freed
 */
VLRCOMN_API int orSO_ProcessDetach(void);

/**
 * Registers the calling thread: makes its event and keeps it as the thread's value.
 *
 * The two kinds of success differ: **the first call returns 1, a later one returns the identity**,
 * which orSO_GetThread() returns too.
 *
 * @return 1 when the thread was registered now; its identity when it was before; 0 when the event
 * could not be made or stored (registry not set up, out of memory), with nothing left behind
 */
VLRCOMN_API uintptr_t orSO_ThreadAttach(void);

/**
 * Ends the registration of the calling thread and closes its event. The thread must not hold or
 * wait for an SE lock. It may attach again later. A thread that is not attached has nothing to
 * close, which is safe also after the registry's index has been freed.
 *
 * @return 1; 0 when the registry was not set up or its index has been freed
 */
VLRCOMN_API int orSO_ThreadDetach(void);

/**
 * Marks the calling thread unregistered without closing its event, which is left behind: for a
 * thread whose event somebody else closes.
 *
 * @return 1; 0 when the registry was not set up or its index has been freed
 */
VLRCOMN_API int orSO_ThreadAttachX(void);

/** Does nothing. */
VLRCOMN_API void orSO_ThreadDetachX(void);

/** Tells who calls. @return the calling thread's identity; #ORSO_NO_THREAD when it is not attached */
VLRCOMN_API uintptr_t orSO_GetThread(void);

/**
 * Tells what the registry holds.
 *
 * @return the calling thread's value as stored, for debugging: its identity, #ORSO_NO_THREAD after
 * a detach, 0 when never set, or when the registry is not set up or its index has been freed
 */
VLRCOMN_API uintptr_t orSO_DbgGetThread(void);
/** @} */

/** @name Spin word
 *
 * A 32-bit word, 0 when free and 1 when held, for sections of a few instructions. It has no owner
 * and is not recursive. It is taken by one atomic exchange and given back by one atomic store,
 * without the mutex of oruInterlockedExchange(); both may be used for one word.
 * @{ */

/**
 * Takes a spin word, trying until it is free. `errno` is kept.
 *
 * The first 4000 tries follow each other at once, the first of them with a moment's pause between
 * them so that threads do not wrestle for the word; then come 100 tries each with a sleep of 0, 10
 * ms, 100 ms and 1 s before the next one; **from the 4401st on it tries without sleeping and burns
 * a processor** until the word is free. A try that finds the word held only looks at it. A thread is
 * not cancelled in here (on Mac OS X 10.4 it may end in a sleep, without the word).
 *
 * @param spin the word; null returns at once
 * @return 0, always
 */
VLRCOMN_API int32_t orSL_Get(volatile int32_t* spin);

/** Gives a spin word back. @param spin the word, held by the caller; null is ignored */
VLRCOMN_API void orSL_Release(volatile int32_t* spin);
/** @} */

/** @name Shared/exclusive lock
 * @{ */

/** An SE lock. Its record is private to the library. */
typedef struct orSELock orSELock;

#define ORSO_NOTIFY_FREE UINT32_C(0x1100)      /**< Event: the lock has fallen free. */
#define ORSO_NOTIFY_WITHDRAWN UINT32_C(0x1102) /**< Event: the callback is withdrawn. */

/**
 * A notification callback.
 *
 * It runs **with the lock's spin word held**, on the thread that releases the lock or withdraws the notification. It
 * must return soon and normally: no waiting, no call on the same lock (it would spin for ever), no exception, no end
 * of the thread. Cancellation is disabled while it runs. Usual duty: set an event and let its waiter try the lock.
 *
 * @param first,second the arguments given at registration
 * @param event #ORSO_NOTIFY_FREE or #ORSO_NOTIFY_WITHDRAWN
 * @param reserved 0
 * @return 0 when the notification has served its purpose; it is then removed and freed. Any other
 * value keeps it registered.
 */
typedef int (*orSO_NotifyCallback)(uintptr_t first, uint32_t event, uintptr_t second,
                                   uint32_t reserved);

/**
 * Makes a free lock.
 *
 * @param lock where the lock is stored: null first, the lock on success
 * @return 0; #ORU_FAILURE when out of memory or when `lock` is null
 */
VLRCOMN_API uint32_t orSO_SELockCreate(orSELock** lock);

/**
 * Frees a lock, and the notifications still registered with it (their callbacks are not called).
 * That nobody holds the lock or waits for it is the caller's duty and is not checked.
 *
 * @param lock the lock; null is ignored
 */
VLRCOMN_API void orSO_Release(orSELock* lock);

/**
 * Takes a lock: orSO_SELockExclusive() or orSO_SELockSharedWaitForExclusive().
 *
 * @param lock the lock
 * @param exclusive 1 for exclusive access, any other value for shared
 * @param wait 1 to wait, any other value to give up at once
 * @return 1 granted, 0 not
 */
VLRCOMN_API int orSO_SELock(orSELock* lock, int exclusive, int wait);

/**
 * Takes a lock exclusively: at once when it is free or the calling thread owns it.
 *
 * A thread that is not attached can take a free lock but never owns it: its hold counts as a shared
 * one, excludes nobody who asks for shared access and does not nest. It never waits.
 *
 * @param lock the lock
 * @param wait 1 to wait without limit, any other value to give up at once
 * @return 1 granted; 0 not granted, which with `wait` means that the thread is not attached or `lock` null
 */
VLRCOMN_API int orSO_SELockExclusive(orSELock* lock, int wait);

/**
 * Takes a lock shared, at once unless another thread owns it exclusively: queued writers are passed
 * by and may starve.
 *
 * @param lock the lock
 * @param wait 1 to wait without limit, any other value to give up at once
 * @return 1 granted, 0 not; see orSO_SELockExclusive() for threads that are not attached
 */
VLRCOMN_API int orSO_SELockSharedStarveExclusive(orSELock* lock, int wait);

/**
 * Takes a lock shared, at once when it is free, or the calling thread owns it, or it is held shared
 * and no writer is queued.
 *
 * @param lock the lock
 * @param wait 1 to wait without limit, any other value to give up at once
 * @return 1 granted, 0 not; see orSO_SELockExclusive() for threads that are not attached
 */
VLRCOMN_API int orSO_SELockSharedWaitForExclusive(orSELock* lock, int wait);

/**
 * Turns the caller's exclusive access into shared access and lets every waiting reader in. **All** holds of the
 * caller become shared ones: each still needs its release. That the caller owns the lock is not checked.
 *
 * @param lock the lock
 */
VLRCOMN_API void orSO_SELockExclusiveToShared(orSELock* lock);

/**
 * Gives one hold back. With the last one the lock goes on to the most recently queued writer, else
 * to all waiting readers, else the notifications are called, the latest first, up to and including
 * the first whose callback returns 0. The others are called again the next time.
 *
 * @param lock the lock, held by the caller
 */
VLRCOMN_API void orSO_SELockRelease(orSELock* lock);

/**
 * Takes a lock exclusively if that goes at once, and otherwise registers a callback to be called
 * when the lock falls free with nobody waiting. The callback does not get the lock, only the news.
 * The same registration may be made more than once and is then there more than once.
 *
 * **Ends the process when there is no memory for the registration**, by `abort`.
 *
 * @param lock the lock
 * @param callback called as described at its type; must not be null
 * @param first,second passed to the callback
 * @return 1 granted, with nothing registered; 0 registered (or `lock` or `callback` is null: nothing registered)
 */
VLRCOMN_API int orSO_SELockExclusiveNotify(orSELock* lock, orSO_NotifyCallback callback,
                                           uintptr_t first, uintptr_t second);

/**
 * Withdraws a registration: calls the callback with #ORSO_NOTIFY_WITHDRAWN for each one that has the same callback
 * and arguments, latest first, until one returns 0; that one is removed and freed.
 *
 * @param lock the lock
 * @param callback,first,second as registered
 * @return 1 withdrawn; 0 when there is none, or every callback refused
 */
VLRCOMN_API int orSO_SELockExclusiveUnnotify(orSELock* lock, orSO_NotifyCallback callback,
                                             uintptr_t first, uintptr_t second);
/** @} */

/** @} */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
