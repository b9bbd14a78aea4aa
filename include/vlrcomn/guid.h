/**
 * @file
 * @brief Time-based GUIDs and their text form.
 *
 * Usable from C99 and C++17. No function here changes `errno`.
 */
#ifndef VLRCOMN_GUID_H
#define VLRCOMN_GUID_H

#include <stdint.h>

#include "vlrcomn/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @addtogroup portability
 * @{ */

/** A GUID: 16 bytes, the first three fields in the machine's byte order. */
typedef struct GUID {
    uint32_t Data1; /**< Low 32 bits of the time stamp. */
    uint16_t Data2; /**< Bits 32 to 47 of the time stamp. */
    uint16_t Data3; /**< Bits 48 and up of the time stamp, with the version, 1, in the top digit. */
    /** Clock sequence with the variant in the top bits (2 bytes), node (6 bytes). */
    uint8_t Data4[8];
} GUID;

/** Bytes that oruUuidToStringA writes: 36 characters and a terminator. */
#define ORU_GUID_TEXT_SIZE 37

/**
 * Makes a version 1 GUID (RFC 4122, section 4.2) with a random node.
 *
 * The time stamp counts steps of 100 ns since 1582-10-15. Up to ten GUIDs share one microsecond of
 * the clock; the eleventh waits, spinning, for the next one. When the clock is found to have gone
 * back, the clock sequence goes up by one.
 *
 * Node and first clock sequence come from eight values of rand(), drawn by the first call. The library
 * does not seed rand(): **two processes that do not seed it either share the node and the first clock
 * sequence**, so that their GUIDs differ by time alone. A child of fork() goes on with its parent's
 * state. The first call also opens a datagram socket for a moment and lists the interfaces; what it
 * finds does not enter the GUID.
 *
 * Thread safety: any number of threads may call at once and get different GUIDs. Not safe in a signal
 * handler.
 *
 * @param guid Receives the GUID.
 * @return @p guid; null when it is null.
 */
VLRCOMN_API GUID* oruCoCreateGuid(GUID* guid);

/**
 * Writes a GUID as text, lower case, without braces: "1b4e28ba-2fa1-11d2-883f-0016d3cca427" (the form
 * of RFC 4122, section 3). The text is the same on machines of either byte order.
 *
 * @param guid The GUID.
 * @param text Receives #ORU_GUID_TEXT_SIZE bytes; its size is not checked.
 * @return @p text; null when either argument is null.
 */
VLRCOMN_API char* oruUuidToStringA(const GUID* guid, char* text);

/** @} */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
