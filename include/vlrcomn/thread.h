/**
 * @file
 * @brief Threads, thread-local storage and the tick count.
 *
 * Win32-style threads over POSIX threads, and 512 thread-local indices for the whole process.
 *
 * A thread from its start to its end (examples/worker.c, which has `run` and `tell`):
 * @snippet worker.c thread
 *
 * **The end of any thread started here frees every thread-local index of the process**, those that
 * other threads still use and those that another thread has just allocated included. Indices
 * therefore hold only as long as no such thread ends; look at the result of every call.
 *
 * Errors: the result alone tells of a failure. Refused arguments leave `errno` as it was, the system's
 * thread calls do not set it, and for exhausted memory it depends on the C library.
 *
 * Thread safety: every function may be called from any thread. A call on an index that meets
 * another thread's freeing of it answers as if it came before or after that.
 *
 * After `fork` in a process with several threads only `exec` is safe in the child. No function here
 * may be called from a signal handler.
 *
 * Usable from C99 and from C++17.
 */
#ifndef VLRCOMN_THREAD_H
#define VLRCOMN_THREAD_H

#include "vlrcomn/dynamic_library.h" /* oruDisableThreadLibraryCalls(), which programs look for here */
#include "vlrcomn/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @addtogroup portability
 * @{ */

/** What a thread runs: takes the parameter given at its start; the result is the POSIX exit value.
 */
typedef uint32_t (*oruThreadRoutine)(void* parameter);

/** Number of thread-local indices. */
#define ORU_TLS_INDICES UINT32_C(512)
/** What oruTlsAlloc() returns when it fails. */
#define ORU_TLS_OUT_OF_INDEXES UINT32_C(0xFFFFFFFF)

/**
 * Starts a detached thread. It runs at once, with the default stack.
 *
 * The thread may end by returning from its routine, by `pthread_exit` or by being cancelled; each
 * way runs oruCleanupThread() exactly once, which signals the handle. The last two destroy the C++
 * objects of the routine where the system unwinds the stack (glibc; a `noexcept` function on the
 * way ends the process), and not where it only runs clean-up handlers (Mac OS X). An exception that
 * escapes the routine ends the process by `std::terminate`, as with `std::thread`.
 *
 * The handle is signalled at the end of the routine, before the thread's C++ `thread_local` objects and
 * the values of POSIX keys have been destroyed: what they use must outlive them. Closing the handle gives
 * up the only way to learn of the end. A wait for it may end early, by a wake-up that the system makes up
 * (oruWaitForSingleObject() tells when): have the routine set a word of yours and look at that.
 *
 * @param attributes ignored.
 * @param stack_size ignored.
 * @param routine what to run; null is refused.
 * @param parameter handed to `routine`.
 * @param flags ignored: there is no suspended start.
 * @param thread_id null, or where to store the thread's id: always 0, on success only. Use the
 * handle.
 * @return a handle to wait for and to close with oruCloseHandle(), at any time; or
 * #ORU_INVALID_HANDLE: a null routine, exhausted memory, a lock that cannot be made, or a thread that the
 * system does not start.
 */
VLRCOMN_API oruHandle oruBeginThread(void* attributes, uint32_t stack_size,
                                     oruThreadRoutine routine, void* parameter, uint32_t flags,
                                     uint32_t* thread_id);

/**
 * Starts a thread as oruBeginThread() does, but returns null on failure.
 *
 * @param attributes ignored.
 * @param stack_size ignored.
 * @param routine what to run; null is refused.
 * @param parameter handed to `routine`.
 * @param flags ignored.
 * @param thread_id null, or where to store 0 on success.
 * @return a handle, or null where oruBeginThread() gives #ORU_INVALID_HANDLE.
 */
VLRCOMN_API oruHandle oruCreateThread(void* attributes, uint32_t stack_size,
                                      oruThreadRoutine routine, void* parameter, uint32_t flags,
                                      uint32_t* thread_id);

/**
 * The POSIX entry point of the threads started here. Only oruBeginThread() makes start blocks;
 * there is no use in calling this.
 *
 * @param start_block what the new thread needs; freed when the thread ends.
 * @return the routine's result as a pointer-wide number.
 */
VLRCOMN_API void* oruThreadJuggle(void* start_block);

/**
 * What the end of a thread does: frees every thread-local index that this process allocated,
 * signals the thread's handle unless it has been closed, and frees the start block. Run by the
 * layer.
 *
 * @param start_block the ending thread's block; null does nothing.
 */
VLRCOMN_API void oruCleanupThread(void* start_block);

/**
 * A hook for scheduling, called with every new thread's handle. It does nothing.
 *
 * @param thread ignored.
 */
VLRCOMN_API void set_pthread_sched_param(oruHandle thread);

/**
 * Takes the lowest free thread-local index. Every thread's value starts as null.
 *
 * @return an index from 0 to 511, or #ORU_TLS_OUT_OF_INDEXES: all are in use, or the system
 * has no further key.
 */
VLRCOMN_API uint32_t oruTlsAlloc(void);

/**
 * Frees a thread-local index. What its values point to is the callers' affair.
 *
 * @param index an index of oruTlsAlloc().
 * @return 1, or 0: 512 and above or an index that is not in use, or the system does not
 * delete the key (the index is free all the same).
 */
VLRCOMN_API int oruTlsFree(uint32_t index);

/**
 * Stores the calling thread's value of an index. No destructor runs when the thread ends.
 *
 * @param index an index of oruTlsAlloc().
 * @param value what to store.
 * @return 1, or 0: 512 and above or an index that is not in use, or memory is exhausted.
 */
VLRCOMN_API int oruTlsSetValue(uint32_t index, void* value);

/**
 * Reads the calling thread's value of an index, without taking a lock.
 *
 * @param index an index of oruTlsAlloc().
 * @return the value, or null: never set, or 512 and above or an index that is not in use.
 */
VLRCOMN_API void* oruTlsGetValue(uint32_t index);

/**
 * Milliseconds since an arbitrary moment, in steps of the system's clock tick (10 ms as a rule).
 *
 * Ticks times 1000 wraps at 32 bits before it is divided by the ticks per second, so with 100 ticks
 * a second the count falls back to 0 about every 11.9 hours, from 42949672. Differences across that
 * moment are wrong in 32-bit arithmetic; use it for short spans only.
 *
 * @return the count.
 */
VLRCOMN_API uint32_t oruGetTickCount(void);

/** @} */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
