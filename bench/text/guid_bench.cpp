// Making GUIDs, against the ten a microsecond that the time stamp allows, and their text, against a table
// of two digits a byte.
#include <benchmark/benchmark.h>

#include <array>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <mutex>
#include <thread>

#include "vlrcomn/guid.h"

namespace {

// Keeps a second thread parked: the C library's mutexes are cheaper while a process has only one.
class ParkedThread {
public:
    ParkedThread()
        : thread_([this] {
              std::unique_lock<std::mutex> lock(mutex_);
              left_.wait(lock, [this] { return done_; });
          }) {}
    ~ParkedThread() {
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            done_ = true;
        }
        left_.notify_one();
        thread_.join();
    }
    ParkedThread(const ParkedThread&) = delete;
    ParkedThread& operator=(const ParkedThread&) = delete;

private:
    std::mutex mutex_;
    std::condition_variable left_;
    bool done_ = false;
    std::thread thread_;
};

void make_ours(benchmark::State& state) {
    const ParkedThread parked;
    GUID guid;
    for (auto _ : state) {
        oruCoCreateGuid(&guid);
        benchmark::DoNotOptimize(guid);
    }
}

// Nothing can make more time stamps than there are: waits until a tenth of a microsecond has passed.
void make_limit(benchmark::State& state) {
    const auto now = [] {
        timespec time;
        clock_gettime(CLOCK_REALTIME, &time);
        return time.tv_sec * 1000000000LL + time.tv_nsec;
    };
    long long next = now();
    for (auto _ : state) {
        while (now() < next) {
        }
        next += 100;
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

BENCHMARK(make_ours)->Name("BM_guid_make/ours");
BENCHMARK(make_limit)->Name("BM_guid_make/limit");
BENCHMARK(text_ours)->Name("BM_guid_text/ours");
BENCHMARK(text_hex_table)->Name("BM_guid_text/limit");
BENCHMARK(text_snprintf)->Name("BM_guid_text/snprintf");

}  // namespace
