/**
 * @file
 * @brief Conversions between wide and narrow text and between numbers and text, and the tokenizer.
 *
 * Usable from C99 and C++17. Each function reports failure by its result alone; `errno` is what the
 * C library's conversion left. All are thread-safe: each touches only what it
 * is handed.
 *
 * The names ending in "tot" and beginning "Tto" work on narrow text exactly as their "toa" and "Ato"
 * twins do.
 */
#ifndef VLRCOMN_CONVERT_H
#define VLRCOMN_CONVERT_H

#include <stddef.h>
#include <stdint.h>
#include <wchar.h>

#include "vlrcomn/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @addtogroup portability
 * @{ */

/**
 * Converts wide text to the narrow encoding of the process's current locale, as wcsrtombs does from a
 * fresh conversion state.
 *
 * For text that has to be UTF-8 whatever the locale, see orumcomn_unicode_to_utf8 in time_text.h.
 *
 * @param wide         Terminated text.
 * @param narrow_limit Most bytes to write, terminator included. Text that does not fit is cut before
 *                     the first character that would pass the limit and is then left **without a
 *                     terminator**: a result equal to the limit, or one that a further character could
 *                     not be added to, means that @p narrow does not end in a NUL.
 * @param narrow       Receives the text. Null writes nothing, and the limit is ignored: the result is
 *                     the number of bytes that the whole text needs, without terminator.
 * @return Bytes written, terminator not counted. 0 for empty text, for a null @p wide, and when a
 *         character has no form in the locale's encoding; what was converted before that character
 *         may have been written.
 */
VLRCOMN_API size_t oruStandardUtoA(const wchar_t* wide, size_t narrow_limit, char* narrow);

/**
 * Converts narrow text in the encoding of the process's current locale to wide text, as mbsrtowcs does
 * from a fresh conversion state.
 *
 * @param narrow     Terminated text.
 * @param wide_limit Most wide characters to write, terminator included. Longer text is cut there and
 *                   left **without a terminator**: the result then equals the limit.
 * @param wide       Receives the text. Null writes nothing, and the limit is ignored: the result is the
 *                   number of wide characters that the whole text needs, without terminator.
 * @return Wide characters written, terminator not counted. 0 for empty text, for a null @p narrow, and
 *         when @p narrow is not valid in the locale's encoding; what was converted before the fault
 *         may have been written.
 */
VLRCOMN_API size_t oruStandardAtoU(const char* narrow, size_t wide_limit, wchar_t* wide);

/**
 * Writes a signed 32-bit number as text.
 *
 * Radix 16 has lower-case digits; in radix 16 and 8 a negative value reads as its two's complement in
 * 32 bits. No prefix, no padding.
 *
 * @param value       The number.
 * @param destination Receives the digits and a terminator, at most 12 bytes; its size is not checked.
 * @param radix       10, 16 or 8.
 * @return @p destination; null, with nothing written, for any other radix or a null @p destination.
 */
VLRCOMN_API char* oruItoa(int32_t value, char* destination, int radix);

/**
 * The same as oruItoa.
 *
 * @param value       The number.
 * @param destination Receives the digits and a terminator.
 * @param radix       10, 16 or 8.
 * @return As of oruItoa.
 */
VLRCOMN_API char* oruItot(int32_t value, char* destination, int radix);

/**
 * Writes an unsigned 32-bit number as text, by the rules of oruItoa, with one oddity that callers rely
 * on: in radix 10 the 32 bits read as a **signed** number, so that 4294967295 becomes "-1" on every
 * host.
 *
 * @param value       The number.
 * @param destination Receives the digits and a terminator, at most 12 bytes; its size is not checked.
 * @param radix       10, 16 or 8.
 * @return @p destination; null, with nothing written, for any other radix or a null @p destination.
 */
VLRCOMN_API char* oruUltot(uint32_t value, char* destination, int radix);

/**
 * Writes a signed 64-bit number as text, by the rules of oruItoa with two's complement in 64 bits.
 *
 * @param value       The number.
 * @param destination Receives the digits and a terminator, at most 23 bytes; its size is not checked.
 * @param radix       10, 16 or 8.
 * @return @p destination; null, with nothing written, for any other radix or a null @p destination.
 */
VLRCOMN_API char* oruI64toa(int64_t value, char* destination, int radix);

/**
 * The same as oruI64toa.
 *
 * @param value       The number.
 * @param destination Receives the digits and a terminator.
 * @param radix       10, 16 or 8.
 * @return As of oruI64toa.
 */
VLRCOMN_API char* oruI64tot(int64_t value, char* destination, int radix);

/**
 * Reads decimal digits as a signed 64-bit number.
 *
 * Made for text that is known to hold digits only: there is **no sign, no skipping of blanks and no
 * stop at another character**. Each byte, taken as a signed value, is folded in as value * 10 + byte -
 * 48, wrapping at 64 bits: "12" gives 12, "1a" gives 59, "-1" gives -29.
 *
 * @param text Terminated text.
 * @return The number; 0 for empty text and for null.
 */
VLRCOMN_API int64_t oruAtoi64(const char* text);

/**
 * The same as oruAtoi64.
 *
 * @param text Terminated text.
 * @return As of oruAtoi64.
 */
VLRCOMN_API int64_t oruTtoi64(const char* text);

/**
 * Takes the next token from a text: strtok_r of POSIX, unchanged.
 *
 * @param text       The text to begin with, which is written to; null to go on from @p save.
 * @param delimiters Terminated set of bytes that part tokens; may differ from call to call.
 * @param save       Where the position is kept between calls. Must not be null.
 * @return The next token, terminated inside the text; null when there is none left.
 */
VLRCOMN_API char* oruTstrtok_r(char* text, const char* delimiters, char** save);

/** @} */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
