/**
 * @file
 * @brief Events, mutexes, interlocked operations and waits.
 *
 * Win32-style synchronisation over POSIX threads. Flags are compared against exactly 1: any other
 * value, 2 included, is false. True is 1 and false is 0. Time-outs are in milliseconds;
 * #ORU_INFINITE means no limit.
 *
 * Errors: the result alone tells of a failure. Refused arguments leave `errno` as it was, the system's
 * thread calls do not set it, and for exhausted memory it depends on the C library.
 *
 * A thread's work under a mutex, and an event that says "look" (examples/worker.c):
 * @snippet worker.c tell
 *
 * | object | created                           | becomes signalled by    | becomes unsignalled by |
 * |--------|-----------------------------------|-------------------------|------------------------|
 * | event  | reset, or set if asked for        | oruSetEvent()           | oruResetEvent() only   |
 * | mutex  | free, or owned by its creator     | oruReleaseMutex()       | a successful wait      |
 * | thread | running                           | its end                 | never                  |
 *
 * Thread safety: every function may be called from any thread at any time for any live handle. A
 * handle must not be closed while another thread still uses it.
 *
 * Cancellation: the waits are cancellation points while they sleep, and nothing stays locked when a
 * waiting thread is cancelled. Do not call them from a C++ function that is `noexcept` in threads
 * that may be cancelled. Only deferred cancellation is supported: one of the asynchronous type may leave
 * a lock held. On Mac OS X 10.4 a thread that sleeps here is not cancelled but sleeps on until it is
 * signalled: end such a thread by an event of its own.
 *
 * After `fork` in a process with several threads only `exec` is safe in the child. No function here
 * may be called from a signal handler.
 *
 * Usable from C99 and from C++17.
 */
#ifndef VLRCOMN_SYNC_H
#define VLRCOMN_SYNC_H

