// A listening socket on an address of the machine or of the network that the thread is in.
#pragma once

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <string>

#include "support/owners.h"

namespace network_test {

class Endpoint {
public:
    // Listens on a free port of `host`, a numeric address with an optional scope. Connections complete
    // without being taken.
    explicit Endpoint(const std::string& host) {
        addrinfo hints{};
        hints.ai_flags = AI_NUMERICHOST;
        hints.ai_socktype = SOCK_STREAM;
        addrinfo* list = nullptr;
        if (getaddrinfo(host.c_str(), nullptr, &hints, &list) != 0) {
            return;
        }
        info_.reset(list);
        socket_ = client();
        listens_ = bind(socket_.get(), address(), info_->ai_addrlen) == 0 &&
                   listen(socket_.get(), 16) == 0 &&
                   getsockname(socket_.get(), address(), &info_->ai_addrlen) == 0;
    }

    bool listens() const { return listens_; }
    sockaddr* address() { return info_->ai_addr; }
    int size() const { return static_cast<int>(info_->ai_addrlen); }
    std::string port() const {
        // At the same place in both families.
        return std::to_string(
            ntohs(reinterpret_cast<const sockaddr_in*>(info_->ai_addr)->sin_port));
    }
    // From now on the port refuses.
    void stop() { socket_.reset(); }
    // A socket of the family, not connected.
    velora_com::qel::support::FileDescriptor client() const {
        return velora_com::qel::support::FileDescriptor(socket(info_->ai_family, SOCK_STREAM, 0));
    }

private:
    velora_com::qel::support::AddressInfo info_;
    velora_com::qel::support::FileDescriptor socket_;
    bool listens_ = false;
};

}  // namespace network_test
