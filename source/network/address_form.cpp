#include "network/address_form.h"

#include "vlrcomn/network_util.h"

namespace velora_com::qel {
namespace network {

bool strip_brackets(std::string& text) {
    const size_t open = text.find('[');
    const size_t close = open == std::string::npos ? open : text.find(']', open);
    if (close == std::string::npos) {
        return false;
    }
    text.erase(close);
    text.erase(0, open + 1);
    return true;
}

void strip_scope(std::string& text) {
    const size_t scope = text.find('%');
    if (scope != std::string::npos) {
        text.erase(scope);
    }
}

}  // namespace network

std::string ANetworkUtil::formatV6addr(std::string address, bool keepBrackets) const {
    const bool bracketed = network::strip_brackets(address);
    network::strip_scope(address);
    if (keepBrackets && bracketed) {
        // Brackets that were there leave room for these two: nothing is allocated.
        address.insert(address.begin(), '[');
        address.push_back(']');
    }
    return address;
}

}  // namespace velora_com::qel
