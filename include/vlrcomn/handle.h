/**
 * @file
 * @brief Closing handles, and the code of the last failed system call.
 *
 * A handle stands for an open file, an event, a thread or a mutex. The functions that make handles
 * are in file.h, sync.h and thread.h; every handle is given back with oruCloseHandle().
 *
 * A file from its making to its closing (examples/report.cpp); a close may fail, too:
 * @snippet report.cpp file
 *
 * After `fork` in a process with several threads only `exec` is safe in the child. No function here
 * may be called from a signal handler.
 *
 * Usable from C99 and from C++17.
 */
#ifndef VLRCOMN_HANDLE_H
#define VLRCOMN_HANDLE_H

#include "vlrcomn/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @addtogroup portability
 * @{ */

/**
 * @name Kinds of object behind a handle
 * The object records its kind; no call tells it.
 * @{
 */
#define ORU_KIND_FILE INT32_C(0)   /**< A file of oruCreateFileAW(). */
#define ORU_KIND_EVENT INT32_C(1)  /**< An event of oruCreateEvent(). */
#define ORU_KIND_THREAD INT32_C(2) /**< A thread of oruBeginThread(). */
#define ORU_KIND_MUTEX INT32_C(3)  /**< A mutex of oruCreateMutex(). */
/** @} */

/**
 * @name Codes of oruGetLastError()
 * The numbers are those of Win32; which `errno` stands for which is this layer's own choice.
 * @{
 */
/** `errno` is 0. */
#define ORU_ERROR_SUCCESS UINT32_C(0)
/** EACCES. */
#define ORU_ERROR_ACCESS_DENIED UINT32_C(5)
/** EROFS. */
#define ORU_ERROR_WRITE_PROTECT UINT32_C(19)
/** ENOENT, EIO, ENXIO, ENOLCK. */
#define ORU_ERROR_HANDLE_EOF UINT32_C(38)
/** ESRCH, EINTR, EBADF, ENODEV. */
#define ORU_ERROR_MOD_NOT_FOUND UINT32_C(126)
/** E2BIG, ENOMEM, ENFILE, EMFILE, EFBIG, ENOSPC, EMLINK. */
#define ORU_ERROR_NO_MORE_ITEMS UINT32_C(259)
/** EDEADLK, EBUSY, ETXTBSY, EAGAIN. */
#define ORU_ERROR_IO_PENDING UINT32_C(997)
/** EINVAL, ENOTTY. */
#define ORU_ERROR_BADKEY UINT32_C(1010)
/** Every other `errno`, EPERM and EEXIST among them. */
#define ORU_ERROR_GENERAL ORU_FAILURE
/** @} */

/**
 * Gives a handle back and frees its object.
 *
 * - File: closes the descriptor, then, for a file opened to be deleted on close, removes the path
 * it was opened by, whatever lies there by then. When either step fails the handle's record stays
 *   allocated for ever (the descriptor may be gone) and must not be used again; `errno` tells why.
 *   Closing it once more gives 0 and does nothing.
 * - Event, mutex: frees it. An owned mutex is freed all the same.
 * - Thread: the thread is neither stopped nor joined, and it may still run or be about to end: its
 * end then touches nothing that has been freed.
 *
 * @param handle the handle; null and #ORU_INVALID_HANDLE are closed successfully, with no effect.
 * @return 1, or 0 when a lock or a step above fails or the record's kind is unknown.
 *
 * Thread safety: different handles may be closed at once. No other call may use the handle during
 * or after its closing; in particular a thread that still waits for it would go on in freed memory.
 * Cancellation of the calling thread is held back until the call is done.
 */
VLRCOMN_API int oruCloseHandle(oruHandle handle);

/**
 * Translates the calling thread's `errno`, as the last failed system call left it.
 *
 * The layer keeps `errno` through its own clean-up, so a call right after a failed layer call tells
 * the cause of a failed system call. Refused arguments do not show here: they leave `errno` alone
 * unless the function in question says otherwise. Nor do failures of the system's thread calls, which do not
 * set `errno`: after a thread that was not started, or a lock that could not be made or taken, the code is that
 * of an earlier failure.
 *
 * @return one of the ORU_ERROR_ codes. `errno` is not changed.
 */
VLRCOMN_API uint32_t oruGetLastError(void);

/** @} */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
