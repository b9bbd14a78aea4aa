/**
 * @file
 * @brief This machine's properties: one by name, all as a map, or one function each.
 *
 * Start with ISysProps::GetAllSystemProperties for a report, or with an orumcomn_get_… function for
 * a single value:
 * @code
 * velora_com::qel::sysprops::ISysProps properties;
 * std::map<std::wstring, std::wstring> report;
 * properties.GetAllSystemProperties(report);
 * const std::wstring address = orumcomn_get_ip_address();
 * @endcode
 *
 * Nothing here reports an error as such. A fact that is not found reads "N/A" (DefaultProp_Val) or
 * what property_keys.h says of its field; a name that is no property reads empty. Nothing is
 * cached: every query asks the machine again, so ask for the whole report rather than for many
 * single values.
 *
 * What a query may do besides reading the machine's state: network names go to the resolver, which
 * may block as long as it pleases; the operating-system facts may run a short shell command; the
 * list of users writes its diagnostic lines to standard output and may run the directory client
 * (logged_on_users.h). The environment variables read are "LANG" and, through the C library's time
 * zone, "TZ".
 *
 * Threads: separate ISysProps objects and separate records may be used from separate threads at
 * once; one object or record may not. The functions without an object are free of shared state, but
 * for the last known local address, which has a lock of its own.
 *
 * Exceptions: nothing is thrown. Where memory runs out, a collector returns its failure with the
 * record's remaining fields as they were, and a function that returns text returns what it says for
 * a fact that is not found.
 */
#ifndef VLRCOMN_SYSTEM_PROPERTIES_H
#define VLRCOMN_SYSTEM_PROPERTIES_H

#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "vlrcomn/property_keys.h"
#include "vlrcomn/types.h"

namespace velora_com::qel::sysprops {

/**
 * Collects this machine's properties. An object holds one record of each kind as scratch space and
 * nothing that outlives a call; make one on the stack where it is needed.
 */
class VLRCOMN_API ISysProps {
public:
    ISysProps();
    ~ISysProps();
    ISysProps(const ISysProps&) = default;
    ISysProps& operator=(const ISysProps&) = default;

    /**
     * Collects every property into one map, each collector run once. The map comes back with 29
     * entries, "IsPortable" (CPUPortable_Key) left out on purpose, and with two more for each
     * counted file system, whose keys property_keys.h describes. A walk over the map meets the keys
     * in the order of plain wide-character comparison.
     *
     * @param[out] properties Replaced as a whole.
     * @return true. Only when memory runs out: false, and the map is as it was.
     */
    bool GetAllSystemProperties(std::map<std::wstring, std::wstring>& properties);

    /**
     * As the overload with one map, with the file systems apart and with "IsPortable": always 30
     * entries in the first map.
     *
     * @param[out] properties   Replaced as a whole.
     * @param[out] file_systems Replaced as a whole: mount point to (total, free), as in
     *                          DiskInformation::mapFileSystems.
     * @return As above.
     */
    bool GetAllSystemProperties(
        std::map<std::wstring, std::wstring>& properties,
        std::map<std::wstring, std::pair<std::wstring, std::wstring>>& file_systems);

    /**
     * Collects one property: the collector of the first category that claims the name is run, asked
     * in the order network, processor, memory, misc, disk, operating system.
     *
     * @param name A name of property_keys.h, compared exactly.
     * @return The value; empty when no category claims the name. "NumberOfFileSystems" is claimed
     * by none and reads empty here, though GetOneDiskProperty answers it: this is kept.
     */
    std::wstring GetOneSystemProperty(const std::wstring& name);

    /** @name One property of one category
     * Each runs its collector on the object's record, ignores the collector's result and returns
     * the field that carries the name.
     * @param name A name of property_keys.h, compared exactly.
     * @return The value; "N/A" when the name is not one of the category's.
     * @{ */
    /** "ComputerName", "DomainName", "IPAddress", "IPHostName", "IPXAddress", "NETAddress",
     * "SubnetAddress", "SubnetMask". */
    std::wstring GetOneNetworkProperty(const std::wstring& name);
    /** "CPUType", "NumOfCPU", "CPUSpeed", "IsPortable", "CPUSerialNumber". */
    std::wstring GetOneCPUProperty(const std::wstring& name);
    /** "TotalPhysicalMemory", "FreeMemory". */
    std::wstring GetOneMemoryProperty(const std::wstring& name);
    /** "UserName", "TimeZone", "DefaultLangID", "LastUpdate". */
    std::wstring GetOneMiscProperty(const std::wstring& name);
    /** "FreeDiskSpace", "TotalDiskSpace", "NumberOfFileSystems". */
    std::wstring GetOneDiskProperty(const std::wstring& name);
    /** "OSType", "OSBitMode", "OSPlatform", "OSVersion", "OSBuildNum", "OSCsdVersion", "OSOEMId",
     * "PlatformID". */
    std::wstring GetOneOSProperty(const std::wstring& name);
    /** @} */

