#include "network/address_form.h"
#include "network/numeric_text.h"
#include "network/resolving.h"
#include "support/boundary.h"
#include "vlrcomn/network_util.h"

namespace velora_com::qel {

int ANetworkUtil::vlrCompareAddressFromPeerAddress(std::string host, std::string port,
                                                   std::string peer) const {
    return support::or_failure(0, [&] {
        if (peer.find(host) != std::string::npos) {  // an equal text, too
            return 1;
        }
        const std::string bare_peer = formatV6addr(peer, false);
        if (formatV6addr(host, false) == bare_peer) {
            return 1;
        }
        if (enabled_ != 1) {
            return 0;
        }
        const network::Resolved resolved = network::resolve(host, port, false);
        for (const addrinfo* entry = resolved.addresses.get(); entry != nullptr;
             entry = entry->ai_next) {
            char text[network::name_size];
            if (network::host_text(*entry->ai_addr, NI_NUMERICHOST, text) &&
                formatV6addr(text, false) == bare_peer) {
                return 1;
            }
        }
        return 0;
    });
}

}  // namespace velora_com::qel
