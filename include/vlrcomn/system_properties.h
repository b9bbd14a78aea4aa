/**
 * @file
 * @brief This machine's properties: one by name, all as a map, or one function each.
 *
 * Start with ISysProps::GetAllSystemProperties for a report, or with an orumcomn_get_… function for
 * a single value. A report with a line for each property (examples/report.cpp):
 * @snippet report.cpp properties
 *
 * The functions for single values are in property_functions.h, the facts and words below the properties in
 * machine_facts.h; both come with this header.
 *
 * Nothing here reports an error as such. A fact that is not found reads "N/A" (DefaultProp_Val), but
 * for these: CPUType empty, CPUSpeed "0 MHz", IsPortable "-1" or, without a CPUType, empty, OSBitMode "-1",
 * DomainName "UnKnownDomain", UserName "NA", the disks "0.00" and "0". A name that is no property reads
 * empty. A zone that is not known has the name that the C library gives it, mostly "UTC". Nothing is
 * cached: every query asks the machine again, so ask for the whole report rather than for many
 * single values.
 *
 * What a query may do besides reading the machine's state:
 * - Names of the network category go to the resolver, which may block without a limit of time.
 * - Every query of the misc category, so TimeZone, DefaultLangID and LastUpdate too, lists the users: that
 *   writes diagnostic lines to standard output and, where the directory client is installed, runs it
 *   without a limit of time (logged_on_users.h).
 * - On Mac OS X the disks are asked in waiting mode, so that a file server that stays silent blocks. On
 *   Linux what may wait for a server or a user's program is not asked.
 * - The operating-system facts may run "sysctl hw" in a shell, which finds it by "PATH".
 *
 * Besides "PATH" the environment variables "LANG" and, through the C library's time zone, "TZ" count.
 *
 * Thread safety: separate ISysProps objects and separate records may be used from separate threads at
 * once; one object or record may not. The functions without an object are free of shared state, but
 * for the last known local address, which has a lock of its own.
 *
 * Exceptions: nothing is thrown. Where memory runs out, a collector returns its failure with the
 * record's remaining fields as they were, and a function that returns text returns what it says for
 * a fact that is not found.
 */
#ifndef VLRCOMN_SYSTEM_PROPERTIES_H
#define VLRCOMN_SYSTEM_PROPERTIES_H

#include <map>
#include <string>
#include <utility>

#include "vlrcomn/machine_facts.h"
#include "vlrcomn/property_functions.h"
#include "vlrcomn/property_keys.h"
#include "vlrcomn/types.h"

namespace velora_com::qel::sysprops {

/** @addtogroup properties
 * @{ */

/**
 * Collects this machine's properties. An object holds one record of each kind as scratch space and
 * nothing that outlives a call; make one on the stack where it is needed.
 */
class VLRCOMN_API ISysProps {
public:
    /** Makes an object with empty scratch records. Collects nothing. */
    ISysProps();
    /** Frees the scratch records. */
    ~ISysProps();
    /** Copies the scratch records, which mean nothing between calls. @param other the object to copy */
    ISysProps(const ISysProps& other) = default;
    /** Copies the scratch records. @param other the object to copy @return this object */
    ISysProps& operator=(const ISysProps& other) = default;

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

    /**
     * Collects one property that is no part of the report: neither map has it, and no category claims it,
     * so that GetOneSystemProperty reads it as empty. Only its own fact is asked for. Any thread may call
     * this at any time.
     *
     * @param name "BootTime", compared exactly.
     * @return The value, as property_keys.h describes it; "N/A" when it is not found or memory runs out;
     * empty when there is no such addition.
     */
    static std::wstring GetOneAdditionalProperty(const std::wstring& name);

