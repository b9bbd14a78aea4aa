#include <utility>

#include "support/boundary.h"
#include "vlrcomn/net_interface.h"

namespace velora_com::qel {
namespace {

template <typename Value>
Value copy_or_empty(const Value& value) {
    return support::or_failure(Value{}, [&value] { return value; });
}

}  // namespace

void IPAddress::setOption(IP_PARAM param, std::string value) {
    switch (param) {
        case IP_ADDRESS:
            address_ = std::move(value);
            break;
        case IP_SUBNETMASK:
            subnet_mask_ = std::move(value);
            break;
        case IP_SUBNETADDR:
            subnet_address_ = std::move(value);
            break;
        case IP_FAMILY:
            break;
    }
}

void IPAddress::setOption(IP_PARAM param, unsigned int value) {
    if (param == IP_FAMILY) {
        family_ = value;
    }
}

std::string IPAddress::getIPAddress() const {
    return copy_or_empty(address_);
}
std::string IPAddress::getSubNetMask() const {
    return copy_or_empty(subnet_mask_);
}
std::string IPAddress::getSubNetAddr() const {
    return copy_or_empty(subnet_address_);
}
unsigned int IPAddress::getIPFamily() const {
    return family_;
}

void NetInterface::setOption(NETINTERFACE_PARAM param, std::string value) {
    if (param == NETINTERFACE_MACADDRESS) {
        mac_address_ = std::move(value);
    } else if (param == NETINTERFACE_INDEXNAME) {
        index_name_ = std::move(value);
    }
}

void NetInterface::setOption(NETINTERFACE_PARAM param, unsigned int value) {
    if (param == NETINTERFACE_INDEX) {
        index_ = value;
    }
}

void NetInterface::setOption(NETINTERFACE_PARAM param, const IPAddress& value) {
    if (param == NETINTERFACE_IPADDRESS) {
        support::contained([this, &value] { addresses_.push_back(value); });
    }
}

std::string NetInterface::getMACAddress() const {
    return copy_or_empty(mac_address_);
}
std::string NetInterface::getIndexName() const {
    return copy_or_empty(index_name_);
}
unsigned int NetInterface::getIndex() const {
    return index_;
}
std::vector<IPAddress> NetInterface::getIPAddress() const {
    return copy_or_empty(addresses_);
}

}  // namespace velora_com::qel
