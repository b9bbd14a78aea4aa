// One property by name.
#include "support/boundary.h"
#include "sysprops/property_tables.h"
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {

namespace {

// Refills `record` with `collect` and returns the field that carries `name`. The record starts afresh, so
// that a fact which cannot be found now does not show an earlier call's value.
template <typename Record, size_t count, typename Result>
std::wstring collect_one(ISysProps& properties, Record& record,
                         Result (ISysProps::*collect)(Record&),
                         const Field<Record> (&fields)[count], const std::wstring& name) {
    return support::or_failure(DefaultProp_Val, [&] {
        record = Record();
        (properties.*collect)(record);
        const Field<Record>* const field = find_field(fields, name);
        return field == nullptr ? DefaultProp_Val : record.*field->value;
    });
}

}  // namespace

std::wstring ISysProps::GetOneNetworkProperty(const std::wstring& name) {
    return collect_one(*this, m_NetworkInformation, &ISysProps::GetNetworkInformation,
                       network_fields, name);
}

std::wstring ISysProps::GetOneCPUProperty(const std::wstring& name) {
    return collect_one(*this, m_CPUInformation, &ISysProps::GetCPUInformation, cpu_fields, name);
}

std::wstring ISysProps::GetOneMemoryProperty(const std::wstring& name) {
    return collect_one(*this, m_MemoryInformation, &ISysProps::GetMemoryInformation, memory_fields,
                       name);
}

std::wstring ISysProps::GetOneMiscProperty(const std::wstring& name) {
    return collect_one(*this, m_MiscInformation, &ISysProps::GetMiscInformation, misc_fields, name);
}

std::wstring ISysProps::GetOneDiskProperty(const std::wstring& name) {
    return collect_one(*this, m_DiskInformation, &ISysProps::GetDiskInformation, disk_fields, name);
}

std::wstring ISysProps::GetOneOSProperty(const std::wstring& name) {
    return collect_one(*this, m_OSInformation, &ISysProps::GetOSInformation, os_fields, name);
}

bool ISysProps::IsNetworkProperty(const std::wstring& name) const {
    return find_field(network_fields, name) != nullptr;
}

bool ISysProps::IsCPUProperty(const std::wstring& name) const {
    return find_field(cpu_fields, name) != nullptr;
}

bool ISysProps::IsMemoryProperty(const std::wstring& name) const {
    return find_field(memory_fields, name) != nullptr;
}

bool ISysProps::IsMiscProperty(const std::wstring& name) const {
    return find_field(misc_fields, name) != nullptr;
}

// The count of file systems is answered by its category but not claimed by it: callers of the single
// value have always read it as empty.
bool ISysProps::IsDiskProperty(const std::wstring& name) const {
    return name != NumFileSystems_Key && find_field(disk_fields, name) != nullptr;
}

bool ISysProps::IsOSProperty(const std::wstring& name) const {
    return find_field(os_fields, name) != nullptr;
}

std::wstring ISysProps::GetOneSystemProperty(const std::wstring& name) {
    if (IsNetworkProperty(name)) {
        return GetOneNetworkProperty(name);
    }
    if (IsCPUProperty(name)) {
        return GetOneCPUProperty(name);
    }
    if (IsMemoryProperty(name)) {
        return GetOneMemoryProperty(name);
    }
    if (IsMiscProperty(name)) {
        return GetOneMiscProperty(name);
    }
    if (IsDiskProperty(name)) {
        return GetOneDiskProperty(name);
    }
    if (IsOSProperty(name)) {
        return GetOneOSProperty(name);
    }
    return {};
}

}  // namespace velora_com::qel::sysprops
