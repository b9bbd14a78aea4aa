#include "support/boundary.h"
#include "vlrcomn/net_interface.h"

namespace velora_com::qel {

NetInterfaceList::NetInterfaceList(bool includeLoopback) : include_loopback_(includeLoopback) {}

std::vector<unsigned int> NetInterfaceList::getIndexes() const {
    return support::or_failure(std::vector<unsigned int>{}, [this] {
        std::vector<unsigned int> indexes;
        indexes.reserve(interfaces_.size());
        for (const auto& [index, interface] : interfaces_) {
            indexes.push_back(index);
        }
        return indexes;
    });
}

int NetInterfaceList::getNetInterface(unsigned int index, NetInterface& out) const {
    const auto entry = interfaces_.find(index);
    if (entry == interfaces_.end()) {
        return 0;
    }
    return support::or_failure(0, [&entry, &out] {
        NetInterface copy = entry->second;
        out = std::move(copy);
        return 1;
    });
}

NetInterface& NetInterfaceList::getNetInterface(const unsigned int& index) {
    NetInterface* entry =
        support::or_failure<NetInterface*>(nullptr, [this, &index] { return &interfaces_[index]; });
    if (entry != nullptr) {
        return *entry;
    }
    spare_ = NetInterface{};
    return spare_;
}

}  // namespace velora_com::qel
