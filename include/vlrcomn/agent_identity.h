/**
 * @file
 * @brief How the agent and its plug-ins identify themselves, and whether content is meant for this
 * machine.
 *
 * Usable from C99 and from C++17. No function keeps state between calls; all may be called from
 * several threads, as far as what they call allows it; each function says where that is a limit.
 * No function throws.
 */
#ifndef VLRCOMN_AGENT_IDENTITY_H
#define VLRCOMN_AGENT_IDENTITY_H

#include <wchar.h>

#include "vlrcomn/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @addtogroup utilities
 * @{ */

/**
 * The entry point "SVPLUGIN_GetVersion" that a plug-in library exports with C linkage. It stores
 * the four components of the plug-in's version and returns 0; any other value means failure.
 *
 * @param major receives the first component
 * @param minor receives the second
 * @param third receives the third
 * @param fourth receives the fourth
 * @return 0, or another value on failure
 */
typedef int (*orumcomn_PluginGetVersion)(uint16_t* major, uint16_t* minor, uint16_t* third,
                                         uint16_t* fourth);

/**
 * Reads a plug-in's version as sixteen lower-case hexadecimal digits, four for each component: 1,
 * 2, 3, 4 is 0001000200030004.
 *
 * The library is loaded with oruLoadLibrary() and freed before the call returns, so that its entry
 * point ("DllMain") runs on the way when it has one; see there for what that means for concurrent calls.
 * The version call must not throw.
 *
 * @param path path of the plug-in library
 * @param buffer receives the text; all @p size bytes are set to zero first, also on failure
 * @param size the buffer's size in bytes. A buffer too small for the text and its terminator is
 * filled with as much of the text as it holds and then has no terminator: pass at least 17.
 * @return 1 on success; 0 when an argument is null, the library cannot be loaded, has no
 *         "SVPLUGIN_GetVersion", or that reports a failure
 */
VLRCOMN_API int orumcomn_GetFileResourceVersionStamp(const char* path, char* buffer, uint32_t size);

/**
 * Reads a plug-in's version as four decimal numbers with dots between: 1.2.3.4. In everything else
 * as orumcomn_GetFileResourceVersionStamp(); a buffer of 24 bytes holds every version.
 *
 * @param path path of the plug-in library
 * @param buffer receives the text
 * @param size the buffer's size in bytes
 * @return 1 or 0
 */
VLRCOMN_API int orumcomn_GetFileResourceStringVersionStamp(const char* path, char* buffer,
                                                           uint32_t size);

/**
 * Gives the agent's software id, the 16 characters KSVAGENT4800MACX.
 *
 * @param buffer receives the id; null is ignored
 * @param size the buffer's size in bytes. Up to 16 the buffer is left untouched. With exactly 17
 * the 16 characters are written and no terminator. From 18 on the id is followed by zero bytes up
 * to, but without, the buffer's last byte.
 */
VLRCOMN_API void orumcomn_get_agent_softwareid(char* buffer, uint32_t size);

/**
 * Gives the agent's software id as wide text.
 *
 * @param buffer receives the id with its terminator (17 wide characters); null is ignored
 * @param size the buffer's size in wide characters; up to 16 the buffer is left untouched
 */
VLRCOMN_API void orumcomn_get_agent_softwareid_W(wchar_t* buffer, uint32_t size);

/**
 * Gives the names of the logged-on users as UTF-8, or "NA" when nobody is logged on.
 *
 * The names are those of velora_com::qel::session::CollectAllLoggedonUsers(), whose diagnostic
 * lines on standard output and external commands come along. Not to be confused with the C++
 * function of the same name without arguments, which gives the property "UserName".
 *
 * @param buffer receives the text with its terminator, or nothing
 * @param size the buffer's size in bytes; 513 always suffice
 * @return #ORU_SUCCESS, or #ORU_FAILURE when the buffer is null or too small
 */
VLRCOMN_API uint32_t orumcomn_get_user_name(char* buffer, uint32_t size);

/**
 * Gives a number for the free space of the file system that holds a path.
 *
 * The number is blocks available to ordinary users x block size x 1000, reduced to a signed 32-bit
 * value and sign-extended: it is neither bytes nor kilobytes, and wraps for every larger file
 * system. Callers already compare exactly this number, so it stays; the caller interprets it.
 *
 * @param path any path on the file system
 * @param free_space receives the number; untouched on failure
 * @return #ORU_SUCCESS, or #ORU_FAILURE when an argument is null or the system cannot tell
 */
VLRCOMN_API uint32_t orumcomn_get_disk_free_spaceA(const char* path, uint64_t* free_space);

/**
 * Tells whether this machine is named by a platform list.
 *
 * @p platform is "name" or "name:major:minor:build". @p list is a sequence of entries with "|"
 * between, each "name", "name:lower" or "name:lower-upper", where a bound is "major:minor:build"
 * with parts left out at its end. Spaces count nowhere (tabs do). An entry names the platform when
 * its name occurs anywhere in the platform's name, in the same case: MAC names MACX, and an entry
 * without a name names every platform. Both bounds belong to the range.
 *
 * Examples: "MAC" (any version), "MAC:10:4:0-10:5:0|LNX", "MAC:10:4" (10.4.0 and up).
 *
 * Kept for the content that relies on it:
 * - Bounds start as 0:0:0 and 65535:-1:65535 once for the whole list. A part that an entry leaves
 *   out, or that is no number, keeps the value from the entry read before.
 * - A version counts as major x 2^48 + minor x 2^16 + build, modulo 2^64 and unsigned: builds of
 *   65536 and more reach into the minor.
 * - Numbers are read as scanf's "%d" reads them, with white space and a sign before; past 32 bits
 *   they saturate. A range that begins with "-" has a negative lower major, and what follows that
 *   "-" is also its upper bound.
 * - A platform without version has the version 0.
 *
 * @param platform description of this machine
 * @param list the platform list
 * @return 0: match. 1: an entry names the platform, but no range holds its version. #ORU_FAILURE:
 * no entry names the platform, an argument is null, or a text has 260 characters or more without
 *         its spaces.
 */
VLRCOMN_API uint32_t orumcomn_IsPlatformMatch(const char* platform, const char* list);

/** @} */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
