// A listening socket on an address of the machine or of the network that the thread is in.
#pragma once

#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

#include <string>

#include "support/owners.h"

namespace network_test {

class Endpoint {
public:
    // Listens on a free port of `host`, a numeric address with an optional scope. Connections complete
    // without being taken.
    explicit Endpoint(const char* host) {
        addrinfo hints{};
        hints.ai_flags = AI_NUMERICHOST;
        hints.ai_socktype = SOCK_STREAM;
        addrinfo* list = nullptr;
        if (getaddrinfo(host, nullptr, &hints, &list) == 0) {
            info_.reset(list);
            socket_ = client();
            listens_ = bind(socket_.get(), address(), info_->ai_addrlen) == 0 &&
                       listen(socket_.get(), 16) == 0 &&
                       getsockname(socket_.get(), address(), &info_->ai_addrlen) == 0;
        }
    }

    bool listens() const { return listens_; }
    sockaddr* address() { return info_->ai_addr; }
    int size() const { return static_cast<int>(info_->ai_addrlen); }
    std::string port() {
        // At the same place in both families.
        return std::to_string(ntohs(reinterpret_cast<sockaddr_in*>(address())->sin_port));
    }
    // A socket of the family, not connected.
    velora_com::qel::support::FileDescriptor client() const {
        return velora_com::qel::support::FileDescriptor(socket(info_->ai_family, SOCK_STREAM, 0));
    }

    // From now on nobody answers: the system drops what passes a full queue.
    void fill_queue() {
        listen(socket_.get(), 0);
        waiting_ = client();
        connect(waiting_.get(), address(), info_->ai_addrlen);
        pollfd queue{socket_.get(), POLLIN, 0};
        poll(&queue, 1, -1);
    }
    // From now on the port refuses.
    void stop() { socket_.reset(); }

private:
    velora_com::qel::support::AddressInfo info_;
    velora_com::qel::support::FileDescriptor socket_, waiting_;
    bool listens_ = false;
};

}  // namespace network_test
