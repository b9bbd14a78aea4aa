#include <CoreServices/CoreServices.h>

#include "platform/macosx/sysctl_value.h"
#include "platform/platform.h"

namespace velora_com::qel::platform {

namespace {

std::optional<int32_t> gestalt(OSType selector) {
    SInt32 answer = 0;
    if (Gestalt(selector, &answer) != noErr) {
        return std::nullopt;
    }
    return static_cast<int32_t>(answer);
}

}  // namespace

std::optional<int32_t> processor_count() {
    return sysctl_value<int32_t>(CTL_HW, HW_NCPU);
}

ProcessorFacts processor_facts() {
    ProcessorFacts facts;
    if (const auto hertz = gestalt(gestaltProcClkSpeed)) {
        // The manager's answers are signed by type only: clocks above 2^31 Hz fill the sign bit.
        facts.clock_hz = static_cast<uint32_t>(*hertz);
    }
    facts.architecture = gestalt(gestaltSysArchitecture);
    facts.type = gestalt(gestaltNativeCPUtype);
    return facts;
}

}  // namespace velora_com::qel::platform
