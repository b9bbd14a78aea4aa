/**
 * @file
 * @brief One function for each property of this machine.
 *
 * Each collects anew and returns the value of the property named as its result; property_keys.h
 * describes the values and system_properties.h, which includes this header, what a query may do
 * besides reading the machine's state. Ask for the whole report there rather than for many values here.
 *
 * The functions have C++ linkage. Any thread may call them at any time. Nothing is thrown: a value that
 * is not found, or for which memory runs out, reads "N/A" or what property_keys.h says of its field.
 */
#ifndef VLRCOMN_PROPERTY_FUNCTIONS_H
#define VLRCOMN_PROPERTY_FUNCTIONS_H

#include <string>

#include "vlrcomn/types.h"

/** @addtogroup properties
 * @{ */

/** Architecture and model of the processor. @return the value of "CPUType" */
VLRCOMN_API std::wstring orumcomn_get_cpu_type();
/** Clock of the processor. @return the value of "CPUSpeed" */
VLRCOMN_API std::wstring orumcomn_get_cpu_speed();
/** Number of processors. @return the value of "NumOfCPU" */
VLRCOMN_API std::wstring orumcomn_get_number_of_processors();
/** Serial number of the machine. @return the value of "CPUSerialNumber" */
VLRCOMN_API std::wstring orumcomn_get_cpu_serial_number();
/** NIS domain. @return the value of "DomainName" */
VLRCOMN_API std::wstring orumcomn_get_domain_name();
/** Short host name. @return the value of "ComputerName" */
VLRCOMN_API std::wstring orumcomn_get_computer_name();
/** The chosen IP address. @return the value of "IPAddress" */
VLRCOMN_API std::wstring orumcomn_get_ip_address();
/** Subnet of the chosen address. @return the value of "SubnetAddress" */
VLRCOMN_API std::wstring orumcomn_get_subnet_address();
/** Mask of the chosen address. @return the value of "SubnetMask" */
VLRCOMN_API std::wstring orumcomn_get_subnet_mask();
/** MAC address of the chosen interface. @return the value of "NETAddress" */
VLRCOMN_API std::wstring orumcomn_get_mac_address();
/** IPX address. @return the value of "IPXAddress" */
VLRCOMN_API std::wstring orumcomn_get_ipx_address();
/** Fully qualified host name. @return the value of "IPHostName" */
VLRCOMN_API std::wstring orumcomn_get_fqdn_address();
/** Installed memory. @return the value of "TotalPhysicalMemory" */
VLRCOMN_API std::wstring orumcomn_get_total_memory();
/** Free memory. @return the value of "FreeMemory" */
VLRCOMN_API std::wstring orumcomn_get_free_memory();
/** Number of file systems, which no category claims: kept. @return always empty */
VLRCOMN_API std::wstring orumcomn_get_number_of_file_systems();
/** Space of all counted file systems. @return the value of "TotalDiskSpace" */
VLRCOMN_API std::wstring orumcomn_get_total_disk_space();
/** Free space of all counted file systems. @return the value of "FreeDiskSpace" */
VLRCOMN_API std::wstring orumcomn_get_free_disk_space();
/** Name of the operating system. @return the value of "OSType" */
VLRCOMN_API std::wstring orumcomn_get_os_type();
/** Workstation or server edition. @return the value of "OSPlatform" */
VLRCOMN_API std::wstring orumcomn_get_os_platform();
/** Version of the operating system. @return the value of "OSVersion" */
VLRCOMN_API std::wstring orumcomn_get_os_version();
/** Service-pack level. @return the value of "OSCsdVersion" */
VLRCOMN_API std::wstring orumcomn_get_os_service_pack();
/** Build of the operating system. @return the value of "OSBuildNum" */
VLRCOMN_API std::wstring orumcomn_get_os_build_number();
/** Maker and family of the hardware. @return the value of "OSOEMId" */
VLRCOMN_API std::wstring orumcomn_get_os_oem_id();
/** Code of the platform. @return the value of "PlatformID" */
VLRCOMN_API std::wstring orumcomn_get_os_platform_id();
/**
 * Logged-on users. A namesake with C linkage and arguments is in agent_identity.h.
 * @return the value of "UserName"
 */
VLRCOMN_API std::wstring orumcomn_get_user_name();
/** Name of the time zone. @return the value of "TimeZone" */
VLRCOMN_API std::wstring orumcomn_get_time_zone();
/** Language identifier. @return the value of "DefaultLangID" */
VLRCOMN_API std::wstring orumcomn_get_language();
/** When the properties were collected: now. @return the value of "LastUpdate" */
VLRCOMN_API std::wstring orumcomn_get_last_update_time();
/** When the system started, in seconds since 1970-01-01 UTC. @return the value of "BootTime" */
VLRCOMN_API std::wstring orumcomn_get_boot_time();

/** @name Placeholders on this platform
 * They collect nothing. The figures of each file system are in the second map of
 * velora_com::qel::sysprops::ISysProps::GetAllSystemProperties.
 * @{ */
/** Name of a file system. @param index ignored @return "N/A" */
VLRCOMN_API std::wstring orumcomn_get_file_system_name(int index);
/** Free space of a file system. @param name ignored @return "N/A" */
VLRCOMN_API std::wstring orumcomn_get_file_system_free_space_by_name(std::wstring name);
/** Size of a file system. @param name ignored @return "N/A" */
VLRCOMN_API std::wstring orumcomn_get_file_system_total_space_by_name(std::wstring name);
/** @} */

/**
 * Tells the library which of the machine's addresses its agent last used:
 * velora_com::qel::sysprops::ISysProps::updateLocalIP.
 *
 * @param address any text; empty means that none is known
 */
VLRCOMN_API void orumcomn_set_local_ip_addr(std::wstring address);

/** @} */

#endif
