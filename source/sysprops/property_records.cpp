// Constructors of the records: what a field reads before a collector has written it.
#include "vlrcomn/property_keys.h"

namespace velora_com::qel::sysprops {

CPUInformation::CPUInformation()
    : wstrCPUType(DefaultProp_Val),
      wstrCPUSpeed(DefaultProp_Val),
      wstrNumOfCPU(DefaultProp_Val),
      wstrCPUSerialNumber(DefaultProp_Val) {}
CPUInformation::~CPUInformation() = default;

NetworkInformation::NetworkInformation()
    : wstrDomainName(DefaultProp_Val),
      wstrComputerName(DefaultProp_Val),
      wstrIPAddress(DefaultProp_Val),
      wstrSubnetAddress(DefaultProp_Val),
      wstrSubnetMask(DefaultProp_Val),
      wstrNETAddress(DefaultProp_Val),
      wstrIPXAddress(DefaultProp_Val),
      wstrIPHostName(DefaultProp_Val) {}
NetworkInformation::~NetworkInformation() = default;

MemoryInformation::MemoryInformation()
    : wstrTotalPhysicalMemory(DefaultProp_Val), wstrFreeMemory(DefaultProp_Val) {}
MemoryInformation::~MemoryInformation() = default;

OSInformation::OSInformation()
    : wstrOSType(DefaultProp_Val),
      wstrOSPlatform(DefaultProp_Val),
      wstrOSVersion(DefaultProp_Val),
      wstrOSCsdVersion(DefaultProp_Val),
      wstrOSBuildNum(DefaultProp_Val),
      wstrOSOEMId(DefaultProp_Val),
      wstrOSBitMode(DefaultProp_Val) {}
OSInformation::~OSInformation() = default;

DiskInformation::DiskInformation()
    : wstrTotalDiskSpace(DefaultProp_Val),
      wstrFreeDiskSpace(DefaultProp_Val),
      wstrNumFileSystems(DefaultProp_Val) {}
DiskInformation::~DiskInformation() = default;

MiscInformation::MiscInformation()
    : wstrUserName(DefaultProp_Val),
      wstrTimeZone(DefaultProp_Val),
      wstrDefaultLangID(DefaultProp_Val),
      wstrLastUpdate(DefaultProp_Val) {}
MiscInformation::~MiscInformation() = default;

}  // namespace velora_com::qel::sysprops
