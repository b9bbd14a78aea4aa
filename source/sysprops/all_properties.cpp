// All properties as a map.
#include "support/boundary.h"
#include "sysprops/property_tables.h"
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {

namespace {

using Properties = std::map<std::wstring, std::wstring>;

template <typename Record, size_t count>
void insert_fields(Properties& properties, const Record& record,
                   const Field<Record> (&fields)[count]) {
    for (const Field<Record>& field : fields) {
        properties.emplace(field.name, record.*field.value);
    }
}

std::wstring file_system_key(const std::wstring& mount_point, const std::wstring& last_word) {
    return FileSystemName + L'"' + mount_point + L"\" " + last_word;
}

}  // namespace

ISysProps::ISysProps() = default;
ISysProps::~ISysProps() = default;

bool ISysProps::GetAllSystemProperties(
    Properties& properties,
    std::map<std::wstring, std::pair<std::wstring, std::wstring>>& file_systems) {
    return support::or_failure(false, [&] {
        // Fresh records: what cannot be found now must not show an earlier call's value.
        *this = ISysProps();
        GetNetworkInformation(m_NetworkInformation);
        GetCPUInformation(m_CPUInformation);
        GetMemoryInformation(m_MemoryInformation);
        GetDiskInformation(m_DiskInformation);
        GetMiscInformation(m_MiscInformation);
        GetOSInformation(m_OSInformation);

        Properties collected;
        insert_fields(collected, m_CPUInformation, cpu_fields);
        insert_fields(collected, m_NetworkInformation, network_fields);
        insert_fields(collected, m_MemoryInformation, memory_fields);
        insert_fields(collected, m_OSInformation, os_fields);
        insert_fields(collected, m_MiscInformation, misc_fields);
        insert_fields(collected, m_DiskInformation, disk_fields);
        auto mounted = m_DiskInformation.mapFileSystems;
        properties.swap(collected);
        file_systems.swap(mounted);
        return true;
    });
}

bool ISysProps::GetAllSystemProperties(Properties& properties) {
    return support::or_failure(false, [&] {
        Properties collected;
        std::map<std::wstring, std::pair<std::wstring, std::wstring>> file_systems;
        if (!GetAllSystemProperties(collected, file_systems)) {
            return false;
        }
        collected.erase(CPUPortable_Key);
        for (const auto& [mount_point, space] : file_systems) {
            collected.emplace(file_system_key(mount_point, FileSystemTotalSpace), space.first);
            collected.emplace(file_system_key(mount_point, FileSystemFreeSpace), space.second);
        }
        properties.swap(collected);
        return true;
    });
}

}  // namespace velora_com::qel::sysprops