    /** @name Which category a name belongs to
     * The names are those listed with GetOne…Property, with one exception that is kept:
     * IsDiskProperty does not claim "NumberOfFileSystems".
     * @param name Compared exactly.
     * @return Whether the category claims the name. Collects nothing.
     * @{ */
    bool IsNetworkProperty(const std::wstring& name) const;
    bool IsCPUProperty(const std::wstring& name) const;
    bool IsMemoryProperty(const std::wstring& name) const;
    bool IsMiscProperty(const std::wstring& name) const;
    bool IsDiskProperty(const std::wstring& name) const;
    bool IsOSProperty(const std::wstring& name) const;
    /** @} */

    /**
     * Collects the processor facts. Count, clock, type and portability are asked for in this order;
     * wstrCPUSerialNumber is never written.
     *
     * @param[in,out] info A count that cannot be read leaves its field as it was; an unknown clock
     *                     writes "0 MHz". When neither architecture nor model has a name,
     * wstrCPUType becomes empty and wstrIsPortable stays as it was.
     * @return false when neither architecture nor model has a name.
     */
    bool GetCPUInformation(CPUInformation& info);

    /**
     * Collects the memory facts.
     *
     * @param[in,out] info A figure that cannot be read leaves its field as it was. Free memory is
     *                     rounded down in twentieths of the total, or taken exactly when it is less
     *                     than a twentieth or the total is not known (get_closest_floor).
     * @return false when the free memory cannot be read.
     */
    bool GetMemoryInformation(MemoryInformation& info);

    /**
     * Collects the local file systems whose block size and block count are not zero. Free space
     * counts every free block, also those kept for the superuser.
     *
     * @param[in,out] info The three texts are written anew. File systems are added to
     *                     mapFileSystems, which is not cleared, and a mount point that is there
     *                     already keeps its first value; the texts count it nevertheless. The
     * access functions of this class start from an empty map.
     * @return true; false only when memory runs out.
     */
    bool GetDiskInformation(DiskInformation& info);

    /**
     * Collects users, time zone, time and language. Takes the lock of the time functions
     * (velora_com::qel::mutex in time_text.h) for the zone, so must not be called with it held.
     *
     * @param[in,out] info A time or a zone that the C library does not give leaves its field as it
     *                     was.
     * @return true; false only when memory runs out.
     */
    bool GetMiscInformation(MiscInformation& info);

    /**
     * Collects the operating-system facts. The platform's identity is fixed: "MAC", "Mac OS X" and
     * "Apple Macintosh" on every host. Version and build come from the system's version property
     * list; the word size from the machine name of uname or, where that does not tell, from a shell
     * command.
     *
     * A version of one number gives that number and a dot, one of none just the dot. Numbers from the
     * fourth on are dropped.
     * When the property list names no build, the whole version stands in wstrOSBuildNum: this is
     * kept.
     *
     * @param[in,out] info On failure only the three identity fields are written.
     * @return false when the version file is missing, empty, unreadable, over 64 MiB, no XML
     * property list with a dictionary at its top, or without a version text of at most 255 bytes.
     */
    bool GetOSInformation(OSInformation& info);

    /**
     * Collects names and address of the machine. May block in the resolver.
     *
     * One address is chosen among those of the interfaces that are up, loopback left out: the last
     * known local address (updateLocalIP) when an interface has exactly that text; else the first
     * one of its family, IPv6 when the text holds a ":" and IPv4 otherwise, interfaces by ascending
     * index; else the first address of the interface with the lowest index. An interface without a
     * MAC address takes no part. An IPv6 address is matched in its expanded form only
     * (net_interface.h), so a compressed one merely selects the family.
     *
     * @param[in,out] info The name fields are always written; the address fields stay as they were
     *                     when there is no address to choose from.
     * @return 1 when the address fields were written, 0 otherwise.
     */
    int GetNetworkInformation(NetworkInformation& info);

    /**
     * Tells the library which of the machine's addresses its agent last used; the network collector
     * prefers it. Safe from any thread: a reader sees one complete value.
     *
     * @param address Any text; it is not checked. Empty means that none is known. Kept as it was
     *                before when memory runs out.
     */
    static void updateLocalIP(const std::wstring& address);

    /**
     * @return A copy of the text last given to updateLocalIP; empty before the first.
     */
    static std::wstring GetLastKnownLocalIP();

private:
    CPUInformation m_CPUInformation;
    NetworkInformation m_NetworkInformation;
    MemoryInformation m_MemoryInformation;
    OSInformation m_OSInformation;
    DiskInformation m_DiskInformation;
    MiscInformation m_MiscInformation;

