// Wide text to UTF-8: the contenders are handed a text with a terminator, as the library is, and find its length.
#include <cstring>
#include <cwchar>

#include "utf8_texts.h"

#ifdef WITH_GLIB
#include <glib.h>
#endif
#ifdef WITH_ICU
#include <unicode/ustring.h>
#endif

namespace {

using namespace utf8_bench;

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
        benchmark::DoNotOptimize(velora_com::qel::orumcomn_wide_to_ansi(texts.wide));
    }
}

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
    const Utf8Locale locale;
    for (auto _ : state) {
        std::mbstate_t shift = {};
        const wchar_t* in = texts.wide.c_str();
        benchmark::DoNotOptimize(
            std::wcsrtombs(texts.narrow_out.data(), &in, texts.narrow_out.size(), &shift));
        benchmark::ClobberMemory();
    }
}

#ifdef WITH_GLIB
void encode_glib(benchmark::State& state) {
    const Texts texts(state);
    for (auto _ : state) {
        const auto* wide = reinterpret_cast<const gunichar*>(texts.wide.c_str());
        char* const narrow = g_ucs4_to_utf8(wide, -1, nullptr, nullptr, nullptr);
        benchmark::DoNotOptimize(narrow);
        g_free(narrow);
    }
}
#endif

#ifdef WITH_ICU
// Its own texts are UTF-16.
void encode_icu(benchmark::State& state) {
    Texts texts(state);
    for (auto _ : state) {
        UErrorCode error = U_ZERO_ERROR;
        int32_t units = 0;
        u_strFromWCS(texts.utf16.data(), texts.utf16_size(), &units, texts.wide.c_str(), -1,
                     &error);
        u_strToUTF8(texts.narrow_out.data(), texts.narrow_size(), nullptr, texts.utf16.data(),
                    units, &error);
        benchmark::DoNotOptimize(error);
        benchmark::ClobberMemory();
    }
}
#endif

void add() {
    const char* const workload = "wide_to_utf8";
    add_sizes(workload, "ours", encode_ours);
    add_sizes(workload, "ours_as_string", encode_ours_as_string);
    add_sizes(workload, "limit", encode_open_iconv);
    add_sizes(workload, "iconv_opened_each_time", encode_fresh_iconv);
    add_sizes(workload, "wcsrtombs", encode_wcsrtombs);
#ifdef WITH_GLIB
    add_sizes(workload, "glib", encode_glib);
#endif
#ifdef WITH_ICU
    add_sizes(workload, "icu", encode_icu);
#endif
    add_threads("wide_to_utf8_by_threads", "ours", encode_ours);
    add_threads("wide_to_utf8_by_threads", "limit", encode_open_iconv);
}
REGISTER_BENCHMARKS(add);

}  // namespace
