#include <algorithm>
#include <cstdio>
#include <ctime>
#include <cwchar>
#include <optional>
#include <string>

#include "support/boundary.h"
#include "support/owners.h"
#include "support/time_now.h"
#include "vlrcomn/time_text.h"

using namespace velora_com::qel;

namespace {

void write_digits(const std::optional<std::tm>& time, char* text, size_t size) {
    if (time) {
        std::snprintf(text, size, "%04d%02d%02d%02d%02d%02d", time->tm_year + 1900,
                      time->tm_mon + 1, time->tm_mday, time->tm_hour, time->tm_min, time->tm_sec);
    }
}

void write_digits(const std::optional<std::tm>& time, wchar_t* text, size_t size) {
    char digits[32] = {};
    write_digits(time, digits, sizeof digits);
    wchar_t wide[sizeof digits] = {};
    std::copy(std::begin(digits), std::end(digits), wide);
    if (time) {
        std::wcsncpy(text, wide, size);
    }
}

template <typename Character>
void write_stamp(decltype(&support::gmt_now) now, Character* text, size_t size) {
    if (text != nullptr && size != 0) {
        write_digits(now(), text, size);
    }
}

}  // namespace

void orumcomn_CreateGmtTimeStampA(char* text, uint32_t size) {
    write_stamp(support::gmt_now, text, size);
}

void orumcomn_CreateGmtTimeStampW(wchar_t* text, uint32_t size) {
    write_stamp(support::gmt_now, text, size);
}

void orumcomn_CreateLocalTimeStampA(char* text, uint32_t size) {
    write_stamp(support::local_time_now, text, size);
}

void orumcomn_CreateLocalTimeStampW(wchar_t* text, uint32_t size) {
    write_stamp(support::local_time_now, text, size);
}

namespace velora_com::qel {

std::string orumcomn_get_time_stamp_ansi() {
    std::optional<std::tm> time;
    {
        const support::CancellationOff no_cancellation;
        const support::UncheckedMutexGuard lock(mutex);
        time = support::local_time_now();
    }
    char text[80] = {};
    if (time) {
        std::snprintf(text, sizeof text, "%4d-%02d-%02d %02d:%02d:%02d", time->tm_year + 1900,
                      time->tm_mon + 1, time->tm_mday, time->tm_hour, time->tm_min, time->tm_sec);
    }
    return support::or_failure(std::string(), [&] { return std::string(text); });
}

std::wstring orumcomn_get_time_stamp_wide() {
    return orumcomn_ansi_to_wide(orumcomn_get_time_stamp_ansi());
}

}  // namespace velora_com::qel
