// Which property each field of a record carries, by category.
#pragma once

#include <string>

#include "vlrcomn/property_keys.h"

namespace velora_com::qel::sysprops {

template <typename Record>
struct Field {
    const std::wstring& name;
    std::wstring Record::*value;
};

constexpr Field<NetworkInformation> network_fields[] = {
    {ComputerName_Key, &NetworkInformation::wstrComputerName},
    {DomainName_Key, &NetworkInformation::wstrDomainName},
    {IPAddress_Key, &NetworkInformation::wstrIPAddress},
    {IPHostName_Key, &NetworkInformation::wstrIPHostName},
    {IPXAddress_Key, &NetworkInformation::wstrIPXAddress},
    {NETAddress_Key, &NetworkInformation::wstrNETAddress},
    {SubnetAddress_Key, &NetworkInformation::wstrSubnetAddress},
    {SubnetMask_Key, &NetworkInformation::wstrSubnetMask},
};

constexpr Field<CPUInformation> cpu_fields[] = {
    {CPUType_Key, &CPUInformation::wstrCPUType},
    {NumOfCPU_Key, &CPUInformation::wstrNumOfCPU},
    {CPUSpeed_Key, &CPUInformation::wstrCPUSpeed},
    {CPUPortable_Key, &CPUInformation::wstrIsPortable},
    {CPUSerialNumber_Key, &CPUInformation::wstrCPUSerialNumber},
};

constexpr Field<MemoryInformation> memory_fields[] = {
    {TotalPhysicalMemory_Key, &MemoryInformation::wstrTotalPhysicalMemory},
    {FreeMemory_Key, &MemoryInformation::wstrFreeMemory},
};

constexpr Field<MiscInformation> misc_fields[] = {
    {UserName_Key, &MiscInformation::wstrUserName},
    {TimeZone_Key, &MiscInformation::wstrTimeZone},
    {DefaultLangID_Key, &MiscInformation::wstrDefaultLangID},
    {LastUpdate_Key, &MiscInformation::wstrLastUpdate},
};

constexpr Field<DiskInformation> disk_fields[] = {
    {FreeDiskSpace_Key, &DiskInformation::wstrFreeDiskSpace},
    {TotalDiskSpace_Key, &DiskInformation::wstrTotalDiskSpace},
    {NumFileSystems_Key, &DiskInformation::wstrNumFileSystems},
};

constexpr Field<OSInformation> os_fields[] = {
    {OSType_Key, &OSInformation::wstrOSType},
    {OSBitMode_Key, &OSInformation::wstrOSBitMode},
    {OSPlatform_Key, &OSInformation::wstrOSPlatform},
    {OSVersion_Key, &OSInformation::wstrOSVersion},
    {OSBuildNum_Key, &OSInformation::wstrOSBuildNum},
    {OSCsdVersion_Key, &OSInformation::wstrOSCsdVersion},
    {OSOEMId_Key, &OSInformation::wstrOSOEMId},
    {PlatformId_Key, &OSInformation::wstrPlatformID},
};

// The field that carries `name`, or null.
template <typename Record, size_t count>
const Field<Record>* find_field(const Field<Record> (&fields)[count], const std::wstring& name) {
    for (const Field<Record>& field : fields) {
        if (field.name == name) {
            return &field;
        }
    }
    return nullptr;
}

}  // namespace velora_com::qel::sysprops
