/**
 * @file
 * @brief Uptime, time stamps, time zones, text helpers, and conversion between wide text and UTF-8.
 *
 * The first half is usable from C99 and C++17; the rest, in namespace velora_com::qel, from C++17.
 *
 * **UTF-8 and wide text.** Wide text is wchar_t of 32 bits in the machine's byte order; UTF-8 is UTF-8
 * whatever the locale, in the one to four bytes of RFC 3629. What has no UTF-8 form ends the conversion:
 * surrogates (U+D800 to U+DFFF) and codes above U+10FFFF in either text; stray, missing or overlong bytes
 * in UTF-8. **Such a fault is not reported**: the text up to it is the result, terminated, with success. A
 * byte-order mark is a character like any other. The result is the same on every host.
 *
 * **Memory.** Nothing is thrown: a function that returns text returns the empty text when memory runs
 * out.
 *
 * **Thread safety.** Every function is thread-safe. Functions that read or write the
 * C library's time-zone state say so.
 */
#ifndef VLRCOMN_TIME_TEXT_H
#define VLRCOMN_TIME_TEXT_H

#include <stdint.h>
#include <wchar.h>

#include "vlrcomn/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @addtogroup utilities
 * @{ */

/**
 * Converts wide text to UTF-8; see the head of this file for the encoding and for faults.
 *
 * @param wide   Terminated text.
 * @param narrow Receives the text, terminated. Must not overlap @p wide. Bytes behind the terminator
 *               stay as they were.
 * @param size   Size of @p narrow in bytes, not changed. It must allow for six bytes for each character
 *               and a terminator, whatever the characters are: 19 for three characters. Sizes above
 *               INT32_MAX count as negative and so as too small.
 * @return #ORU_SUCCESS; #ORU_FAILURE, with nothing written, when an argument is null or the size is too
 *         small.
 */
VLRCOMN_API uint32_t orumcomn_unicode_to_utf8(const wchar_t* wide, char* narrow,
                                              const uint32_t* size);

/**
 * Converts UTF-8 to wide text; see the head of this file for the encoding and for faults.
 *
 * @param narrow Terminated text.
 * @param wide   Receives the text, terminated. Must not overlap @p narrow. Characters behind the
 *               terminator stay as they were.
 * @param size   Size of @p wide in wide characters, not changed. It must allow for one character for
 *               each byte of @p narrow and a terminator, whatever the bytes are.
 * @return #ORU_SUCCESS; #ORU_FAILURE, with nothing written, when an argument is null or the size is too
 *         small.
 */
VLRCOMN_API uint32_t orumcomn_utf8_to_unicode(const char* narrow, wchar_t* wide,
                                              const uint32_t* size);

/**
 * Writes the current UTC time as 14 digits, year to second: "20061231235959".
 *
 * @param text Receives the text, always terminated: cut to @p size - 1 characters if it does not fit.
 *             Null: nothing happens.
 * @param size Size of @p text in bytes. 0: nothing happens.
 */
VLRCOMN_API void orumcomn_CreateGmtTimeStampA(char* text, uint32_t size);

/**
 * Writes the current local time as 14 digits. localtime_r need not look at a changed "TZ" until someone
 * calls tzset. Does not take velora_com::qel::mutex.
 *
 * @param text Receives the text as of orumcomn_CreateGmtTimeStampA().
 * @param size Size of @p text in bytes. 0: nothing happens.
 */
VLRCOMN_API void orumcomn_CreateLocalTimeStampA(char* text, uint32_t size);

/**
 * Writes the current UTC time as 14 digits in wide text.
 *
 * @param text Receives at most @p size characters as wcsncpy does: **without a terminator** when @p size
 *             is 14 or less, filled up with zeros to @p size otherwise. Null: nothing happens.
 * @param size Size of @p text in wide characters. 0: nothing happens.
 */
VLRCOMN_API void orumcomn_CreateGmtTimeStampW(wchar_t* text, uint32_t size);

/**
 * Writes the current local time, as orumcomn_CreateLocalTimeStampA() reads it, in wide text.
 *
 * @param text Receives the text as of orumcomn_CreateGmtTimeStampW(), terminated or not.
 * @param size Size of @p text in wide characters. 0: nothing happens.
 */
VLRCOMN_API void orumcomn_CreateLocalTimeStampW(wchar_t* text, uint32_t size);

/**
 * Cuts a text, in place, at its first ';', if it has one.
 *
 * @param text Terminated text. Null is ignored.
 */
VLRCOMN_API void orumcomn_chop_semicolon(char* text);

/**
 * Appends a '/' to a terminated text, in place, unless it ends in one already. Despite its name it is
 * a forward slash. An empty text becomes "/".
 *
 * @param text The text; its buffer must have room for one more byte. Null is ignored.
 */
VLRCOMN_API void orumcomn_append_backslash_check(char* text);

/** Kept for source compatibility; does nothing. @param delay Ignored. */
VLRCOMN_API void orumcomn_delay(int32_t delay);

/** @} */

#ifdef __cplusplus
} /* extern "C" */

#include <pthread.h>

#include <ctime>
#include <string>

