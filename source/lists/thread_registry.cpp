#include "lists/thread_registry.h"

#include "vlrcomn/handle.h"
#include "vlrcomn/sync.h"

std::atomic<int32_t> orSO_tls_index{-1};

using namespace velora_com::qel::lists;

namespace {

void* stored_value() {
    return oruTlsGetValue(registry_index());
}

int mark_unregistered() {
    return oruTlsSetValue(registry_index(), ORU_INVALID_HANDLE);
}

}  // namespace

extern "C" {

int32_t orSO_ProcessAttach() {
    const auto fresh = static_cast<int32_t>(oruTlsAlloc());
    orSO_tls_index.store(fresh, std::memory_order_release);
    return fresh;
}

int orSO_ProcessDetach() {
    const int freed = oruTlsFree(registry_index());
    orSO_tls_index.store(-1, std::memory_order_release);
    return freed;
}

uintptr_t orSO_ThreadAttach() {
    const uintptr_t known = identity();
    if (known != ORSO_NO_THREAD) {
        return known;
    }
    const oruHandle event = oruCreateEvent(nullptr, 1, 0, nullptr);
    if (event == nullptr) {
        return 0;
    }
    if (oruTlsSetValue(registry_index(), event) == 0) {
        oruCloseHandle(event);
        return 0;
    }
    return 1;
}

int orSO_ThreadDetach() {
    oruCloseHandle(static_cast<oruHandle>(stored_value()));
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
    return reinterpret_cast<uintptr_t>(stored_value());
}

}  // extern "C"
