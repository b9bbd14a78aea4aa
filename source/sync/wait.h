// The sleep inside the waits.
#pragma once

#include <cstdint>

#include "sync/handle_object.h"

namespace velora_com::qel::sync {

// As oruWaitForSingleObject, but goes to sleep at once for an object that is not signalled: for callers that
// have looked long enough, or look again and again.
uint32_t wait_asleep(oruHandle handle, uint32_t milliseconds);

}  // namespace velora_com::qel::sync
