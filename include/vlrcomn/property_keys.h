/**
 * @file
 * @brief The vocabulary of the property report: names of properties and values that stand for facts.
 *
 * The report maps a wide property name to a wide value. A collector (system_properties.h) fills a
 * record (property_records.h, which comes with this header); the report copies the record's fields
 * under the names given here. The constants of other systems belong to the vocabulary too, so that
 * every part of the agent and its server spells them alike; the collectors of this library do not
 * report them.
 *
 * Lifetime: the constants are complete once the library is loaded, before any other code of the
 * library or of a program that links with it runs, static initialisers included. They are gone when
 * the process destroys its static objects: code that runs at exit must not use them. They are never
 * written to, so any thread may read them.
 */
#ifndef VLRCOMN_PROPERTY_KEYS_H
#define VLRCOMN_PROPERTY_KEYS_H

#include <string>

#include "vlrcomn/property_records.h"
#include "vlrcomn/types.h"

namespace velora_com::qel::sysprops {

/** @addtogroup properties
 * @{ */

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

/** @name Names of additional properties
 * Asked for with ISysProps::GetOneAdditionalProperty or by their functions; no report, record or category has
 * them.
 * @{ */
/**
 * "BootTime". When the system started: whole seconds since 1970-01-01 00:00:00 UTC in decimal, up to 64 bits
 * wide; "N/A" when the system does not tell. Systems reckon it back from their clock, so that setting the
 * clock moves it and a correction may by a second. A container reads that of its host.
 */
extern VLRCOMN_API const std::wstring BootTime_Key;
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
 * This library reports os_mac; the others are vocabulary shared with the agent on other systems.
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
 * This library reports platform_mac.
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
 * This library reports os_mac_oemid.
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
/** ", Server ". The same for suse_release_file (narrow). */
extern VLRCOMN_API const std::string suse_server_strings;
/** "/etc/qel.d/osinfo.ini". Operating-system information file. */
extern VLRCOMN_API const std::wstring os_platform_ini;
/** @} */

/** @} */

}  // namespace velora_com::qel::sysprops

#endif
