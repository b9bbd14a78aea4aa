/**
 * @file
 * @brief IPv6 addresses as text: the full form, subnets, and the host-name form.
 *
 * The library stores and compares IPv6 addresses in one form: all eight groups present, each as the
 * system wrote it (no zero padding), no scope suffix. These functions work on text alone and check
 * nothing: a text that is no address is rewritten by the same rules and no call reports an error.
 *
 * All are pure functions of their arguments and may run on any thread. Nothing throws: a result
 * that cannot be allocated is empty.
 */
#ifndef VLRCOMN_IPV6_TEXT_H
#define VLRCOMN_IPV6_TEXT_H

#include <string>

#include "vlrcomn/types.h"

namespace velora_com::qel {

/** @addtogroup network
 * @{ */

/**
 * Writes out the groups that "::" stands for and drops the scope.
 *
 * - Everything from the first "%" on goes, whatever the address.
 * - Without "::" the rest comes back as it is; groups are never padded.
 * - Only the first "::" is filled, with as many groups as are missing to eight;
 * the colons of a later "::" count like any others.
 * - An IPv4 tail counts as one group, although it is two: "::ffff:10.1.2.3" gives
 *   "0:0:0:0:0:0:ffff:10.1.2.3", which is no longer an address.
 *
 * Examples: "fe80::1%en0" gives "fe80:0:0:0:0:0:0:1", "::" gives "0:0:0:0:0:0:0:0", "10.1.2.3"
 * stays.
 *
 * @param address  the text
 * @return the expanded text
 */
VLRCOMN_API std::string expandIPV6Address(std::string address);

/**
 * The subnet of an address: the bitwise AND of both texts, group by group.
 *
 * Groups are what stands between colons, read as hexadecimal numbers by the rules of C's `strtoul`
 * (an empty or foreign group reads 0, a sign and "0x" count) with 32 bits on every host: larger
 * numbers read 0xffffffff.
 *
 * @param address  an address in the expanded form; a shorter form gives fewer groups
 * @param mask  the mask, likewise
 * @return as many groups as the shorter text has, in lower-case hexadecimal without leading zeros;
 *         empty (never "N/A") when either text is empty
 */
VLRCOMN_API std::string calculateSubNetAddrForV6(const std::string& address,
                                                 const std::string& mask);

/**
 * Counts a character, as the expansion needs it.
 *
 * The count runs in 16 bits: 65536 occurrences count as none.
 *
 * @param text  the text
 * @param ch  the character
 * @param limit  what is returned for a count of more than 7, whatever its own value
 * @return the count when it is at most 7, else `limit`
 */
VLRCOMN_API int noOfOccurences(const std::string& text, char ch, int limit);

/**
 * Writes an IPv6 address so that it can stand where a host name is expected: "-" for ":" and
 * ".ipv6-literal.net" at the end.
 *
 * Brackets around the address and its scope are dropped, and with brackets all text outside them
 * (a port). A text without ":" or with the ending in it comes back unchanged. Example:
 * "[fe80::1%en0]" gives "fe80--1.ipv6-literal.net".
 *
 * @param address  the address
 * @return the host-name form
 */
VLRCOMN_API std::string convertV6AddrToLiteralFormat(std::string address);

/**
 * The way back from the host-name form. The scope ("s" and a number) is dropped: any "s" cuts the
 * address there.
 *
 * Brackets go in any case, and with them all text outside them; a "[" counts only with a "]" behind
 * it. Text behind ".ipv6-literal.net" is dropped, too; a text without that is otherwise unchanged.
 * Example: "fe80--1s4.ipv6-literal.net" gives "fe80::1".
 *
 * @param text  the host-name form, lower case
 * @return the address
 */
VLRCOMN_API std::string convertLiteralFormatToV6Addr(std::string text);

/** @} */

}  // namespace velora_com::qel

#endif