    /** @name One property of one category
     * Each runs its collector on the object's record, ignores the collector's result and returns
     * the field that carries the name; "N/A" when the name is not one of the category's. Names are
     * compared exactly.
     * @{ */
    /**
     * Collects one network property.
     * @param name "ComputerName", "DomainName", "IPAddress", "IPHostName",
     * "IPXAddress", "NETAddress", "SubnetAddress", "SubnetMask".
     * @return The value, or "N/A".
     */
    std::wstring GetOneNetworkProperty(const std::wstring& name);
    /**
     * Collects one processor property.
     * @param name "CPUType", "NumOfCPU", "CPUSpeed", "IsPortable", "CPUSerialNumber".
     * @return The value, or "N/A".
     */
    std::wstring GetOneCPUProperty(const std::wstring& name);
    /**
     * Collects one memory property.
     * @param name "TotalPhysicalMemory", "FreeMemory".
     * @return The value, or "N/A".
     */
    std::wstring GetOneMemoryProperty(const std::wstring& name);
    /**
     * Collects one misc property.
     * @param name "UserName", "TimeZone", "DefaultLangID", "LastUpdate".
     * @return The value, or "N/A".
     */
    std::wstring GetOneMiscProperty(const std::wstring& name);
    /**
     * Collects one disk property.
     * @param name "FreeDiskSpace", "TotalDiskSpace", "NumberOfFileSystems".
     * @return The value, or "N/A".
     */
    std::wstring GetOneDiskProperty(const std::wstring& name);
    /**
     * Collects one operating-system property.
     * @param name "OSType", "OSBitMode", "OSPlatform", "OSVersion",
     * "OSBuildNum", "OSCsdVersion", "OSOEMId", "PlatformID".
     * @return The value, or "N/A".
     */
    std::wstring GetOneOSProperty(const std::wstring& name);
    /** @} */

    /** @name Which category a name belongs to
     * The names are those listed with GetOne…Property, with one exception that is kept:
     * IsDiskProperty does not claim "NumberOfFileSystems". Names are compared exactly; nothing is
     * collected.
     * @{ */
    /** @param name A name. @return Whether it names a network property. */
    bool IsNetworkProperty(const std::wstring& name) const;
    /** @param name A name. @return Whether it names a processor property. */
    bool IsCPUProperty(const std::wstring& name) const;
    /** @param name A name. @return Whether it names a memory property. */
    bool IsMemoryProperty(const std::wstring& name) const;
    /** @param name A name. @return Whether it names a misc property. */
    bool IsMiscProperty(const std::wstring& name) const;
    /** @param name A name. @return Whether it names a disk property. */
    bool IsDiskProperty(const std::wstring& name) const;
    /** @param name A name. @return Whether it names an operating-system property. */
    bool IsOSProperty(const std::wstring& name) const;
    /** @} */

    /**
     * Collects the processor facts. Count, clock, type and portability are asked for in this order;
     * wstrCPUSerialNumber is never written. On Linux the clock is that of the moment, which follows
     * frequency scaling, of the fastest processor.
     *
     * @param[in,out] info A count that cannot be read leaves its field as it was; an unknown clock
     *                     writes "0 MHz". When neither architecture nor model has a name,
     *                     wstrCPUType becomes empty and wstrIsPortable stays as it was.
     * @return false when neither architecture nor model has a name.
     */
    bool GetCPUInformation(CPUInformation& info);

    /**
     * Collects the memory facts.
     *
     * @param[in,out] info A figure that cannot be read leaves its field as it was. Free memory is
     *                     rounded down in twentieths of the total, or taken exactly when it is no
     *                     more than a twentieth or the total is not known (get_closest_floor).
     * @return false when the free memory cannot be read.
     */
    bool GetMemoryInformation(MemoryInformation& info);

    /**
     * Collects the local file systems whose block size and block count are not zero and known. Free
     * space counts every free block, also those kept for the superuser.
     *
     * Local is on Mac OS X what the system marks so. On Linux it is every mount that can be reached by its
     * path but network and cluster file systems, those that a user's program serves ("fuse", not
     * "fuseblk"), what is mounted below such a one, and memory ("tmpfs", "devtmpfs", "ramfs"). There a file
     * system with several mounts, subvolumes included, counts once, at the first that can be asked.
     *
     * @param[in,out] info The three texts are written anew. File systems are added to
     *                     mapFileSystems, which is not cleared, and a mount point that is there
     *                     already keeps its first value; the texts count it nevertheless. The
     *                     access functions of this class start from an empty map.
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
     * Tells the last known local address.
     *
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

/** @} */

}  // namespace velora_com::qel::sysprops

#endif
