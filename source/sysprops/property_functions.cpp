// One exported function for each property.
#include "support/boundary.h"
#include "vlrcomn/system_properties.h"

namespace sysprops = velora_com::qel::sysprops;

namespace {

std::wstring property(const std::wstring& name) {
    return velora_com::qel::support::or_failure(sysprops::DefaultProp_Val, [&] {
        return sysprops::ISysProps().GetOneSystemProperty(name);
    });
}

std::wstring not_available() {
    return velora_com::qel::support::or_failure(sysprops::DefaultProp_Val,
                                                [] { return sysprops::DefaultProp_Val; });
}

}  // namespace

std::wstring orumcomn_get_cpu_type() {
    return property(sysprops::CPUType_Key);
}
std::wstring orumcomn_get_cpu_speed() {
    return property(sysprops::CPUSpeed_Key);
}
std::wstring orumcomn_get_number_of_processors() {
    return property(sysprops::NumOfCPU_Key);
}
std::wstring orumcomn_get_cpu_serial_number() {
    return property(sysprops::CPUSerialNumber_Key);
}
std::wstring orumcomn_get_domain_name() {
    return property(sysprops::DomainName_Key);
}
std::wstring orumcomn_get_computer_name() {
    return property(sysprops::ComputerName_Key);
}
std::wstring orumcomn_get_ip_address() {
    return property(sysprops::IPAddress_Key);
}
std::wstring orumcomn_get_subnet_address() {
    return property(sysprops::SubnetAddress_Key);
}
std::wstring orumcomn_get_subnet_mask() {
    return property(sysprops::SubnetMask_Key);
}
std::wstring orumcomn_get_mac_address() {
    return property(sysprops::NETAddress_Key);
}
std::wstring orumcomn_get_ipx_address() {
    return property(sysprops::IPXAddress_Key);
}
std::wstring orumcomn_get_fqdn_address() {
    return property(sysprops::IPHostName_Key);
}
std::wstring orumcomn_get_total_memory() {
    return property(sysprops::TotalPhysicalMemory_Key);
}
std::wstring orumcomn_get_free_memory() {
    return property(sysprops::FreeMemory_Key);
}
std::wstring orumcomn_get_number_of_file_systems() {
    return property(sysprops::NumFileSystems_Key);
}
std::wstring orumcomn_get_total_disk_space() {
    return property(sysprops::TotalDiskSpace_Key);
}
std::wstring orumcomn_get_free_disk_space() {
    return property(sysprops::FreeDiskSpace_Key);
}
std::wstring orumcomn_get_os_type() {
    return property(sysprops::OSType_Key);
}
std::wstring orumcomn_get_os_platform() {
    return property(sysprops::OSPlatform_Key);
}
std::wstring orumcomn_get_os_version() {
    return property(sysprops::OSVersion_Key);
}
std::wstring orumcomn_get_os_service_pack() {
    return property(sysprops::OSCsdVersion_Key);
}
std::wstring orumcomn_get_os_build_number() {
    return property(sysprops::OSBuildNum_Key);
}
std::wstring orumcomn_get_os_oem_id() {
    return property(sysprops::OSOEMId_Key);
}
std::wstring orumcomn_get_os_platform_id() {
    return property(sysprops::PlatformId_Key);
}
std::wstring orumcomn_get_user_name() {
    return property(sysprops::UserName_Key);
}
std::wstring orumcomn_get_time_zone() {
    return property(sysprops::TimeZone_Key);
}
std::wstring orumcomn_get_language() {
    return property(sysprops::DefaultLangID_Key);
}
std::wstring orumcomn_get_last_update_time() {
    return property(sysprops::LastUpdate_Key);
}
std::wstring orumcomn_get_boot_time() {
    return sysprops::ISysProps::GetOneAdditionalProperty(sysprops::BootTime_Key);
}

std::wstring orumcomn_get_file_system_name(int) {
    return not_available();
}
// NOLINTBEGIN(performance-unnecessary-value-param): the interface takes copies
std::wstring orumcomn_get_file_system_free_space_by_name(std::wstring) {
    return not_available();
}
std::wstring orumcomn_get_file_system_total_space_by_name(std::wstring) {
    return not_available();
}
// NOLINTEND(performance-unnecessary-value-param)
