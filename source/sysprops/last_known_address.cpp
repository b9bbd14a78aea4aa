// The local address that the agent last used.
#include "support/boundary.h"
#include "support/early_init.h"
#include "support/owners.h"
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {

// Complete as early as the constants, so that a static initialiser may hand an address in.
std::wstring VLRCOMN_EARLY_INIT ISysProps::m_wstrLastKnownLocalIP;

namespace {

// Guards m_wstrLastKnownLocalIP. Nothing under it can be cancelled.
support::Mutex address_mutex;

// What the member of the public class, which bears no annotation, is used by.
void exchange(std::wstring& kept, std::wstring& fresh) VLRCOMN_REQUIRES(address_mutex) {
    kept.swap(fresh);
}

std::wstring copy_of(const std::wstring& kept) VLRCOMN_REQUIRES(address_mutex) {
    return kept;
}

}  // namespace

void ISysProps::updateLocalIP(const std::wstring& address) {
    // Copied outside the lock, so that nothing changes when memory runs out and the lock is held briefly.
    support::contained([&] {
        std::wstring copy = address;
        const support::MutexGuard guard(address_mutex);
        exchange(m_wstrLastKnownLocalIP, copy);
    });
}

std::wstring ISysProps::GetLastKnownLocalIP() {
    return support::or_failure(std::wstring(), [] {
        const support::MutexGuard guard(address_mutex);
        return copy_of(m_wstrLastKnownLocalIP);
    });
}

}  // namespace velora_com::qel::sysprops

// NOLINTNEXTLINE(performance-unnecessary-value-param): the interface takes a copy
void orumcomn_set_local_ip_addr(std::wstring address) {
    velora_com::qel::sysprops::ISysProps::updateLocalIP(address);
}
