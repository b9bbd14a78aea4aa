/**
 * @file
 * @brief The vocabulary of the property report: names of properties, values that stand for facts,
 * and the six records that hold what was collected.
 *
 * The report maps a wide property name to a wide value. A collector (system_properties.h) fills a
 * record; the report copies the record's fields under the names given here. The constants of other
 * systems belong to the vocabulary too, so that every part of the agent and its server spells them
 * alike; the collectors of this library do not report them.
 *
 * Lifetime: the constants are complete once the library is loaded, before any other code of the
 * library or of a program that links with it runs, static initialisers included. They are gone when
 * the process destroys its static objects: code that runs at exit must not use them. They are never
 * written to, so any thread may read them.
 *
 * The records are plain values: copy them freely, and let two threads fill two records at once, but
 * never one.
 */
#ifndef VLRCOMN_PROPERTY_KEYS_H
#define VLRCOMN_PROPERTY_KEYS_H

#include <map>
#include <string>
#include <utility>

#include "vlrcomn/types.h"

namespace velora_com::qel::sysprops {

/** @name Names of properties
 * The keys of the property report, compared as whole texts, case-sensitively.
 * @{ */
/** "SystemInfo". Reserved for the set of system properties as a whole; no operation answers it. */
extern VLRCOMN_API const std::wstring SystemInfo_Key;
/** "PlatformID". Code of the platform (OSInformation::wstrPlatformID). */
extern VLRCOMN_API const std::wstring PlatformId_Key;
/** "ComputerName". Short host name (NetworkInformation::wstrComputerName). */
extern VLRCOMN_API const std::wstring ComputerName_Key;
/** "UserName". Logged-on users (MiscInformation::wstrUserName). */
extern VLRCOMN_API const std::wstring UserName_Key;
/** "DomainName". NIS domain (NetworkInformation::wstrDomainName). */
extern VLRCOMN_API const std::wstring DomainName_Key;
/**
 * "IsPortable". Whether the machine is portable (CPUInformation::wstrIsPortable). The text does not
 * follow the constant's name, and only the two-map ISysProps::GetAllSystemProperties reports it;
 * both are kept.
 */
extern VLRCOMN_API const std::wstring CPUPortable_Key;
/** "CPUType". Architecture and model of the processor (CPUInformation::wstrCPUType). */
extern VLRCOMN_API const std::wstring CPUType_Key;
/** "NumOfCPU". Number of processors (CPUInformation::wstrNumOfCPU). */
extern VLRCOMN_API const std::wstring NumOfCPU_Key;
/** "CPUSpeed". Clock of the processor (CPUInformation::wstrCPUSpeed). */
extern VLRCOMN_API const std::wstring CPUSpeed_Key;
/** "CPUSerialNumber". Serial number of the machine (CPUInformation::wstrCPUSerialNumber). */
extern VLRCOMN_API const std::wstring CPUSerialNumber_Key;
/** "OSType". Name of the operating system (OSInformation::wstrOSType). */
extern VLRCOMN_API const std::wstring OSType_Key;
/** "OSBitMode". Word size of the operating system (OSInformation::wstrOSBitMode). */
extern VLRCOMN_API const std::wstring OSBitMode_Key;
/** "OSPlatform". Workstation or server edition (OSInformation::wstrOSPlatform). */
extern VLRCOMN_API const std::wstring OSPlatform_Key;
/** "OSVersion". Version of the operating system (OSInformation::wstrOSVersion). */
extern VLRCOMN_API const std::wstring OSVersion_Key;
/** "OSBuildNum". Build of the operating system (OSInformation::wstrOSBuildNum). */
extern VLRCOMN_API const std::wstring OSBuildNum_Key;
/** "OSCsdVersion". Service-pack level (OSInformation::wstrOSCsdVersion). */
extern VLRCOMN_API const std::wstring OSCsdVersion_Key;
/** "OSOEMId". Maker and family of the hardware (OSInformation::wstrOSOEMId). */
extern VLRCOMN_API const std::wstring OSOEMId_Key;
/** "TotalPhysicalMemory". Installed memory (MemoryInformation::wstrTotalPhysicalMemory). */
extern VLRCOMN_API const std::wstring TotalPhysicalMemory_Key;
/** "FreeMemory". Free memory (MemoryInformation::wstrFreeMemory). */
extern VLRCOMN_API const std::wstring FreeMemory_Key;
/** "IPAddress". The chosen IP address (NetworkInformation::wstrIPAddress). */
extern VLRCOMN_API const std::wstring IPAddress_Key;
/** "IPHostName". Fully qualified host name (NetworkInformation::wstrIPHostName). */
extern VLRCOMN_API const std::wstring IPHostName_Key;
/** "IPXAddress". IPX address (NetworkInformation::wstrIPXAddress). */
extern VLRCOMN_API const std::wstring IPXAddress_Key;
/** "NETAddress". MAC address of the chosen interface (NetworkInformation::wstrNETAddress). */
extern VLRCOMN_API const std::wstring NETAddress_Key;
/** "SubnetAddress". Subnet of the chosen address (NetworkInformation::wstrSubnetAddress). */
extern VLRCOMN_API const std::wstring SubnetAddress_Key;
/** "SubnetMask". Mask of the chosen address (NetworkInformation::wstrSubnetMask). */
extern VLRCOMN_API const std::wstring SubnetMask_Key;
/** "LastUpdate". When these properties were collected (MiscInformation::wstrLastUpdate). */
extern VLRCOMN_API const std::wstring LastUpdate_Key;
/** "TimeZone". Name of the time zone (MiscInformation::wstrTimeZone). */
extern VLRCOMN_API const std::wstring TimeZone_Key;
/** "DefaultLangID". Language identifier (MiscInformation::wstrDefaultLangID). */
extern VLRCOMN_API const std::wstring DefaultLangID_Key;
/** "TotalDiskSpace". Space of all counted file systems (DiskInformation::wstrTotalDiskSpace). */
extern VLRCOMN_API const std::wstring TotalDiskSpace_Key;
/** "FreeDiskSpace". Free space of all counted file systems (DiskInformation::wstrFreeDiskSpace). */
extern VLRCOMN_API const std::wstring FreeDiskSpace_Key;
/**
 * "NumberOfFileSystems". How many file systems were counted (DiskInformation::wstrNumFileSystems).
 * The text does not follow the constant's name; kept.
 */
extern VLRCOMN_API const std::wstring NumFileSystems_Key;
/** @} */

/** @name Words of the keys of one file system
 * A file system mounted on N has the two keys `FileSystem"N" Total_Disk_Space_in_MB` and
 * `FileSystem"N" Free_Disk_Space_in_MB`: first word, N between double quotes, one blank, last word.
 * N stands as it is, quotes and blanks included.
 * @{ */
/** "FileSystem". First word. */
extern VLRCOMN_API const std::wstring FileSystemName;
/** "Free_Disk_Space_in_MB". Last word of the key for free space. */
extern VLRCOMN_API const std::wstring FileSystemFreeSpace;
/** "Total_Disk_Space_in_MB". Last word of the key for total space. */
extern VLRCOMN_API const std::wstring FileSystemTotalSpace;
/** @} */

/** @name Values that stand for a missing fact
 * @{ */
/** "N/A". Value of every property that was not collected. */
extern VLRCOMN_API const std::wstring DefaultProp_Val;
/** "Unknown". Value of a fact that was looked for and not found. */
extern VLRCOMN_API const std::wstring unknown;
/** "UnKnownDomain". Domain name when none is found; the capital K belongs to it. */
extern VLRCOMN_API const std::wstring unknown_domain;
/** @} */

/** @name Names of operating systems, values of OSType_Key
 * This library reports ::os_mac; the others are vocabulary shared with the agent on other systems.
 * @{ */
/** "Mac OS X". Mac OS X. */
extern VLRCOMN_API const std::wstring os_mac;
/** "Linux". Linux. */
extern VLRCOMN_API const std::wstring os_linux;
/** "SunOS Sparc". Solaris. */
extern VLRCOMN_API const std::wstring os_solaris;
/** "HP-UX". HP-UX. */
extern VLRCOMN_API const std::wstring os_hpux;
/** "AIX". AIX. */
extern VLRCOMN_API const std::wstring os_aix;
/** "Perimeter Filtering Appliance". The filtering appliance. */
extern VLRCOMN_API const std::wstring os_pfa;
/** @} */

/** @name Codes of platforms, values of PlatformId_Key
 * This library reports ::platform_mac.
 * @{ */
/** "MAC". Mac OS X. */
extern VLRCOMN_API const std::wstring platform_mac;
/** "LINUX". Linux. */
extern VLRCOMN_API const std::wstring platform_linux;
/** "SLR". Solaris. */
extern VLRCOMN_API const std::wstring platform_solaris;
/** "HPUX". HP-UX. */
extern VLRCOMN_API const std::wstring platform_hpux;
/** "AIX". AIX. */
extern VLRCOMN_API const std::wstring platform_aix;
/** "PFA". The filtering appliance. */
extern VLRCOMN_API const std::wstring platform_pfa;
/** @} */

/** @name Makers of hardware, values of OSOEMId_Key
 * This library reports ::os_mac_oemid.
 * @{ */
/** "Apple Macintosh". Mac OS X. */
extern VLRCOMN_API const std::wstring os_mac_oemid;
/** "Solaris Sparc". Solaris. */
extern VLRCOMN_API const std::wstring os_solaris_oemid;
/** "Hpux PA-RISC". HP-UX. */
extern VLRCOMN_API const std::wstring os_hpux_oemid;
/** "AIX PowerPC". AIX. */
extern VLRCOMN_API const std::wstring os_aix_oemid;
/** @} */

/** @name Editions, values of OSPlatform_Key
 * @{ */
/** "Linux". Workstation word of the Linux collector; this library does not report it. */
extern VLRCOMN_API const std::wstring workstation;
/** "Workstation". A client system. */
extern VLRCOMN_API const std::wstring p_workstation;
/** "Server". A server system. */
extern VLRCOMN_API const std::wstring p_server;
/** @} */

/** @name Words and files that tell Linux distributions apart
 * Vocabulary shared with the agent on other systems; this library reads none of these files.
 * @{ */
/** "SuSE". Distribution word. */
extern VLRCOMN_API const std::wstring suse_distribution;
/** "redhat". Distribution word. */
extern VLRCOMN_API const std::wstring redhat_distribution;
/** "Novell". Distribution word. */
extern VLRCOMN_API const std::wstring novell_distribution;
/** "/etc/redhat-release". Release file (narrow). */
extern VLRCOMN_API const std::string redhat_release_file;
/** "/etc/lsb-release". Release file (narrow). */
extern VLRCOMN_API const std::string ubuntu_release_file;
/** "/etc/SuSE-release". Release file (narrow). */
extern VLRCOMN_API const std::string suse_release_file;
/**
 * ", Server , Enterprise , AS , ES , WS ". Words that mark a server edition in a release file,
 * between commas (narrow).
 */
extern VLRCOMN_API const std::string server_strings;
/** ", Server ". The same for ::suse_release_file (narrow). */
extern VLRCOMN_API const std::string suse_server_strings;
/** "/etc/qel.d/osinfo.ini". Operating-system information file. */
extern VLRCOMN_API const std::wstring os_platform_ini;
/** @} */

/**
 * Facts about the processors. Made with "N/A" in every field, but for #wstrIsPortable, which starts
 * empty.
 */
struct VLRCOMN_API CPUInformation {
    CPUInformation();
    CPUInformation(const CPUInformation&) = default;
    CPUInformation& operator=(const CPUInformation&) = default;
    ~CPUInformation();

    /**
     * Architecture, a blank, and model, for example "PowerPC G4"; the one that is known when the
     * other is not; empty when neither is.
     */
    std::wstring wstrCPUType;
    /** Nominal clock in whole MHz, for example "1333 MHz"; "0 MHz" when it is not known. */
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
    NetworkInformation(const NetworkInformation&) = default;
    NetworkInformation& operator=(const NetworkInformation&) = default;
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
    MemoryInformation(const MemoryInformation&) = default;
    MemoryInformation& operator=(const MemoryInformation&) = default;
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
    OSInformation(const OSInformation&) = default;
    OSInformation& operator=(const OSInformation&) = default;
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
 * Space of the local file systems, in MB of 1,048,576 bytes with two decimals, for example
 * "100.00". Made with "N/A" in the three texts and with an empty map.
 */
struct VLRCOMN_API DiskInformation {
    DiskInformation();
    DiskInformation(const DiskInformation&) = default;
    DiskInformation& operator=(const DiskInformation&) = default;
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
    MiscInformation(const MiscInformation&) = default;
    MiscInformation& operator=(const MiscInformation&) = default;
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

}  // namespace velora_com::qel::sysprops

#endif
