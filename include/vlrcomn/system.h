/**
 * @file
 * @brief System time, system folders, computer name, and the flag that SIGTERM sets.
 *
 * Usable from C99 and C++17. Each function reports failure by its result alone; what the C library
 * leaves in `errno` has no meaning. All are thread-safe.
 */
#ifndef VLRCOMN_SYSTEM_H
#define VLRCOMN_SYSTEM_H

#include <stdint.h>

#include "vlrcomn/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @addtogroup portability
 * @{ */

/** A moment as a broken-down record of eight 16-bit numbers, 16 bytes. */
typedef struct oruSystemTime {
    uint16_t year;         /**< For example 2006. */
    uint16_t month;        /**< 1 to 12. */
    uint16_t day_of_week;  /**< 0 is Sunday. */
    uint16_t day;          /**< Day of the month, 1 to 31. */
    uint16_t hour;         /**< 0 to 23. */
    uint16_t minute;       /**< 0 to 59. */
    uint16_t second;       /**< 0 to 60. */
    uint16_t milliseconds; /**< Always 0. */
} oruSystemTime;

/**
 * Tells the current time, to the second. Despite its name it is the **local** time (localtime_r), not
 * UTC.
 *
 * localtime_r need not look at a changed "TZ" until something calls tzset.
 *
 * @param record Receives the time; all zeros if it cannot be broken down. Null is ignored.
 */
VLRCOMN_API void oruGetSystemTime(oruSystemTime* record);

/**
 * Names the folder that stands for the Windows directory: "/Library", on every system.
 *
 * @param destination Receives the text, terminated. Null is treated as too small.
 * @param size        Its size in bytes.
 * @return The length of the text without terminator when it fits; otherwise the size that it needs,
 *         terminator included, with nothing written: 8 for a size of 9 and more, 9 for a smaller one.
 */
VLRCOMN_API uint32_t oruGetWindowsDirectory(char* destination, uint32_t size);

/**
 * Names the folder that stands for the system directory: "/usr", on every system.
 *
 * @param destination Receives the text, terminated. Null is treated as too small.
 * @param size        Its size in bytes.
 * @return The length of the text without terminator when it fits; otherwise the size that it needs,
 *         terminator included, with nothing written: 4 for a size of 5 and more, 5 for a smaller one.
 */
VLRCOMN_API uint32_t oruGetSystemDirectory(char* destination, uint32_t size);

/**
 * Tells the machine's node name (uname of POSIX).
 *
 * @param destination Receives the name, terminated.
 * @param size        In: the size of @p destination in bytes. Out, on success only: the length of the
 *                    name without terminator.
 * @return 1; 0, with nothing changed, when an argument is null, the name does not fit with its
 *         terminator, or the system does not tell it.
 */
VLRCOMN_API int oruGetComputerName(char* destination, uint32_t* size);

/**
 * Kept for source compatibility; does nothing.
 *
 * @param message Ignored.
 * @return 1.
 */
VLRCOMN_API int oruTranslateMessage(const void* message);

/**
 * 0 until CatchSIGTERM has run, then 1 for good (unless a caller writes 0). It may change between any
 * two instructions: read it each time it matters, in threads that SIGTERM does not interrupt by an
 * atomic load (`__atomic_load_n(&bSigTermReceived, __ATOMIC_RELAXED)`).
 */
extern VLRCOMN_API volatile int32_t bSigTermReceived;

/**
 * Sets #bSigTermReceived to 1. Meant to be installed by the caller as its handler of SIGTERM; the one
 * function of the library that may run in a signal handler.
 *
 * @param signal_number Ignored.
 */
VLRCOMN_API void CatchSIGTERM(int signal_number);

/** @} */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
