// One text in UTF-8 and as wide characters, for the benchmarks of the conversions.
#pragma once

#include <benchmark/benchmark.h>

#include <clocale>
#include <string>

#include "converter.h"
#include "support/registering.h"
#include "vlrcomn/time_text.h"

namespace utf8_bench {

// Text of exactly `bytes` bytes of UTF-8: English, or words with Latin, Greek, Japanese and astral letters.
inline std::string sample(int64_t bytes, bool mixed) {
    const std::string words =
        mixed ? "Gr\xC3\xB6\xC3\x9F"
                "e \xCE\xB1\xCE\xB2 \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x98\x80 of it, "
              : "The quick brown fox jumps over the lazy dog. ";
    std::string text;
    while (text.size() < static_cast<size_t>(bytes)) {
        text += words;
    }
    text.resize(static_cast<size_t>(bytes));
    // A character torn by the cut becomes blanks.
    size_t end = text.size();
    while (end > 0 && (text[end - 1] & 0xC0) == 0x80) {
        --end;
    }
    if (end > 0 && (text[end - 1] & 0x80) != 0) {
        text.replace(end - 1, std::string::npos, text.size() - end + 1, ' ');
    }
    return text;
}

// The text, and buffers for either form.
struct Texts {
    explicit Texts(const benchmark::State& state)
        : narrow(sample(state.range(0), state.range(1) != 0)),
          wide(velora_com::qel::orumcomn_ansi_to_wide(narrow)),
          narrow_out(6 * wide.size() + 1, '\0'),
          wide_out(narrow.size() + 1, L'\0'),
          utf16(2 * wide.size() + 1, u'\0') {}
    int32_t narrow_size() const { return static_cast<int32_t>(narrow_out.size()); }
    int32_t wide_size() const { return static_cast<int32_t>(wide_out.size()); }
    int32_t utf16_size() const { return static_cast<int32_t>(utf16.size()); }

    std::string narrow;
    std::wstring wide;
    std::string narrow_out;
    std::wstring wide_out;
    // On the way between the two, for who goes by it.
    std::u16string utf16;
};

// The locale by which the C library's own functions convert.
class Utf8Locale {
public:
    Utf8Locale() { std::setlocale(LC_CTYPE, "C.UTF-8"); }
    ~Utf8Locale() { std::setlocale(LC_CTYPE, "C"); }
    Utf8Locale(const Utf8Locale&) = delete;
    Utf8Locale& operator=(const Utf8Locale&) = delete;
};

inline const char* wide_encoding() {
    return velora_com::qel::isBigEndian() ? "UCS-4BE" : "UCS-4LE";
}

inline void convert(iconv_t converter, const void* input, size_t input_size, void* output,
                    size_t output_size) {
    char* in = static_cast<char*>(const_cast<void*>(input));
    char* out = static_cast<char*>(output);
    iconv(converter, &in, &input_size, &out, &output_size);
    benchmark::DoNotOptimize(output);
    benchmark::ClobberMemory();
}

// One text on one thread: bytes of UTF-8; 0 for English text, 1 for mixed letters.
inline void add_sizes(const char* workload, const char* contender, void (*run)(benchmark::State&)) {
    add_contender(workload, contender, run)
        ->ArgNames({"bytes", "mixed"})
        ->ArgsProduct({{16, 256, 65536}, {0, 1}});
}

// The same on one thread and on two at once. In processor time: threads that met at a lock would spend more.
inline void add_threads(const char* workload, const char* contender,
                        void (*run)(benchmark::State&)) {
    add_contender(workload, contender, run)
        ->ArgNames({"bytes", "mixed"})
        ->ArgsProduct({{16, 65536}, {1}})
        ->Threads(1)
        ->Threads(2);
}

}  // namespace utf8_bench
