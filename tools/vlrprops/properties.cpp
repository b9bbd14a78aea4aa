#include "properties.h"

#include <strings.h>

#include "text.h"
#include "vlrcomn/property_keys.h"

namespace vlrprops {

namespace keys = velora_com::qel::sysprops;

namespace {

constexpr Property computer[] = {
    {keys::ComputerName_Key, "host name up to its first dot"},
    {keys::IPHostName_Key, "host name with its domain, as the resolver gives it"},
    {keys::DomainName_Key, "NIS domain", Kind::text, L"UnKnownDomain"},
    {keys::CPUPortable_Key, "1 portable, 0 not, -1 not known", Kind::number, L"-1"},
};

constexpr Property processor[] = {
    {keys::CPUType_Key, "architecture and model"},
    {keys::CPUSpeed_Key, "clock of the fastest, on Linux that of the moment", Kind::megahertz,
     L"0 MHz"},
    {keys::NumOfCPU_Key, "number of processors that are online", Kind::number},
    {keys::CPUSerialNumber_Key, "serial number of the machine, which is not collected"},
};

constexpr Property memory[] = {
    {keys::TotalPhysicalMemory_Key, "installed memory in bytes", Kind::bytes},
    {keys::FreeMemory_Key, "memory that holds nothing at all, in steps of a twentieth of the total",
     Kind::bytes},
};

constexpr Property operating_system[] = {
    {keys::OSType_Key, "name of the agent's platform, the same everywhere"},
    {keys::OSPlatform_Key, "Workstation or Server"},
    {keys::OSVersion_Key, "version, three numbers at most"},
    {keys::OSCsdVersion_Key, "third number of the version"},
    {keys::OSBuildNum_Key, "build; the version where the system names none"},
    {keys::OSBitMode_Key, "1 for 64 bits, 0 for 32 bits, -1 not known", Kind::number, L"-1"},
    {keys::OSOEMId_Key, "maker of the platform's hardware, the same everywhere"},
    {keys::PlatformId_Key, "code of the agent's platform, the same everywhere"},
    {keys::BootTime_Key,
     "when the system started, in seconds since 1970-01-01 UTC; setting the clock moves "
     "it; not in the agent's report",
     Kind::seconds, L"", true},
};

constexpr Property disks[] = {
    {keys::TotalDiskSpace_Key, "space of all local file systems in MB", Kind::megabytes, L"0.00"},
    // 0 stays a number: so reads a full disk, too.
    {keys::FreeDiskSpace_Key,
     "free space with what is kept for the superuser, in steps of a twentieth of the "
     "total",
     Kind::megabytes},
    {keys::NumFileSystems_Key, "number of local file systems", Kind::number, L"0"},
};

constexpr Property network[] = {
    {keys::IPAddress_Key,
     "the address that stands for this machine: its first of IPv4, "
     "else its first; loopback left out"},
    {keys::SubnetAddress_Key, "its subnet"},
    {keys::SubnetMask_Key, "its subnet mask"},
    {keys::NETAddress_Key, "MAC address of its interface"},
    {keys::IPXAddress_Key, "IPX address, which there is none of"},
};

constexpr Property user[] = {
    {keys::UserName_Key, "logged-on users, cut after 128 characters", Kind::text, L"NA"},
    {keys::TimeZone_Key, "abbreviation of the zone's standard time"},
    {keys::DefaultLangID_Key, "language by LANG: 0411 ja_JP, 0809 en_UK, else 0409"},
    {keys::LastUpdate_Key, "when these values were collected, local time"},
};

}  // namespace

const std::vector<Group>& groups() {
    static const std::vector<Group> all = {
        {"Computer", computer}, {"Processor", processor},
        {"Memory", memory},     {"Operating system", operating_system},
        {"Disks", disks},       {"Network", network},
        {"User", user},
    };
    return all;
}

std::vector<const Property*> every_property() {
    std::vector<const Property*> every;
    for (const Group& group : groups()) {
        for (const Property& property : group) {
            every.push_back(&property);
        }
    }
    return every;
}

const Property* find_property(const std::string& name) {
    for (const Property* const property : every_property()) {
        if (strcasecmp(utf8(property->name).c_str(), name.c_str()) == 0) {
            return property;
        }
    }
    return nullptr;
}

}  // namespace vlrprops
