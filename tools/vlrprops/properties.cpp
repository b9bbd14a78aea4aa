#include "properties.h"

#include <strings.h>

#include "text.h"
#include "vlrcomn/property_keys.h"

namespace vlrprops {

namespace keys = velora_com::qel::sysprops;

const std::vector<Group>& groups() {
    static const std::vector<Group> all = {
        {"Computer",
         {
             {keys::ComputerName_Key, "host name up to its first dot", ""},
             {keys::IPHostName_Key, "host name with its domain", ""},
             {keys::DomainName_Key, "NIS domain", ""},
             {keys::CPUPortable_Key, "1 portable, 0 not, -1 not known", ""},
         }},
        {"Processor",
         {
             {keys::CPUType_Key, "architecture and model", ""},
             {keys::CPUSpeed_Key, "clock, on Linux that of the moment", ""},
             {keys::NumOfCPU_Key, "number of processors", ""},
             {keys::CPUSerialNumber_Key, "serial number of the machine", ""},
         }},
        {"Memory",
         {
             {keys::TotalPhysicalMemory_Key, "installed memory in bytes", " bytes"},
             {keys::FreeMemory_Key, "free memory, in steps of a twentieth of the total", " bytes"},
         }},
        {"Operating system",
         {
             {keys::OSType_Key, "name of the agent's platform", ""},
             {keys::OSPlatform_Key, "Workstation or Server", ""},
             {keys::OSVersion_Key, "version", ""},
             {keys::OSCsdVersion_Key, "third number of the version", ""},
             {keys::OSBuildNum_Key, "build", ""},
             {keys::OSBitMode_Key, "1 for 64 bits, 0 for 32 bits, -1 not known", ""},
             {keys::OSOEMId_Key, "maker of the platform's hardware", ""},
             {keys::PlatformId_Key, "code of the agent's platform", ""},
         }},
        {"Disks",
         {
             {keys::TotalDiskSpace_Key, "space of all local file systems in MB", " MB"},
             {keys::FreeDiskSpace_Key, "free space, in steps of a twentieth of the total", " MB"},
             {keys::NumFileSystems_Key, "number of local file systems", ""},
         }},
        {"Network",
         {
             {keys::IPAddress_Key, "the address that stands for this machine", ""},
             {keys::SubnetAddress_Key, "its subnet", ""},
             {keys::SubnetMask_Key, "its subnet mask", ""},
             {keys::NETAddress_Key, "MAC address of its interface", ""},
             {keys::IPXAddress_Key, "IPX address", ""},
         }},
        {"User",
         {
             {keys::UserName_Key, "logged-on users, NA when there is none", ""},
             {keys::TimeZone_Key, "abbreviation of the time zone", ""},
             {keys::DefaultLangID_Key, "language by LANG: 0411 ja_JP, 0809 en_UK, else 0409", ""},
             {keys::LastUpdate_Key, "when these values were collected", ""},
         }},
    };
    return all;
}

const Property* find_property(const std::string& name) {
    for (const Group& group : groups()) {
        for (const Property& property : group.properties) {
            if (utf8(property.name) == name) {
                return &property;
            }
        }
    }
    return nullptr;
}

std::string similar_name(const std::string& name) {
    for (const Group& group : groups()) {
        for (const Property& property : group.properties) {
            if (strcasecmp(utf8(property.name).c_str(), name.c_str()) == 0) {
                return utf8(property.name);
            }
        }
    }
    return {};
}

}  // namespace vlrprops