    static std::wstring m_wstrLastKnownLocalIP;
};

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
extern template VLRCOMN_API uint64_t get_closest_floor<uint64_t>(const uint64_t&, const uint64_t&,
                                                                 const uint64_t&, const uint32_t&);
extern template VLRCOMN_API double get_closest_floor<double>(const double&, const double&,
                                                             const double&, const uint32_t&);

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
 * 10 "Intel". Otherwise like ConvertGestaltCPUTypeToString.
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
 * UTF-8 form of a wide text, up to its first zero character or the first one that has no UTF-8 form
 * (orumcomn_unicode_to_utf8 in time_text.h). Empty when memory runs out.
 */
VLRCOMN_API std::string sysprops_wide_to_ansi(std::wstring text);

/**
 * Wide form of a UTF-8 text, up to its first zero byte or the first byte that is no UTF-8
 * (orumcomn_utf8_to_unicode in time_text.h). Empty when memory runs out.
 */
VLRCOMN_API std::wstring sysprops_ansi_to_wide(std::string text);

}  // namespace velora_com::qel::sysprops

/** @name One function for each property
 * Each collects anew and returns what ISysProps::GetOneSystemProperty returns for the name given
 * with it; property_keys.h describes the values. They have C++ linkage.
 * @{ */
/** "CPUType". */
VLRCOMN_API std::wstring orumcomn_get_cpu_type();
/** "CPUSpeed". */
VLRCOMN_API std::wstring orumcomn_get_cpu_speed();
/** "NumOfCPU". */
VLRCOMN_API std::wstring orumcomn_get_number_of_processors();
/** "CPUSerialNumber". */
VLRCOMN_API std::wstring orumcomn_get_cpu_serial_number();
/** "DomainName". */
VLRCOMN_API std::wstring orumcomn_get_domain_name();
/** "ComputerName". */
VLRCOMN_API std::wstring orumcomn_get_computer_name();
/** "IPAddress". */
VLRCOMN_API std::wstring orumcomn_get_ip_address();
/** "SubnetAddress". */
VLRCOMN_API std::wstring orumcomn_get_subnet_address();
/** "SubnetMask". */
VLRCOMN_API std::wstring orumcomn_get_subnet_mask();
/** "NETAddress". */
VLRCOMN_API std::wstring orumcomn_get_mac_address();
/** "IPXAddress". */
VLRCOMN_API std::wstring orumcomn_get_ipx_address();
/** "IPHostName". */
VLRCOMN_API std::wstring orumcomn_get_fqdn_address();
/** "TotalPhysicalMemory". */
VLRCOMN_API std::wstring orumcomn_get_total_memory();
/** "FreeMemory". */
VLRCOMN_API std::wstring orumcomn_get_free_memory();
/** "NumberOfFileSystems": always empty, since no category claims that name. */
VLRCOMN_API std::wstring orumcomn_get_number_of_file_systems();
/** "TotalDiskSpace". */
VLRCOMN_API std::wstring orumcomn_get_total_disk_space();
/** "FreeDiskSpace". */
VLRCOMN_API std::wstring orumcomn_get_free_disk_space();
/** "OSType". */
VLRCOMN_API std::wstring orumcomn_get_os_type();
/** "OSPlatform". */
VLRCOMN_API std::wstring orumcomn_get_os_platform();
/** "OSVersion". */
VLRCOMN_API std::wstring orumcomn_get_os_version();
/** "OSCsdVersion". */
VLRCOMN_API std::wstring orumcomn_get_os_service_pack();
/** "OSBuildNum". */
VLRCOMN_API std::wstring orumcomn_get_os_build_number();
/** "OSOEMId". */
VLRCOMN_API std::wstring orumcomn_get_os_oem_id();
/** "PlatformID". */
VLRCOMN_API std::wstring orumcomn_get_os_platform_id();
/** "UserName". A namesake with C linkage and arguments is declared in agent_identity.h. */
VLRCOMN_API std::wstring orumcomn_get_user_name();
/** "TimeZone". */
VLRCOMN_API std::wstring orumcomn_get_time_zone();
/** "DefaultLangID". */
VLRCOMN_API std::wstring orumcomn_get_language();
/** "LastUpdate". */
VLRCOMN_API std::wstring orumcomn_get_last_update_time();
/** @} */

/** @name Placeholders on this platform
 * They return "N/A" whatever the argument and collect nothing; use the second map of
 * ISysProps::GetAllSystemProperties.
 * @{ */
VLRCOMN_API std::wstring orumcomn_get_file_system_name(int index);
VLRCOMN_API std::wstring orumcomn_get_file_system_free_space_by_name(std::wstring name);
VLRCOMN_API std::wstring orumcomn_get_file_system_total_space_by_name(std::wstring name);
/** @} */

/** Calls velora_com::qel::sysprops::ISysProps::updateLocalIP. */
VLRCOMN_API void orumcomn_set_local_ip_addr(std::wstring address);

#endif
