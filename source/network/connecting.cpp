#include <fcntl.h>
#include <sys/select.h>
#include <sys/socket.h>

#include <algorithm>

#include "vlrcomn/network_util.h"

namespace velora_com::qel {
namespace {

// The longest wait that every system's select takes.
constexpr unsigned int longest_wait = 100'000'000;

// False when the time has passed, the wait failed or was interrupted, or when the open descriptor has no
// place in the set: select looks its number up in a fixed row of bits.
bool wait_until_writable(int socket, unsigned int seconds) {
    if (socket >= FD_SETSIZE) {
        return false;
    }
    fd_set writable;
    FD_ZERO(&writable);
    FD_SET(socket, &writable);
    timeval limit{};
    limit.tv_sec = static_cast<time_t>(std::min(seconds, longest_wait));
    return select(socket + 1, nullptr, &writable, nullptr, &limit) > 0;
}

}  // namespace

ANetworkUtil::ANetworkUtil() {
    enabled_ = 1;
}

int ANetworkUtil::makeSocketNonBlocking(int socket) const {
    const int flags = fcntl(socket, F_GETFL);
    const int former = flags == -1 ? 0 : flags;
    return fcntl(socket, F_SETFL, former | O_NONBLOCK) == -1 ? 0 : 1;
}

int ANetworkUtil::ConnectWithTimeout(int socket, sockaddr* address, int length,
                                     unsigned int seconds) const {
    const auto size = static_cast<socklen_t>(length);
    if (seconds == 0) {
        return connect(socket, address, size);
    }
    if (makeSocketNonBlocking(socket) != 1) {
        return -1;
    }
    const int result = connect(socket, address, size);
    if (result >= 0) {
        return result;
    }
    if (!wait_until_writable(socket, seconds)) {
        return -1;
    }
    // A refusal is the caller's to see, on the first use of the socket; only the wait is judged here.
    int error = 0;
    socklen_t error_size = sizeof error;
    return getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &error_size) == 0 ? 0 : -1;
}

}  // namespace velora_com::qel
