#include "report.h"

#include <algorithm>

#include "json.h"
#include "table.h"
#include "text.h"
#include "values.h"
#include "vlrcomn/system_properties.h"

namespace vlrprops {

namespace {

namespace sysprops = velora_com::qel::sysprops;

// The value of one property, collected alone. The count of file systems is answered by its category
// only.
std::wstring one_value(const Property& property) {
    sysprops::ISysProps source;
    if (property.addition) {
        return source.GetOneAdditionalProperty(property.name);
    }
    return property.name == sysprops::NumFileSystems_Key
               ? source.GetOneDiskProperty(property.name)
               : source.GetOneSystemProperty(property.name);
}

// Collects at least what the options ask for; several properties of the report together.
bool collect(const Options& options, Properties& values) {
    const std::vector<const Property*>& names = options.properties;
    const auto in_report = std::count_if(
        names.begin(), names.end(), [](const Property* property) { return !property->addition; });
    FileSystems file_systems;
    if ((names.empty() || in_report > 1) &&
        !sysprops::ISysProps().GetAllSystemProperties(values, file_systems)) {
        return false;
    }
    for (const Property* const property : options.all ? every_property() : names) {
        if (values.count(property->name) == 0) {
            values[property->name] = one_value(*property);
        }
    }
    return true;
}

Properties only(const std::vector<const Property*>& names, const Properties& values) {
    Properties chosen;
    for (const Property* const property : names) {
        chosen[property->name] = values.at(property->name);
    }
    return chosen;
}

std::string one_on_a_line(const Options& options, const Properties& values) {
    std::string lines;
    for (const Property* const property : options.properties) {
        const std::wstring& value = values.at(property->name);
        lines += utf8(one_line(options.human ? readable(property->kind, value) : value)) + '\n';
    }
    return lines;
}

}  // namespace

std::optional<std::string> report(const Options& options, size_t width) {
    const bool json = options.json != Options::Json::none;
    const bool typed = options.json == Options::Json::typed;
    if (options.file_systems) {
        sysprops::DiskInformation disks;
        if (!sysprops::ISysProps().GetDiskInformation(disks)) {
            return std::nullopt;
        }
        return json ? to_json(disks.mapFileSystems, typed)
                    : file_system_table(disks.mapFileSystems, width, options.human);
    }
    Properties values;
    if (!collect(options, values)) {
        return std::nullopt;
    }
    const std::vector<const Property*>& names = options.properties;
    if (json) {
        return to_json(names.empty() ? values : only(names, values), typed);
    }
    return names.empty() ? property_table(values, width, options.human)
                         : one_on_a_line(options, values);
}

}  // namespace vlrprops
