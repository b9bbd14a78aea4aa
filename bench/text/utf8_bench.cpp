// Wide text to UTF-8 and back: this library, an iconv converter that is open already (the limit), one that
// is opened for each text, and the C library's locale conversion.
#include <benchmark/benchmark.h>

#include <clocale>
#include <cstring>
#include <cwchar>
#include <string>

#include "text/converter.h"
#include "vlrcomn/time_text.h"

namespace qel = velora_com::qel;

namespace {

// Text of exactly `bytes` bytes of UTF-8: English, or words with Latin, Greek, Japanese and astral letters.
std::string sample(int64_t bytes, bool mixed) {
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

const char* wide_encoding() {
    return qel::isBigEndian() ? "UCS-4BE" : "UCS-4LE";
}

void convert(iconv_t converter, const void* input, size_t input_size, void* output,
             size_t output_size) {
    char* in = static_cast<char*>(const_cast<void*>(input));
    char* out = static_cast<char*>(output);
    iconv(converter, &in, &input_size, &out, &output_size);
    benchmark::DoNotOptimize(output);
    benchmark::ClobberMemory();
}

// One text in both forms and buffers for either.
struct Texts {
    explicit Texts(const benchmark::State& state)
        : narrow(sample(state.range(0), state.range(1) != 0)),
          wide(qel::orumcomn_ansi_to_wide(narrow)),
          narrow_out(6 * wide.size() + 1, '\0'),
          wide_out(narrow.size() + 1, L'\0') {}
    std::string narrow;
    std::wstring wide;
    std::string narrow_out;
    std::wstring wide_out;
};

void encode_ours(benchmark::State& state) {
    Texts texts(state);
    const uint32_t size = static_cast<uint32_t>(texts.narrow_out.size());
    for (auto _ : state) {
        orumcomn_unicode_to_utf8(texts.wide.c_str(), texts.narrow_out.data(), &size);
        benchmark::ClobberMemory();
    }
}

void encode_ours_as_string(benchmark::State& state) {
    const Texts texts(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(qel::orumcomn_wide_to_ansi(texts.wide));
    }
}

// Like the library, the contenders are handed a text with a terminator and find its length.
void encode_open_iconv(benchmark::State& state) {
    Texts texts(state);
    const Converter converter("UTF8", wide_encoding());
    for (auto _ : state) {
        convert(converter.get(), texts.wide.c_str(), 4 * (std::wcslen(texts.wide.c_str()) + 1),
                texts.narrow_out.data(), texts.narrow_out.size());
    }
}

void encode_fresh_iconv(benchmark::State& state) {
    Texts texts(state);
    for (auto _ : state) {
        const Converter converter("UTF8", wide_encoding());
        convert(converter.get(), texts.wide.c_str(), 4 * (std::wcslen(texts.wide.c_str()) + 1),
                texts.narrow_out.data(), texts.narrow_out.size());
    }
}

void encode_wcsrtombs(benchmark::State& state) {
    Texts texts(state);
    std::setlocale(LC_CTYPE, "C.UTF-8");
    for (auto _ : state) {
        std::mbstate_t shift = {};
        const wchar_t* in = texts.wide.c_str();
        benchmark::DoNotOptimize(
            std::wcsrtombs(texts.narrow_out.data(), &in, texts.narrow_out.size(), &shift));
        benchmark::ClobberMemory();
    }
    std::setlocale(LC_CTYPE, "C");
}

void decode_ours(benchmark::State& state) {
    Texts texts(state);
    const uint32_t size = static_cast<uint32_t>(texts.wide_out.size());
    for (auto _ : state) {
        orumcomn_utf8_to_unicode(texts.narrow.c_str(), texts.wide_out.data(), &size);
        benchmark::ClobberMemory();
    }
}

void decode_ours_as_string(benchmark::State& state) {
    const Texts texts(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(qel::orumcomn_ansi_to_wide(texts.narrow));
    }
}

void decode_open_iconv(benchmark::State& state) {
    Texts texts(state);
    const Converter converter(wide_encoding(), "UTF8");
    for (auto _ : state) {
        convert(converter.get(), texts.narrow.c_str(), std::strlen(texts.narrow.c_str()) + 1,
                texts.wide_out.data(), 4 * texts.wide_out.size());
    }
}

void decode_fresh_iconv(benchmark::State& state) {
    Texts texts(state);
    for (auto _ : state) {
        const Converter converter(wide_encoding(), "UTF8");
        convert(converter.get(), texts.narrow.c_str(), std::strlen(texts.narrow.c_str()) + 1,
                texts.wide_out.data(), 4 * texts.wide_out.size());
    }
}

void decode_mbsrtowcs(benchmark::State& state) {
    Texts texts(state);
    std::setlocale(LC_CTYPE, "C.UTF-8");
    for (auto _ : state) {
        std::mbstate_t shift = {};
        const char* in = texts.narrow.c_str();
        benchmark::DoNotOptimize(
            std::mbsrtowcs(texts.wide_out.data(), &in, texts.wide_out.size(), &shift));
        benchmark::ClobberMemory();
    }
    std::setlocale(LC_CTYPE, "C");
}

// Bytes of UTF-8; 0 for English text, 1 for mixed letters.
void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"bytes", "mixed"})->ArgsProduct({{16, 256, 65536}, {0, 1}});
}

// The figure of one conversion, on one thread and on two at once.
void threads(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"bytes", "mixed"})
        ->ArgsProduct({{16, 65536}, {1}})
        ->Threads(1)
        ->Threads(2);
}

BENCHMARK(encode_ours)->Name("BM_wide_to_utf8/ours")->Apply(sizes);
BENCHMARK(encode_ours_as_string)->Name("BM_wide_to_utf8/ours_as_string")->Apply(sizes);
BENCHMARK(encode_open_iconv)->Name("BM_wide_to_utf8/limit")->Apply(sizes);
BENCHMARK(encode_fresh_iconv)->Name("BM_wide_to_utf8/fresh_iconv")->Apply(sizes);
BENCHMARK(encode_wcsrtombs)->Name("BM_wide_to_utf8/wcsrtombs")->Apply(sizes);
BENCHMARK(decode_ours)->Name("BM_utf8_to_wide/ours")->Apply(sizes);
BENCHMARK(decode_ours_as_string)->Name("BM_utf8_to_wide/ours_as_string")->Apply(sizes);
BENCHMARK(decode_open_iconv)->Name("BM_utf8_to_wide/limit")->Apply(sizes);
BENCHMARK(decode_fresh_iconv)->Name("BM_utf8_to_wide/fresh_iconv")->Apply(sizes);
BENCHMARK(decode_mbsrtowcs)->Name("BM_utf8_to_wide/mbsrtowcs")->Apply(sizes);
BENCHMARK(encode_ours)->Name("BM_wide_to_utf8_by_threads/ours")->Apply(threads);
BENCHMARK(encode_open_iconv)->Name("BM_wide_to_utf8_by_threads/limit")->Apply(threads);
BENCHMARK(decode_ours)->Name("BM_utf8_to_wide_by_threads/ours")->Apply(threads);
BENCHMARK(decode_open_iconv)->Name("BM_utf8_to_wide_by_threads/limit")->Apply(threads);

}  // namespace

BENCHMARK_MAIN();
