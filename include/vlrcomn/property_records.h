/**
 * @file
 * @brief The six records that hold what the collectors found, as the text of the report.
 *
 * Part of property_keys.h. The records are plain values: copy them freely, and let two threads fill two
 * records at once, but never one.
 */
#ifndef VLRCOMN_PROPERTY_RECORDS_H
#define VLRCOMN_PROPERTY_RECORDS_H

#include <map>
#include <string>
#include <utility>

#include "vlrcomn/types.h"

namespace velora_com::qel::sysprops {

/** @addtogroup properties
 * @{ */

/**
 * Facts about the processors. Made with "N/A" in every field, but for #wstrIsPortable, which starts
 * empty.
 */
struct VLRCOMN_API CPUInformation {
    CPUInformation();
    CPUInformation(const CPUInformation& other) = default;
    CPUInformation& operator=(const CPUInformation& other) = default;
    ~CPUInformation();

    /**
     * Architecture, a blank, and model, for example "PowerPC G4"; the one that is known when the
     * other is not; empty when neither is.
     */
    std::wstring wstrCPUType;
    /** Clock in whole MHz, for example "1333 MHz"; "0 MHz" when it is not known. Nominal on Mac OS X; on
     * Linux it follows frequency scaling. */
    std::wstring wstrCPUSpeed;
    /** Number of processors, decimal. */
    std::wstring wstrNumOfCPU;
    /** Serial number of the machine. No collector of this library writes it: it stays "N/A". */
    std::wstring wstrCPUSerialNumber;
    /** "1" for a portable computer, "0" for another, "-1" when the model cannot be read. */
    std::wstring wstrIsPortable;
};

/**
 * Names of the machine, and one IP address with what belongs to it. Made with "N/A" in every field.
 */
struct VLRCOMN_API NetworkInformation {
    NetworkInformation();
    NetworkInformation(const NetworkInformation& other) = default;
    NetworkInformation& operator=(const NetworkInformation& other) = default;
    ~NetworkInformation();

    /** NIS domain, or "UnKnownDomain". */
    std::wstring wstrDomainName;
    /** Host name up to its first dot, or "N/A". */
    std::wstring wstrComputerName;
    /**
     * The chosen address: dotted decimal, or eight groups of IPv6 without zero padding and without
     * scope, for example "fe80:0:0:0:0:0:0:1". ISysProps::GetNetworkInformation tells how it is
     * chosen.
     */
    std::wstring wstrIPAddress;
    /** The chosen address with its host part cleared, in the same form. */
    std::wstring wstrSubnetAddress;
    /** Mask of the chosen address, in the same form. */
    std::wstring wstrSubnetMask;
    /** MAC address of the interface that has the address: 12 lower-case hexadecimal digits. */
    std::wstring wstrNETAddress;
    /** Always "N/A": there is no IPX here. */
    std::wstring wstrIPXAddress;
    /** Host name with its domain as the resolver gives it, or "N/A". */
    std::wstring wstrIPHostName;
};

/** Memory in bytes, decimal. Made with "N/A" in both fields. */
struct VLRCOMN_API MemoryInformation {
    MemoryInformation();
    MemoryInformation(const MemoryInformation& other) = default;
    MemoryInformation& operator=(const MemoryInformation& other) = default;
    ~MemoryInformation();

    /** Installed memory. */
    std::wstring wstrTotalPhysicalMemory;
    /** Memory that holds nothing at all, rounded down in twentieths of the total
     * (get_closest_floor). */
    std::wstring wstrFreeMemory;
};

/**
 * Facts about the operating system. Made with "N/A" in every field, but for #wstrPlatformID, which
 * starts empty.
 */
struct VLRCOMN_API OSInformation {
    OSInformation();
    OSInformation(const OSInformation& other) = default;
    OSInformation& operator=(const OSInformation& other) = default;
    ~OSInformation();

    /** Name of the operating system: always "Mac OS X". */
    std::wstring wstrOSType;
    /** "Server" or "Workstation". */
    std::wstring wstrOSPlatform;
    /** Version, its first two or three numbers, for example "10.4.11". */
    std::wstring wstrOSVersion;
    /** Third number of the version; stays "N/A" when there is none. */
    std::wstring wstrOSCsdVersion;
    /** Build, for example "8S165"; the whole version when the system names no build. */
    std::wstring wstrOSBuildNum;
    /** Maker of the hardware: always "Apple Macintosh". */
    std::wstring wstrOSOEMId;
    /** Code of the platform: always "MAC" once collected. */
    std::wstring wstrPlatformID;
    /** "1" for 64 bits, "0" for 32 bits, "-1" when it cannot be told. */
    std::wstring wstrOSBitMode;
};

/**
 * Space of the local file systems (ISysProps::GetDiskInformation tells which), in MB of 1,048,576 bytes with
 * two decimals, for example "100.00". Made with "N/A" in the three texts and with an empty map.
 */
struct VLRCOMN_API DiskInformation {
    DiskInformation();
    DiskInformation(const DiskInformation& other) = default;
    DiskInformation& operator=(const DiskInformation& other) = default;
    ~DiskInformation();

    /** Sum of the sizes. */
    std::wstring wstrTotalDiskSpace;
    /** Sum of the free space, rounded down in twentieths of the total (get_closest_floor). */
    std::wstring wstrFreeDiskSpace;
    /** How many file systems were counted, decimal. */
    std::wstring wstrNumFileSystems;
    /** Mount point to (total, free rounded down in twentieths of this total). */
    std::map<std::wstring, std::pair<std::wstring, std::wstring>> mapFileSystems;
};

/** Users, zone, language and time. Made with "N/A" in every field. */
struct VLRCOMN_API MiscInformation {
    MiscInformation();
    MiscInformation(const MiscInformation& other) = default;
    MiscInformation& operator=(const MiscInformation& other) = default;
    ~MiscInformation();

    /** Logged-on users, separated by commas, at most 128 characters; "NA" (no slash) when nobody
     * is. */
    std::wstring wstrUserName;
    /** Abbreviation of the local zone's standard time, for example "CET". */
    std::wstring wstrTimeZone;
    /** "0411" for a locale of ja_JP, "0809" for one of en_UK (as spelled here), else "0409". */
    std::wstring wstrDefaultLangID;
    /** Local time of the collection, "MM/DD/YYYY hh:mm:ss". */
    std::wstring wstrLastUpdate;
};

/** @} */

}  // namespace velora_com::qel::sysprops

#endif
