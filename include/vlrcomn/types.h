/**
 * @file
 * @brief What every other header of libvlrcomn builds on: the export mark, handles, wait results and
 * status codes.
 *
 * Usable from C99 and from C++17. Nothing here depends on the host's word size, except that a handle
 * is a pointer.
 */
#ifndef VLRCOMN_TYPES_H
#define VLRCOMN_TYPES_H

#include <stdint.h>

/**
 * @def VLRCOMN_API
 * Marks what the library exports; everything else in it is hidden.
 */
/**
 * @def VLRCOMN_PRINTF_FORMAT(format_index, first_argument)
 * Lets the compiler check the arguments of a printf-like function.
 *
 * @param format_index position of the format, from 1
 * @param first_argument position of the first value; 0 where a `va_list` stands for the values
 */
#if defined(__GNUC__)
#define VLRCOMN_API __attribute__((visibility("default")))
#define VLRCOMN_PRINTF_FORMAT(format_index, first_argument) \
    __attribute__((format(printf, format_index, first_argument)))
#else
#define VLRCOMN_API
#define VLRCOMN_PRINTF_FORMAT(format_index, first_argument)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** @addtogroup portability
 * @{ */

/**
 * The record behind a handle: an open file, an event, a thread or a mutex. Callers hold pointers to it
 * and never look inside.
 */
struct _oruHandleObject_t;

/**
 * A handle of the portability layer. Null and #ORU_INVALID_HANDLE are the two values that name no
 * object; creating functions return null on failure, except oruBeginThread, which returns
 * #ORU_INVALID_HANDLE.
 */
typedef struct _oruHandleObject_t* oruHandle;

/** The all-ones handle value, as wide as a pointer. */
#ifdef __cplusplus
#define ORU_INVALID_HANDLE (reinterpret_cast<oruHandle>(UINTPTR_MAX))
#else
#define ORU_INVALID_HANDLE ((oruHandle)UINTPTR_MAX)
#endif

/** Success of a function that returns a 32-bit status. */
#define ORU_SUCCESS UINT32_C(0)
/** The one general failure of a function that returns a 32-bit status. */
#define ORU_FAILURE UINT32_C(0x80000008)

/** Time-out in milliseconds that stands for "wait without limit". */
#define ORU_INFINITE UINT32_C(0xFFFFFFFF)

/** Result of a wait: the wait failed. */
#define ORU_WAIT_FAILED UINT32_C(0)
/** Result that no wait of this layer makes of its own; the multiple wait passes it through. */
#define ORU_WAIT_RESERVED UINT32_C(1)
/**
 * Result of a wait: the object is signalled. The multiple wait adds the index of the handle, so that
 * index 1 gives the same number as #ORU_WAIT_TIMEOUT.
 */
#define ORU_WAIT_SIGNALLED UINT32_C(2)
/** Result of a wait: the time-out has passed. */
#define ORU_WAIT_TIMEOUT UINT32_C(3)

/** @} */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
