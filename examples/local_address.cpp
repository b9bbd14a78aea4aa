// local_address HOST PORT: prints the address of this machine from which the host is reached.
//
// Shows: resolving, connecting with a time-out, the codes of the resolver.
#include <netdb.h>
#include <sys/socket.h>
#include <vlrcomn/network_util.h>

#include <cstdio>
#include <string>

int main(int count, char** arguments) {
    if (count != 3) {
        std::fputs("usage: local_address HOST PORT\n", stderr);
        return 2;
    }
    const std::string host = arguments[1], port = arguments[2];
    // [local]
    const velora_com::qel::ANetworkUtil network;
    std::string local;
    const int result = network.vlrGetLocalIPAddress(host, port, local, false, NI_NUMERICHOST, 5);
    if (result != 0) {  // -1: no address was reached within its 5 seconds
        std::fprintf(stderr, "%s\n", result == -1 ? "not reached" : gai_strerror(result));
        return 1;
    }
    std::puts(local.c_str());
    // [local]
}
