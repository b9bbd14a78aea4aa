#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

#include "platform/platform.h"
#include "support/ascii.h"
#include "support/boundary.h"
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {

namespace {

// The name of a code that the machine may not have told, empty when it has none.
std::string name_of(std::optional<int32_t> code, bool (*convert)(long, char*)) {
    char name[16] = "";
    return code && convert(*code, name) ? name : "";
}

// The clock in MHz, held within the 32 bits that the report's readers expect.
std::wstring clock_text(uint64_t hertz) {
    constexpr uint64_t highest = std::numeric_limits<int32_t>::max();
    return std::to_wstring(std::min(hertz / 1000000, highest)) + L" MHz";
}

}  // namespace

bool ISysProps::GetCPUInformation(CPUInformation& info) {
    return support::or_failure(false, [&] {
        if (const auto count = platform::processor_count()) {
            info.wstrNumOfCPU = std::to_wstring(*count);
        }
        const platform::ProcessorFacts processor = platform::processor_facts();
        info.wstrCPUSpeed = clock_text(processor.clock_hz.value_or(0));

        const std::string architecture =
            name_of(processor.architecture, ConvertGestaltSysArchToString);
        const std::string model = name_of(processor.type, ConvertGestaltCPUTypeToString);
        const char* const separator = architecture.empty() || model.empty() ? "" : " ";
        info.wstrCPUType = sysprops_ansi_to_wide(architecture + separator + model);
        if (architecture.empty() && model.empty()) {
            return false;
        }

        bool portable = false;
        if (!IsPortableComputer(portable)) {
            info.wstrIsPortable = L"-1";
        } else {
            info.wstrIsPortable = portable ? L"1" : L"0";
        }
        return true;
    });
}

bool IsPortableComputer(bool& portable) {
    portable = false;
    return support::or_failure(false, [&] {
        std::optional<std::string> model = platform::hardware_model();
        if (!model) {
            return false;
        }
        std::transform(model->begin(), model->end(), model->begin(), support::to_lower);
        portable = model->find("book") != std::string::npos;
        return true;
    });
}

}  // namespace velora_com::qel::sysprops
