// Rewriting IPv6 text against the C library's parser, which reads the same text into 16 bytes.
#include <arpa/inet.h>
#include <benchmark/benchmark.h>

#include <string>

#include "vlrcomn/ipv6_text.h"

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

void copy(benchmark::State& state) {
    const std::string& text = texts[state.range(0)];
    const std::string result = expandIPV6Address(text);
    for (auto _ : state) {
        benchmark::DoNotOptimize(copied(text, result));
    }
}

void parse(benchmark::State& state) {
    const std::string& text = texts[state.range(0)];
    for (auto _ : state) {
        in6_addr address;
        benchmark::DoNotOptimize(inet_pton(AF_INET6, text.c_str(), &address));
        benchmark::DoNotOptimize(address);
    }
}

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

BENCHMARK(expand)->Name("BM_expand_ipv6/ours")->DenseRange(0, 3);
BENCHMARK(copy)->Name("BM_expand_ipv6/strings_alone")->DenseRange(0, 3);
BENCHMARK(parse)->Name("BM_expand_ipv6/limit")->DenseRange(0, 3);
BENCHMARK(subnet)->Name("BM_ipv6_subnet/ours");
BENCHMARK(literal)->Name("BM_ipv6_literal_and_back/ours");

}  // namespace