namespace velora_com::qel {

/** @addtogroup utilities
 * @{ */

/**
 * Serialises this library's use of the C library's time-zone state: "TZ", tzset, tzname and localtime.
 * A program that changes that state itself may hold it meanwhile. Not recursive: vlrcomn_timegm,
 * vlrcomn_gettimezone and the orumcomn_get_time_stamp functions take it and must not be called with it
 * held.
 */
extern VLRCOMN_API pthread_mutex_t mutex;

/**
 * Seconds since the system started.
 *
 * @return The current time less the boot time; 0x7FFFFFFF when the boot time cannot be told.
 */
VLRCOMN_API long get_system_uptime_osx();

/**
 * The same as get_system_uptime_osx.
 *
 * @return As of get_system_uptime_osx.
 */
VLRCOMN_API long orumcomn_get_system_uptime();

/**
 * Reads a broken-down time as UTC, the reverse of gmtime_r.
 *
 * "TZ" is not changed while this runs, so that no other thread sees a foreign zone. Afterwards "TZ" is
 * as before if it held 1 to 1024 characters, and **otherwise unset** (an empty or longer value is
 * removed); then tzset is called, under velora_com::qel::mutex.
 *
 * @param time The time. Fields outside their ranges are normalised as mktime does, and tm_wday and
 *             tm_yday are set; tm_isdst is ignored and set to 0.
 * @return Seconds since 1970-01-01 00:00:00 UTC; -1 when they do not fit a time_t or @p time is null.
 *         -1 is also the second before that moment.
 */
VLRCOMN_API time_t vlrcomn_timegm(std::tm* time);

/**
 * Names the local standard-time zone, as the C library's tzname[0] stands (this function does not call
 * tzset), under velora_com::qel::mutex.
 *
 * @param zone Receives the abbreviation, at most 63 bytes of it; unchanged on failure.
 * @return True; false when the C library has no name.
 */
VLRCOMN_API bool vlrcomn_gettimezone(std::wstring& zone);

/**
 * The current local time as "2006-12-31 23:59:59" (19 characters), under velora_com::qel::mutex.
 *
 * @return The text; empty when the time cannot be broken down.
 */
VLRCOMN_API std::string orumcomn_get_time_stamp_ansi();

/**
 * orumcomn_get_time_stamp_ansi() in wide text.
 *
 * @return The text; empty when the time cannot be broken down.
 */
VLRCOMN_API std::wstring orumcomn_get_time_stamp_wide();

/**
 * A number in decimal, as "%ld" writes it.
 *
 * @param value The number.
 * @return Its digits, with a sign when it is negative.
 */
VLRCOMN_API std::string orumcomn_long_to_ansi_string(long value);

/**
 * orumcomn_long_to_ansi_string() in wide text.
 *
 * @param value The number.
 * @return Its digits, with a sign when it is negative.
 */
VLRCOMN_API std::wstring orumcomn_long_to_wide_string(long value);

/**
 * Turns the letters a to z to upper case; other bytes, UTF-8 included, stay.
 *
 * @param text The text.
 * @return The changed copy.
 */
VLRCOMN_API std::string orumcomn_convert_to_upper(const std::string& text);

/**
 * Turns the letters A to Z to lower case; other bytes, UTF-8 included, stay.
 *
 * @param text The text.
 * @return The changed copy.
 */
VLRCOMN_API std::string orumcomn_convert_to_lower(const std::string& text);

/**
 * Takes white space (space and \\t \\n \\v \\f \\r) off the beginning of a text.
 *
 * @param text The text.
 * @return The shorter copy.
 */
VLRCOMN_API std::string orumcomn_strip_leading_whitespace(const std::string& text);

/**
 * Takes white space (space and \\t \\n \\v \\f \\r) off the end of a text.
 *
 * @param text The text.
 * @return The shorter copy.
 */
VLRCOMN_API std::string orumcomn_strip_trailing_whitespace(const std::string& text);

/**
 * Tells the machine's byte order.
 *
 * @return Whether the most significant byte of a number comes first.
 */
VLRCOMN_API bool isBigEndian();

/**
 * Converts wide text to UTF-8; see the head of this file for the encoding and for faults.
 *
 * @param text The text, which ends at its first zero character.
 * @return The UTF-8 text. Empty when memory runs out, and for a text whose six bytes a character pass
 *         INT32_MAX (357,913,942 characters and more).
 */
VLRCOMN_API std::string orumcomn_wide_to_ansi(const std::wstring& text);

/**
 * Converts UTF-8 to wide text; see the head of this file for the encoding and for faults.
 *
 * @param text The text, which ends at its first zero byte.
 * @return The wide text. Empty when memory runs out, and for a text of 4 GiB less one byte and more.
 */
VLRCOMN_API std::wstring orumcomn_ansi_to_wide(const std::string& text);

namespace orumcomn {

/** @addtogroup utilities
 * @{ */

/**
 * Second name of orumcomn_wide_to_ansi.
 *
 * @param text The text.
 * @return As of orumcomn_wide_to_ansi.
 */
VLRCOMN_API std::string wide_to_ansi(const std::wstring& text);

/**
 * Second name of orumcomn_ansi_to_wide.
 *
 * @param text The text.
 * @return As of orumcomn_ansi_to_wide.
 */
VLRCOMN_API std::wstring ansi_to_wide(const std::string& text);

/** @} */

}  // namespace orumcomn

/** @} */

}  // namespace velora_com::qel

#endif /* __cplusplus */

#endif
