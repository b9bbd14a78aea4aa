/**
 * @file
 * @brief Reaching a server over IPv4 or IPv6: connecting with a time-out, resolving, comparing
 * peers, scopes of link-local addresses, and the local address that leads to a server.
 *
 * The local address that leads to a server (examples/local_address.cpp):
 * @snippet local_address.cpp local
 *
 * Addresses are numeric text, plain ("fe80::1"), bracketed as in URLs ("[fe80::1]") or with a scope
 * ("fe80::1%4"). A "[" counts only with a "]" behind it.
 */
#ifndef VLRCOMN_NETWORK_UTIL_H
#define VLRCOMN_NETWORK_UTIL_H

#include <cstdint>
#include <string>
#include <vector>

#include "vlrcomn/types.h"

struct addrinfo;
struct sockaddr;

namespace velora_com::qel {

/** @addtogroup network
 * @{ */

/**
 * The socket helpers. An object holds nothing but a flag that its constructor sets to 1; the
 * operations called gated do their work only while it is 1. Nothing in this library sets it to
 * anything else; a derived class may.
 *
 * Nothing throws or logs. A call that runs out of memory gives its failure value, a text that
 * cannot be allocated is empty.
 *
 * Thread safety: every call uses sockets, buffers and results of its own, so calls may run on any number
 * of threads, on one object too. Calls that resolve or connect block.
 *
 * Cancellation: on systems whose thread cancellation runs no destructors (Mac OS X) a call that is
 * cancelled while it resolves or connects leaves its socket and its resolver results behind.
 *
 * Descriptors that these calls open are closed on exec.
 */
class VLRCOMN_API ANetworkUtil {
public:
    /** Enables the gated operations. */
    ANetworkUtil();

    /**
     * Sets O_NONBLOCK on a socket. Flags that cannot be read count as 0.
     * @param socket  the socket
     * @return 1 on success, 0 when the flags cannot be set
     */
    int makeSocketNonBlocking(int socket) const;

    /**
     * Connects with a time-out.
     *
     * With a time-out the socket is made non-blocking first and stays so. A connection that does
     * not complete at once is waited for with `select`, whatever `connect` failed with.
     *
     * A result of 0 means that the wait ended, not that the peer accepted: the socket's pending error
     * is fetched but not judged. A connection that was refused, during the wait or at once, is reported
     * as 0, and the caller learns of it on the first use of the socket.
     *
     * @param socket  the socket
     * @param address  where to
     * @param length  length of the address in bytes
     * @param seconds  0: exactly as `connect` does it, with the socket left as it is. Otherwise the
     * longest wait; more than 100 million (three years) count as so many
     * @return 0 connected (see above). -1: the socket cannot be made non-blocking, the time has
     * passed, the wait failed or was interrupted by a signal (EINTR is not retried), or the
     * descriptor is too large for `select` (FD_SETSIZE and up; noticed at the wait, after
     * `connect`). errno is the failing call's; after a time-out and for a too large
     * descriptor it is what `connect` left, normally EINPROGRESS. With 0 seconds: the result of `connect`
     */
    int ConnectWithTimeout(int socket, sockaddr* address, int length, unsigned int seconds) const;

    /**
     * Writes a socket address as text, by way of `getnameinfo`. Gated: else empty.
     *
     * @param address  the address; null gives empty text. One that is neither IPv4 nor IPv6 has to
     * lie in 128 readable bytes (`sockaddr_storage`)
     * @param flags  flags of `getnameinfo`. With NI_NUMERICSERV: the service (port) only, also when
     *               NI_NUMERICHOST is given too. With NI_NUMERICHOST: the host only, with the scope
     *               of a link-local address as the system writes it. With neither: empty text
     * @return the text; empty on failure
     */
    std::string vlrNetToString(sockaddr* address, int flags) const;

    /**
     * Strips brackets and scope.
     *
     * @param address  any text; everything from the first "%" on goes, whatever the address, and
     * with brackets all text outside them
     * @param keepBrackets  whether brackets that were there are put back
     * @return "[fe80::1%en0]" gives "fe80::1", or "[fe80::1]" with `keepBrackets`; a text without
     * brackets never gains them
     */
    std::string formatV6addr(std::string address, bool keepBrackets) const;

    /**
     * As formatV6addr, with the scope that vlrGetScopeId finds put behind a link-local address.
     *
     * @param address  any text
     * @param keepBrackets  whether brackets that were there are put back
     * @return for example "fe80::1%2"; an address for which no scope is found stays without
     */
    std::string formatV6addrWithScope(std::string address, bool keepBrackets) const;