#include "vlrcomn/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @addtogroup portability
 * @{ */

/**
 * Makes an event. Only unnamed manual-reset events exist.
 *
 * @param attributes ignored.
 * @param manual_reset must be 1.
 * @param initial_state 1 makes the event set, anything else reset.
 * @param name must be null or empty.
 * @return the event, which the caller owns and closes with oruCloseHandle(), or null: `manual_reset` or
 * `name` is refused, memory is exhausted, a lock cannot be made, or the event cannot be set.
 */
VLRCOMN_API oruHandle oruCreateEvent(void* attributes, int manual_reset, int initial_state,
                                     const char* name);

/**
 * Sets an event and wakes everyone who waits for it; it stays set until oruResetEvent().
 *
 * @param event the event.
 * @return 1, or 0: null, #ORU_INVALID_HANDLE or a handle that is no event, or a failing lock.
 */
VLRCOMN_API int oruSetEvent(oruHandle event);

/**
 * Resets an event. A thread already woken by an earlier set still returns #ORU_WAIT_SIGNALLED.
 *
 * @param event the event.
 * @return 1, or 0: null, #ORU_INVALID_HANDLE or a handle that is no event, or a failing lock.
 */
VLRCOMN_API int oruResetEvent(oruHandle event);

/**
 * Makes a mutex. It is not recursive: an owner that waits for it again waits until its time-out.
 *
 * @param attributes ignored.
 * @param initial_owner 1 makes the calling thread the owner.
 * @param name ignored; mutexes are never shared by name.
 * @return the mutex, which the caller owns and closes with oruCloseHandle(), or null: memory is exhausted,
 * or a lock cannot be made or taken.
 */
VLRCOMN_API oruHandle oruCreateMutex(void* attributes, int initial_owner, const char* name);

/**
 * Mutexes are not shared by name, so there is none to open.
 *
 * @param access ignored.
 * @param inherit ignored.
 * @param name ignored.
 * @return null.
 */
VLRCOMN_API oruHandle oruOpenMutex(uint32_t access, int inherit, const char* name);

/**
 * Gives up a mutex that the calling thread owns, and wakes everyone who waits for it; one of them
 * becomes the owner, or any other thread that comes first. There is no order among them.
 *
 * A mutex whose owner ends without releasing it stays owned; it can only be closed. (A later thread
 * to which the system gives the same POSIX thread id counts as the owner.)
 *
 * @param mutex the mutex.
 * @return 1, or 0: null, #ORU_INVALID_HANDLE or a handle that is no mutex, a mutex that is free or that
 * another thread owns (nothing changes), or a failing lock.
 */
VLRCOMN_API int oruReleaseMutex(oruHandle mutex);

/**
 * Waits until an event is set, a thread has ended or a mutex is free; a mutex is then the caller's.
 *
 * A signalled object gives #ORU_WAIT_SIGNALLED at once, whatever the time-out. With a time-out of 0
 * any other gives #ORU_WAIT_TIMEOUT at once, and the system is not asked for anything. Otherwise the
 * call looks for some microseconds, on machines with several processors, and then sleeps until the
 * object is signalled or its deadline on the wall clock has passed. An event that is reset as soon as it
 * is set wakes those who sleep and may be missed by one who still looks.
 *
 * - **A timed wait may fail.** The deadline adds the time-out's milliseconds (time-out mod 1000) to
 * the current microseconds without a carry into the seconds; when the sum reaches a full second the
 * wait gives #ORU_WAIT_FAILED at once. A time-out of 10 fails about once in a hundred calls, one of
 * 500 every other time. Time-outs of 0, of whole seconds and #ORU_INFINITE never fail so; with
 * others try again on #ORU_WAIT_FAILED.
 * - **A wake-up may be spurious.** For events and threads #ORU_WAIT_SIGNALLED may come from one: the
 * call sleeps once and takes any wake-up for the signal, also one that the system makes up (for
 * example after a handled signal on Mac OS X). Test your own condition after waiting. A mutex is
 * looked at again, and the result means that the caller owns it.
 * - The wall clock is followed when it is set anew during the wait.
 *
 * @param handle an event, thread or mutex.
 * @param milliseconds time-out; 0 looks and returns and is no cancellation point.
 * @return #ORU_WAIT_SIGNALLED, #ORU_WAIT_TIMEOUT or #ORU_WAIT_FAILED: null, #ORU_INVALID_HANDLE or
 * a file, the missing carry above, an unreadable clock or a failing lock.
 */
VLRCOMN_API uint32_t oruWaitForSingleObject(oruHandle handle, uint32_t milliseconds);

/**
 * Waits until one of several objects is signalled, by looking at one after another for 10 ms each.
 *
 * The result for index 1 is the number of #ORU_WAIT_TIMEOUT, and the caller cannot tell the two
 * apart: put an event that is never set at index 1.
 *
 * **Waits of more than about a second nearly always end in #ORU_WAIT_FAILED**: every look is a
 * timed wait of 10 ms, which fails about once in a hundred times (oruWaitForSingleObject() tells
 * why). Call again on #ORU_WAIT_FAILED.
 *
 * The time-out counts 10 per look, not time on the clock; it is used up after (time-out / 10,
 * rounded up) looks. A time-out of 0 gives #ORU_WAIT_TIMEOUT without looking at any handle.
 * #ORU_INFINITE is a bound like any other, some 49.7 days of looks. A signal given and taken back
 * while another handle is looked at is missed.
 *
 * @param count number of handles in `handles`.
 * @param handles events, threads and mutexes; a mutex that is found becomes the caller's.
 * @param wait_all 1 (wait for all) is not supported and gives #ORU_WAIT_FAILED at once.
 * @param milliseconds time-out.
 * @return #ORU_WAIT_SIGNALLED plus the index of the signalled handle; #ORU_WAIT_TIMEOUT; or
 * #ORU_WAIT_FAILED: `wait_all` is 1, a single wait failed, or `count` is 0 or `handles` null while the
 * time-out is not 0.
 */
VLRCOMN_API uint32_t oruWaitForMultipleObjects(uint32_t count, const oruHandle* handles,
                                               int wait_all, uint32_t milliseconds);

/**
 * Adds 1 to a word, one thread at a time in the whole process, and reads it afterwards; the sum
 * wraps.
 *
 * **The value is read after the lock has been released**, so it may already hold other threads'
 * changes: two threads may both get the same number. A count that frees an object when it reads 0
 * may therefore see 0 twice and must not be built on the result alone.
 *
 * Increments and decrements exclude one another; an exchange of the same word is not held off, so that
 * one of the two changes may be lost: use either kind for a word, not both.
 * Reading the word elsewhere needs an atomic read.
 *
 * @param value the word; null gives 0.
 * @return the word as read after the change.
 */
VLRCOMN_API int32_t oruInterlockedIncrement(volatile int32_t* value);

/**
 * Subtracts 1 from a word; in everything else as oruInterlockedIncrement().
 *
 * @param value the word; null gives 0.
 * @return the word as read after the change.
 */
VLRCOMN_API int32_t oruInterlockedDecrement(volatile int32_t* value);

/**
 * Stores a value in a word, one exchange at a time in the whole process.
 *
 * Exchanges exclude one another, but neither increments nor decrements. Each is one atomic
 * instruction, so that others may exchange the same word by the processor's means, as orSL_Get() does.
 *
 * @param target the word; null gives 0.
 * @param value what to store.
 * @return what the word held before; exact among exchanges.
 */
VLRCOMN_API int32_t oruInterlockedExchange(volatile int32_t* target, int32_t value);

/** @} */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
