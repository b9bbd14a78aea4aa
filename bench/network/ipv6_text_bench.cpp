// Rewriting IPv6 text against the C library's parser, which reads the same text into 16 bytes, and the strings
// that the signature forces.
#include <arpa/inet.h>
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include "support/registering.h"
#include "vlrcomn/ipv6_text.h"

#ifdef WITH_POCO
#include <Poco/Net/IPAddress.h>
#endif

namespace {

using namespace velora_com::qel;

const std::string texts[] = {"fe80::1", "fe80::20d:93ff:fe12:3456", "2001:db8::8:800:200c:417a",
                             "2001:db8:0:1:20d:93ff:fe12:3456"};

void expand(benchmark::State& state) {
    const std::string& text = texts[state.range(0)];
    for (auto _ : state) {
        benchmark::DoNotOptimize(expandIPV6Address(text));
    }
}

// What the signature alone costs: a copy of the text and a new string as long as the result.
[[gnu::noinline]] std::string copied(std::string text, const std::string& result) {
    benchmark::DoNotOptimize(text.data());
    return result;
}

void parse_and_copy(benchmark::State& state) {
    const std::string& text = texts[state.range(0)];
    const std::string result = expandIPV6Address(text);
    for (auto _ : state) {
        in6_addr address;
        benchmark::DoNotOptimize(inet_pton(AF_INET6, text.c_str(), &address));
        benchmark::DoNotOptimize(address);
        benchmark::DoNotOptimize(copied(text, result));
    }
}

// The expansion as one would write it with the C library alone.
void parse_and_print(benchmark::State& state) {
    const std::string& text = texts[state.range(0)];
    for (auto _ : state) {
        in6_addr address;
        inet_pton(AF_INET6, text.c_str(), &address);
        const auto group = [&](int i) {
            return static_cast<unsigned>(address.s6_addr[2 * i] << 8 | address.s6_addr[2 * i + 1]);
        };
        char out[40];
        std::snprintf(out, sizeof out, "%04x:%04x:%04x:%04x:%04x:%04x:%04x:%04x", group(0),
                      group(1), group(2), group(3), group(4), group(5), group(6), group(7));
        benchmark::DoNotOptimize(std::string(out));
    }
}

#ifdef WITH_POCO
// Reads the text and writes it again, in the short form: it has no long one.
void with_poco(benchmark::State& state) {
    const std::string& text = texts[state.range(0)];
    for (auto _ : state) {
        benchmark::DoNotOptimize(Poco::Net::IPAddress(text).toString());
    }
}
#endif

void subnet(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(calculateSubNetAddrForV6("2001:db8:0:1:20d:93ff:fe12:3456",
                                                          "ffff:ffff:ffff:ffff:0:0:0:0"));
    }
}

void literal(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            convertLiteralFormatToV6Addr(convertV6AddrToLiteralFormat(texts[1])));
    }
}

void add() {
    const auto add_expansion = [](const char* contender, void (*run)(benchmark::State&)) {
        add_contender("expand_ipv6", contender, run)->ArgName("text")->DenseRange(0, 3);
    };
    add_expansion("ours", expand);
    add_expansion("limit", parse_and_copy);
    add_expansion("inet_pton_snprintf", parse_and_print);
#ifdef WITH_POCO
    add_expansion("poco", with_poco);
#endif
    add_contender("ipv6_subnet", "ours", subnet);
    add_contender("ipv6_literal_and_back", "ours", literal);
}
REGISTER_BENCHMARKS(add);

}  // namespace
