// Making GUIDs, against the ten a microsecond that the time stamp allows, and their text, against a table
// of two digits a byte.
#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <ctime>

#include "support/registering.h"
#include "vlrcomn/guid.h"

#ifdef WITH_LIBUUID
#include <uuid/uuid.h>
#endif
#ifdef WITH_POCO
#include <Poco/UUIDGenerator.h>
#endif

namespace {

void make_ours(benchmark::State& state) {
    GUID guid;
    for (auto _ : state) {
        oruCoCreateGuid(&guid);
        benchmark::DoNotOptimize(guid);
    }
}

// Nothing can make more time stamps than there are: waits until the next tenth of a microsecond.
void make_limit(benchmark::State& state) {
    const auto stamp = [] {
        timespec time;
        clock_gettime(CLOCK_REALTIME, &time);
        return (time.tv_sec * 1000000000LL + time.tv_nsec) / 100;
    };
    long long last = stamp();
    for (auto _ : state) {
        long long now = stamp();
        while (now <= last) {
            now = stamp();
        }
        last = now;
    }
}

constexpr GUID sample = {0x1B4E28BA, 0x2FA1, 0x11D2, {0x88, 0x3F, 0, 0x16, 0xD3, 0xCC, 0xA4, 0x27}};

void text_ours(benchmark::State& state) {
    GUID guid = sample;
    char text[ORU_GUID_TEXT_SIZE];
    for (auto _ : state) {
        benchmark::DoNotOptimize(guid);
        benchmark::DoNotOptimize(oruUuidToStringA(&guid, text));
        benchmark::ClobberMemory();
    }
}

struct HexTable {
    HexTable() {
        for (unsigned i = 0; i < 256; ++i) {
            pairs[i] = {"0123456789abcdef"[i >> 4], "0123456789abcdef"[i & 15]};
        }
    }
    std::array<std::array<char, 2>, 256> pairs;
};
const HexTable table;

void text_hex_table(benchmark::State& state) {
    GUID guid = sample;
    char text[ORU_GUID_TEXT_SIZE];
    for (auto _ : state) {
        benchmark::DoNotOptimize(guid);
        char* out = text;
        const auto put = [&out](unsigned byte) {
            std::memcpy(out, table.pairs[byte & 0xFF].data(), 2);
            out += 2;
        };
        for (const int shift : {24, 16, 8, 0}) {
            put(guid.Data1 >> shift);
        }
        *out++ = '-';
        put(guid.Data2 >> 8U);
        put(guid.Data2);
        *out++ = '-';
        put(guid.Data3 >> 8U);
        put(guid.Data3);
        *out++ = '-';
        put(guid.Data4[0]);
        put(guid.Data4[1]);
        *out++ = '-';
        for (int i = 2; i < 8; ++i) {
            put(guid.Data4[i]);
        }
        *out = '\0';
        benchmark::DoNotOptimize(text);
        benchmark::ClobberMemory();
    }
}

void text_snprintf(benchmark::State& state) {
    GUID guid = sample;
    char text[ORU_GUID_TEXT_SIZE];
    for (auto _ : state) {
        benchmark::DoNotOptimize(guid);
        std::snprintf(text, sizeof text, "%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x",
                      guid.Data1, guid.Data2, guid.Data3, guid.Data4[0], guid.Data4[1],
                      guid.Data4[2], guid.Data4[3], guid.Data4[4], guid.Data4[5], guid.Data4[6],
                      guid.Data4[7]);
        benchmark::ClobberMemory();
    }
}

#ifdef WITH_LIBUUID
void make_libuuid(benchmark::State& state) {
    uuid_t id;
    for (auto _ : state) {
        uuid_generate_time(id);
        benchmark::DoNotOptimize(id);
    }
}

void text_libuuid(benchmark::State& state) {
    uuid_t id;
    uuid_parse("1b4e28ba-2fa1-11d2-883f-0016d3cca427", id);
    char text[ORU_GUID_TEXT_SIZE];
    for (auto _ : state) {
        benchmark::DoNotOptimize(id);
        uuid_unparse_lower(id, text);
        benchmark::ClobberMemory();
    }
}
#endif

#ifdef WITH_POCO
void make_poco(benchmark::State& state) {
    Poco::UUIDGenerator& generator = Poco::UUIDGenerator::defaultGenerator();
    for (auto _ : state) {
        benchmark::DoNotOptimize(generator.create());
    }
}

void text_poco(benchmark::State& state) {
    const Poco::UUID id("1b4e28ba-2fa1-11d2-883f-0016d3cca427");
    for (auto _ : state) {
        benchmark::DoNotOptimize(id.toString());
    }
}
#endif

void add() {
    add_contender("guid_make", "ours", make_ours)->UseRealTime();
    add_contender("guid_make", "limit", make_limit)->UseRealTime();
    add_contender("guid_text", "ours", text_ours);
    add_contender("guid_text", "limit", text_hex_table);
    add_contender("guid_text", "snprintf", text_snprintf);
#ifdef WITH_LIBUUID
    add_contender("guid_make", "libuuid", make_libuuid)->UseRealTime();
    add_contender("guid_text", "libuuid", text_libuuid);
#endif
#ifdef WITH_POCO
    add_contender("guid_make", "poco", make_poco)->UseRealTime();
    add_contender("guid_text", "poco", text_poco);
#endif
}
REGISTER_BENCHMARKS(add);

}  // namespace
