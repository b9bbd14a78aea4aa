// UTF-8 to wide text: the contenders are handed a text with a terminator, as the library is, and find its length.
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
        benchmark::DoNotOptimize(velora_com::qel::orumcomn_ansi_to_wide(texts.narrow));
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
    const Utf8Locale locale;
    for (auto _ : state) {
        std::mbstate_t shift = {};
        const char* in = texts.narrow.c_str();
        benchmark::DoNotOptimize(
            std::mbsrtowcs(texts.wide_out.data(), &in, texts.wide_out.size(), &shift));
        benchmark::ClobberMemory();
    }
}

#ifdef WITH_GLIB
void decode_glib(benchmark::State& state) {
    const Texts texts(state);
    for (auto _ : state) {
        gunichar* const wide = g_utf8_to_ucs4(texts.narrow.c_str(), -1, nullptr, nullptr, nullptr);
        benchmark::DoNotOptimize(wide);
        g_free(wide);
    }
}
#endif

#ifdef WITH_ICU
// Its own texts are UTF-16.
void decode_icu(benchmark::State& state) {
    Texts texts(state);
    for (auto _ : state) {
        UErrorCode error = U_ZERO_ERROR;
        int32_t units = 0;
        u_strFromUTF8(texts.utf16.data(), texts.utf16_size(), &units, texts.narrow.c_str(), -1,
                      &error);
        u_strToWCS(texts.wide_out.data(), texts.wide_size(), nullptr, texts.utf16.data(), units,
                   &error);
        benchmark::DoNotOptimize(error);
        benchmark::ClobberMemory();
    }
}
#endif

void add() {
    const char* const workload = "utf8_to_wide";
    add_sizes(workload, "ours", decode_ours);
    add_sizes(workload, "ours_as_string", decode_ours_as_string);
    add_sizes(workload, "limit", decode_open_iconv);
    add_sizes(workload, "iconv_opened_each_time", decode_fresh_iconv);
    add_sizes(workload, "mbsrtowcs", decode_mbsrtowcs);
#ifdef WITH_GLIB
    add_sizes(workload, "glib", decode_glib);
#endif
#ifdef WITH_ICU
    add_sizes(workload, "icu", decode_icu);
#endif
    add_threads("utf8_to_wide_by_threads", "ours", decode_ours);
    add_threads("utf8_to_wide_by_threads", "limit", decode_open_iconv);
}
REGISTER_BENCHMARKS(add);

}  // namespace
