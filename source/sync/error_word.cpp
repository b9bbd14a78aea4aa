#include "sync/error_word.h"

namespace velora_com::qel::sync {

std::atomic<uint32_t> nErrno{0};

}  // namespace velora_com::qel::sync
