// Connecting and finding the local address on the loopback, against the same calls made bare.
#include <benchmark/benchmark.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>

#include "support/registering.h"
#include "vlrcomn/network_util.h"

namespace {

using velora_com::qel::ANetworkUtil;

// A listener on the loopback. The measuring thread takes each connection itself, so that no other thread's
// scheduling is measured.
class Listener {
public:
    Listener() : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
        address_.sin_family = AF_INET;
        address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address_;
        bind(socket_, generic(), size);
        getsockname(socket_, generic(), &size);
        listen(socket_, 128);
    }
    ~Listener() { close(socket_); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    // Takes a connection and closes it.
    void take() const { close(accept(socket_, nullptr, nullptr)); }

    sockaddr* generic() { return reinterpret_cast<sockaddr*>(&address_); }
    std::string port() const { return std::to_string(ntohs(address_.sin_port)); }

private:
    int socket_;
    sockaddr_in address_{};
};

// Resets instead of lingering, so that no measurement runs out of ports.
void close_hard(int socket) {
    const linger none{1, 0};
    setsockopt(socket, SOL_SOCKET, SO_LINGER, &none, sizeof none);
    close(socket);
}

void connect_ours(benchmark::State& state) {
    Listener listener;
    const ANetworkUtil util;
    for (auto _ : state) {
        const int client = socket(AF_INET, SOCK_STREAM, 0);
        if (util.ConnectWithTimeout(client, listener.generic(), sizeof(sockaddr_in), 5) != 0) {
            state.SkipWithError("not connected");
        }
        close_hard(client);
        listener.take();
    }
}

void connect_bare(benchmark::State& state) {
    Listener listener;
    for (auto _ : state) {
        const int client = socket(AF_INET, SOCK_STREAM, 0);
        if (connect(client, listener.generic(), sizeof(sockaddr_in)) != 0) {
            state.SkipWithError("not connected");
        }
        close_hard(client);
        listener.take();
    }
}

void local_ours(benchmark::State& state) {
    Listener listener;
    const ANetworkUtil util;
    const std::string port = listener.port();
    std::string local;
    for (auto _ : state) {
        if (util.vlrGetLocalIPAddress("127.0.0.1", port, local, true, NI_NUMERICHOST, 5) != 0) {
            state.SkipWithError("no local address");
        }
        listener.take();
    }
}

void local_bare(benchmark::State& state) {
    Listener listener;
    const std::string port = listener.port();
    for (auto _ : state) {
        addrinfo hints{};
        hints.ai_family = AF_INET;
        hints.ai_socktype = SOCK_STREAM;
        addrinfo* list = nullptr;
        getaddrinfo("127.0.0.1", port.c_str(), &hints, &list);
        const int client = socket(list->ai_family, list->ai_socktype, list->ai_protocol);
        if (connect(client, list->ai_addr, list->ai_addrlen) != 0) {
            state.SkipWithError("not connected");
        }
        sockaddr_in end{};
        socklen_t size = sizeof end;
        getsockname(client, reinterpret_cast<sockaddr*>(&end), &size);
        char text[NI_MAXHOST];
        getnameinfo(reinterpret_cast<sockaddr*>(&end), size, text, sizeof text, nullptr, 0,
                    NI_NUMERICHOST);
        benchmark::DoNotOptimize(text);
        close(client);
        freeaddrinfo(list);
        listener.take();
    }
}

void add() {
    add_contender("connect", "ours", connect_ours);
    add_contender("connect", "limit", connect_bare);
    // A modest number of connections: a client that closes first keeps its port for a minute.
    add_contender("local_address", "ours", local_ours)->Iterations(300);
    add_contender("local_address", "limit", local_bare)->Iterations(300);
}
REGISTER_BENCHMARKS(add);

}  // namespace
