/**
 * @file
 * @brief What the properties are made of: host names, names of processors, rounding, text conversion.
 *
 * Part of system_properties.h, which says what holds for all of it. Any thread may call these functions
 * at any time; none throws.
 */
#ifndef VLRCOMN_MACHINE_FACTS_H
#define VLRCOMN_MACHINE_FACTS_H

#include <cstdint>
#include <string>

#include "vlrcomn/types.h"

namespace velora_com::qel::sysprops {

/** @addtogroup properties
 * @{ */

/**
 * Coarsens a figure, so that a report changes in steps: the highest point of the grid
 * lower + k * (upper - lower) / steps, k from 1 to steps, that lies strictly below the value. At or
 * below the first point that is lower itself.
 *
 * Kept as agreed with the server: a result of zero is replaced by the exact value, so that with a
 * lower bound of 0 small amounts are not coarsened. For integers the step is truncated, so the
 * highest point may lie below upper (0 to 99 in 20 steps: 4, 8, … 80). With upper below lower the
 * grid runs as the arithmetic of T makes it: unsigned differences wrap.
 *
 * There are two instances, uint64_t and double. The number of steps bounds the work.
 *
 * @param value The figure.
 * @param upper Top of the grid; a greater value comes back as the top point.
 * @param lower Bottom of the grid.
 * @param steps Number of steps; 0 gives the smaller of value and lower.
 * @return The coarsened figure.
 */
template <typename T>
VLRCOMN_API T get_closest_floor(const T& value, const T& upper, const T& lower,
                                const uint32_t& steps);
/** @cond */
extern template VLRCOMN_API uint64_t get_closest_floor<uint64_t>(const uint64_t&, const uint64_t&,
                                                                 const uint64_t&, const uint32_t&);
extern template VLRCOMN_API double get_closest_floor<double>(const double&, const double&,
                                                             const double&, const uint32_t&);
/** @endcond */

/**
 * Names a processor type as the Gestalt manager numbers it ("cput"): 268 is "G4", the four
 * characters "ixxx" read as a big-endian number are "X86".
 *
 * @param      code The code.
 * @param[out] out  Room for 16 bytes, to which the name and a terminator are written. Untouched
 * when the result is false.
 * @return Whether the code is known; false for null `out`.
 */
VLRCOMN_API bool ConvertGestaltCPUTypeToString(long code, char* out);

/**
 * Names a system architecture as the Gestalt manager numbers it ("sysa"): 1 "MC680x0", 2 "PowerPC",
 * 10 "Intel".
 *
 * @param      code The code.
 * @param[out] out  Room for 16 bytes, as for ConvertGestaltCPUTypeToString.
 * @return Whether the code is known; false for null `out`.
 */
VLRCOMN_API bool ConvertGestaltSysArchToString(long code, char* out);

/**
 * Tells a portable computer by "book" in its model name, in any case.
 *
 * @param[out] portable Set to false first in every case.
 * @return false when the model name cannot be read.
 */
VLRCOMN_API bool IsPortableComputer(bool& portable);

/**
 * Tells the NIS domain.
 *
 * @return The kernel's NIS domain name; "UnKnownDomain" (unknown_domain) when there is none.
 */
VLRCOMN_API std::wstring getDomainName();

/**
 * The fully qualified host name as the resolver gives it. When the resolver does not know the host:
 * its name, a dot and the domain name of the system, with nothing behind the dot when that is empty
 * (this is kept), or the bare host name when the system has no domain name to give.
 *
 * Blocks as long as the resolver does. Calls run one after the other: the resolver's answer belongs
 * to the process. A direct caller of gethostbyname elsewhere in the process is not held off.
 *
 * @return The name; "N/A" (DefaultProp_Val) when the host name cannot be read.
 */
VLRCOMN_API std::wstring getFqdnAddress();

/**
 * The short host name: what uname gives, up to its first dot.
 *
 * @param[out] name Set on success, otherwise untouched.
 * @return false when uname fails.
 */
VLRCOMN_API bool getComputerName(std::string& name);

/**
 * Converts wide text to UTF-8, by the rules of orumcomn_wide_to_ansi in time_text.h.
 *
 * @param text The text.
 * @return The UTF-8 text, up to the first character that is zero or has no UTF-8 form; empty when
 * memory runs out.
 */
VLRCOMN_API std::string sysprops_wide_to_ansi(std::wstring text);

/**
 * Converts UTF-8 to wide text, by the rules of orumcomn_ansi_to_wide in time_text.h.
 *
 * @param text The text.
 * @return The wide text, up to the first byte that is zero or no UTF-8; empty when memory runs out.
 */
VLRCOMN_API std::wstring sysprops_ansi_to_wide(std::string text);

/** @} */

}  // namespace velora_com::qel::sysprops

#endif