    /**
     * Finds a scope for a link-local address: the first interface index, ascending, with which the
     * resolver takes it. Loopback interfaces and those without an address do not count, and whether
     * the address can be reached there is not looked at. Gated: else 0.
     *
     * @param address  plain, bracketed or scoped. One that does not begin with "fe80" (lower case)
     * has no scope; a host name that begins so is resolved
     * @param[out] scope  the interface index; left alone when the result is 0
     * @return 1 found, 0 not
     */
    int vlrGetScopeId(const std::string& address, unsigned int& scope) const;

    /**
     * Resolves a host for stream sockets. A host or port ends at a NUL.
     *
     * @param host  name or address; brackets, text outside them and scope are dropped; empty fails
     * @param port  port or service name; empty for none
     * @param[out] result  the list, which the caller gives to `freeaddrinfo`; unchanged on failure.
     * Null fails
     * @param ipv4Only  IPv4 addresses only, else both families
     * @return 0, -1 for a bad argument or lack of memory, else the code of `getaddrinfo`
     */
    int vlrCreateAddrinfo(const std::string& host, const std::string& port, addrinfo** result,
                          const bool& ipv4Only) const;

    /**
     * Tells whether a peer is the configured host.
     *
     * Yes when both texts are equal, when the peer's text contains the host's anywhere (a
     * deliberate shortcut: the host "10.1.1.1" matches the peer "10.1.1.10", and an empty host
     * every peer), when they are equal without brackets and scope, or else when the host resolves
     * to the peer's address. The last step is gated.
     *
     * @param host  the configured name or address
     * @param port  port or service name for the look-up; may be empty
     * @param peer  numeric address of the peer, IPv6 as the system writes it (short form)
     * @return 1 the same, 0 not or not resolved
     */
    int vlrCompareAddressFromPeerAddress(std::string host, std::string port,
                                         std::string peer) const;

    /**
     * Finds the local address that leads to a host by connecting to it. The addresses of the host
     * are tried in the resolver's order, each for at most `seconds`; a link-local one gets its
     * scope from vlrGetScopeId. The connection is closed again. Gated: else -1.
     *
     * ConnectWithTimeout does not judge a refusal, and neither does this call: a host that refuses
     * within the time counts as reached. Only with 0 seconds a refusal fails. An address whose local
     * end stays unspecified (0.0.0.0 or "::"), as without a route, does not count as reached: the
     * next one is tried.
     *
     * @param host  name or address, read as vlrCreateAddrinfo reads it
     * @param port  port or service name
     * @param[out] local  the local address, IPv6 in the form of expandIPV6Address; left alone on
     * failure
     * @param ipv4Only  only IPv4 addresses of the host
     * @param niFlags  flags of `getnameinfo` for the local end; NI_NUMERICHOST gives an address,
     * without it a name may be looked up
     * @param seconds  as for ConnectWithTimeout: 0 for no time-out of its own; a negative number
     * reads as a very long one
     * @return 0 on success, the code of `getaddrinfo` when the host does not resolve, else -1
     */
    int vlrGetLocalIPAddress(const std::string& host, std::string port, std::string& local,
                             const bool& ipv4Only, int niFlags, int seconds) const;

    /**
     * As vlrGetLocalIPAddress for the first host of a list with which it succeeds, always with
     * NI_NUMERICHOST.
     *
     * @param hosts  hosts separated by ";"; empty items are no hosts and are passed over
     * @param port  port or service name for all of them
     * @param[out] local  the local address; left alone on failure
     * @param ipv4Only  only IPv4 addresses
     * @param ignored  kept for callers of old, never looked at
     * @param seconds  time-out for each address of each host
     * @return the result for the last host tried; -1 when there is none
     */
    int vlrGetLocalIPAddressFromList(const std::string& hosts, std::string port, std::string& local,
                                     const bool& ipv4Only, int ignored, int seconds) const;

    /**
     * Resolves a host into texts, at most 14 a call. Gated: else -1.
     *
     * @param host  name or address, read as vlrCreateAddrinfo reads it
     * @param port  port or service name; may be empty
     * @param[in,out] out  gets one terminated text of at most 1024 bytes for each address,
     * appended. The caller owns the buffers and gives them back with vlrFreeAddrinfo
     * @param niFlags  flags of `getnameinfo`, normally NI_NUMERICHOST
     * @return 0 when at least one text was added, the code of `getaddrinfo` when the host does not
     *         resolve, else -1
     */
    int vlrGetAddrinfo(const std::string& host, std::string port, std::vector<char*>& out,
                       int niFlags) const;

    /**
     * Releases every text of vlrGetAddrinfo (with `delete[]`; null entries are fine) and empties
     * the vector. Gated: else nothing happens.
     * @param[in,out] out  the texts
     */
    void vlrFreeAddrinfo(std::vector<char*>& out) const;

protected:
    /** 1 enables the gated operations; anything else disables them. */
    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes): part of the interface
    int32_t enabled_ = 0;
};

/** @} */

}  // namespace velora_com::qel

#endif
