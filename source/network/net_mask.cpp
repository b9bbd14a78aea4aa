#include <utility>

#include "network/numeric_text.h"
#include "support/boundary.h"
#include "vlrcomn/net_interface.h"

namespace velora_com::qel {

int getNetMask(const unsigned int& family, sockaddr* mask, std::string& out) {
    if (mask == nullptr) {
        return 0;
    }
    return support::or_failure(0, [&] {
        std::string text =
            network::numeric_text(network::whole_address(*mask, static_cast<int>(family)));
        if (text.empty()) {
            return 0;
        }
        out = std::move(text);
        return 1;
    });
}

int getNetAddr(const unsigned int& family, sockaddr* mask, sockaddr* addr, std::string& out) {
    if (mask == nullptr || addr == nullptr) {
        return 0;
    }
    return support::or_failure(0, [&] {
        if (family != AF_INET) {
            out = "N/A";
            return 1;
        }
        out = network::ipv4_subnet_text(network::whole_address(*addr, AF_INET),
                                        network::whole_address(*mask, AF_INET));
        return 1;
    });
}

}  // namespace velora_com::qel
