#include "vlrcomn/property_keys.h"

#include "support/early_init.h"

// NOLINTBEGIN(cert-err58-cpp): the interface has strings; without memory for them no program starts
namespace velora_com::qel::sysprops {

// Names of properties.
const std::wstring VLRCOMN_EARLY_INIT SystemInfo_Key = L"SystemInfo";
const std::wstring VLRCOMN_EARLY_INIT PlatformId_Key = L"PlatformID";
const std::wstring VLRCOMN_EARLY_INIT ComputerName_Key = L"ComputerName";
const std::wstring VLRCOMN_EARLY_INIT UserName_Key = L"UserName";
const std::wstring VLRCOMN_EARLY_INIT DomainName_Key = L"DomainName";
const std::wstring VLRCOMN_EARLY_INIT CPUPortable_Key = L"IsPortable";
const std::wstring VLRCOMN_EARLY_INIT CPUType_Key = L"CPUType";
const std::wstring VLRCOMN_EARLY_INIT NumOfCPU_Key = L"NumOfCPU";
const std::wstring VLRCOMN_EARLY_INIT CPUSpeed_Key = L"CPUSpeed";
const std::wstring VLRCOMN_EARLY_INIT CPUSerialNumber_Key = L"CPUSerialNumber";
const std::wstring VLRCOMN_EARLY_INIT OSType_Key = L"OSType";
const std::wstring VLRCOMN_EARLY_INIT OSBitMode_Key = L"OSBitMode";
const std::wstring VLRCOMN_EARLY_INIT OSPlatform_Key = L"OSPlatform";
const std::wstring VLRCOMN_EARLY_INIT OSVersion_Key = L"OSVersion";
const std::wstring VLRCOMN_EARLY_INIT OSBuildNum_Key = L"OSBuildNum";
const std::wstring VLRCOMN_EARLY_INIT OSCsdVersion_Key = L"OSCsdVersion";
const std::wstring VLRCOMN_EARLY_INIT OSOEMId_Key = L"OSOEMId";
const std::wstring VLRCOMN_EARLY_INIT TotalPhysicalMemory_Key = L"TotalPhysicalMemory";
const std::wstring VLRCOMN_EARLY_INIT FreeMemory_Key = L"FreeMemory";
const std::wstring VLRCOMN_EARLY_INIT IPAddress_Key = L"IPAddress";
const std::wstring VLRCOMN_EARLY_INIT IPHostName_Key = L"IPHostName";
const std::wstring VLRCOMN_EARLY_INIT IPXAddress_Key = L"IPXAddress";
const std::wstring VLRCOMN_EARLY_INIT NETAddress_Key = L"NETAddress";
const std::wstring VLRCOMN_EARLY_INIT SubnetAddress_Key = L"SubnetAddress";
const std::wstring VLRCOMN_EARLY_INIT SubnetMask_Key = L"SubnetMask";
const std::wstring VLRCOMN_EARLY_INIT LastUpdate_Key = L"LastUpdate";
const std::wstring VLRCOMN_EARLY_INIT TimeZone_Key = L"TimeZone";
const std::wstring VLRCOMN_EARLY_INIT DefaultLangID_Key = L"DefaultLangID";
const std::wstring VLRCOMN_EARLY_INIT TotalDiskSpace_Key = L"TotalDiskSpace";
const std::wstring VLRCOMN_EARLY_INIT FreeDiskSpace_Key = L"FreeDiskSpace";
const std::wstring VLRCOMN_EARLY_INIT NumFileSystems_Key = L"NumberOfFileSystems";

// Names of additional properties.
const std::wstring VLRCOMN_EARLY_INIT BootTime_Key = L"BootTime";

// Words of the keys of one file system.
const std::wstring VLRCOMN_EARLY_INIT FileSystemName = L"FileSystem";
const std::wstring VLRCOMN_EARLY_INIT FileSystemFreeSpace = L"Free_Disk_Space_in_MB";
const std::wstring VLRCOMN_EARLY_INIT FileSystemTotalSpace = L"Total_Disk_Space_in_MB";

// Values that stand for a missing fact.
const std::wstring VLRCOMN_EARLY_INIT DefaultProp_Val = L"N/A";
const std::wstring VLRCOMN_EARLY_INIT unknown = L"Unknown";
const std::wstring VLRCOMN_EARLY_INIT unknown_domain = L"UnKnownDomain";

// Names of operating systems, values of OSType_Key.
const std::wstring VLRCOMN_EARLY_INIT os_mac = L"Mac OS X";
const std::wstring VLRCOMN_EARLY_INIT os_linux = L"Linux";
const std::wstring VLRCOMN_EARLY_INIT os_solaris = L"SunOS Sparc";
const std::wstring VLRCOMN_EARLY_INIT os_hpux = L"HP-UX";
const std::wstring VLRCOMN_EARLY_INIT os_aix = L"AIX";
const std::wstring VLRCOMN_EARLY_INIT os_pfa = L"Perimeter Filtering Appliance";

// Codes of platforms, values of PlatformId_Key.
const std::wstring VLRCOMN_EARLY_INIT platform_mac = L"MAC";
const std::wstring VLRCOMN_EARLY_INIT platform_linux = L"LINUX";
const std::wstring VLRCOMN_EARLY_INIT platform_solaris = L"SLR";
const std::wstring VLRCOMN_EARLY_INIT platform_hpux = L"HPUX";
const std::wstring VLRCOMN_EARLY_INIT platform_aix = L"AIX";
const std::wstring VLRCOMN_EARLY_INIT platform_pfa = L"PFA";

// Makers of hardware, values of OSOEMId_Key.
const std::wstring VLRCOMN_EARLY_INIT os_mac_oemid = L"Apple Macintosh";
const std::wstring VLRCOMN_EARLY_INIT os_solaris_oemid = L"Solaris Sparc";
const std::wstring VLRCOMN_EARLY_INIT os_hpux_oemid = L"Hpux PA-RISC";
const std::wstring VLRCOMN_EARLY_INIT os_aix_oemid = L"AIX PowerPC";

// Editions, values of OSPlatform_Key.
const std::wstring VLRCOMN_EARLY_INIT workstation = L"Linux";
const std::wstring VLRCOMN_EARLY_INIT p_workstation = L"Workstation";
const std::wstring VLRCOMN_EARLY_INIT p_server = L"Server";

// Words and files that tell Linux distributions apart.
const std::wstring VLRCOMN_EARLY_INIT suse_distribution = L"SuSE";
const std::wstring VLRCOMN_EARLY_INIT redhat_distribution = L"redhat";
const std::wstring VLRCOMN_EARLY_INIT novell_distribution = L"Novell";
const std::string VLRCOMN_EARLY_INIT redhat_release_file = "/etc/redhat-release";
const std::string VLRCOMN_EARLY_INIT ubuntu_release_file = "/etc/lsb-release";
const std::string VLRCOMN_EARLY_INIT suse_release_file = "/etc/SuSE-release";
const std::string VLRCOMN_EARLY_INIT server_strings = ", Server , Enterprise , AS , ES , WS ";
const std::string VLRCOMN_EARLY_INIT suse_server_strings = ", Server ";
const std::wstring VLRCOMN_EARLY_INIT os_platform_ini = L"/etc/qel.d/osinfo.ini";

}  // namespace velora_com::qel::sysprops
// NOLINTEND(cert-err58-cpp)
