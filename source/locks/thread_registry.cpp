#include "locks/thread_registry.h"

#include "vlrcomn/handle.h"
#include "vlrcomn/sync.h"

std::atomic<int32_t> orSO_tls_index{-1};

using namespace velora_com::qel::locks;
using namespace velora_com::qel::sync;

namespace {

int mark_unregistered() {
    return set_kept_value(ORU_INVALID_HANDLE) ? 1 : 0;
}

}  // namespace

extern "C" {

int32_t orSO_ProcessAttach() {
    const auto fresh = static_cast<int32_t>(alloc_kept_index());
    orSO_tls_index.store(fresh, std::memory_order_release);
    return fresh;
}

int orSO_ProcessDetach() {
    const bool freed = free_kept_index();
    orSO_tls_index.store(-1, std::memory_order_release);
    return freed ? 1 : 0;
}

uintptr_t orSO_ThreadAttach() {
    const uintptr_t known = identity();
    if (known != ORSO_NO_THREAD) {
        return known;
    }
    oruHandle event = oruCreateEvent(nullptr, 1, 0, nullptr);
    if (event == nullptr) {
        return 0;
    }
    if (!set_kept_value(event)) {
        oruCloseHandle(event);
        return 0;
    }
    return 1;
}

int orSO_ThreadDetach() {
    oruCloseHandle(static_cast<oruHandle>(kept_value()));
    return mark_unregistered();
}

int orSO_ThreadAttachX() {
    return mark_unregistered();
}

void orSO_ThreadDetachX() {}

uintptr_t orSO_GetThread() {
    return identity();
}

uintptr_t orSO_DbgGetThread() {
    return reinterpret_cast<uintptr_t>(kept_value());
}

}  // extern "C"
