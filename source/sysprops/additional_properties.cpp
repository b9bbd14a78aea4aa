#include "sysprops/additional_properties.h"

#include "support/boundary.h"
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {

namespace {

struct AdditionalProperty {
    const std::wstring& name;
    std::wstring (*words)();
};

constexpr AdditionalProperty additional_properties[] = {
    {BootTime_Key, boot_time_words},
};

}  // namespace

std::wstring ISysProps::GetOneAdditionalProperty(const std::wstring& name) {
    for (const AdditionalProperty& property : additional_properties) {
        if (property.name == name) {
            return support::or_failure(DefaultProp_Val, property.words);
        }
    }
    return {};
}

}  // namespace velora_com::qel::sysprops
