#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <optional>

#include "session/user_list.h"
#include "support/boundary.h"
#include "support/owners.h"
#include "support/time_now.h"
#include "vlrcomn/system_properties.h"
#include "vlrcomn/time_text.h"

namespace velora_com::qel::sysprops {

namespace {

// Abbreviation of standard time in the local zone, or nothing when the C library has none. tzname is filled
// by tzset alone, so that without the call the first report of a process would name no zone. This file's
// own lock comes first, then the one under which the time functions change "TZ".
std::optional<std::string> zone_name() {
    static support::Mutex own_mutex;
    const support::CancellationOff uncancelled;
    const support::MutexGuard own_guard(own_mutex);
    const support::UncheckedMutexGuard time_guard(mutex);
    tzset();
    return tzname[0] == nullptr ? std::nullopt : std::optional<std::string>(tzname[0]);
}

// "MM/DD/YYYY hh:mm:ss" of now in local time; nothing when the time cannot be broken down.
std::optional<std::string> local_time_text() {
    const std::optional<std::tm> local = support::local_time_now();
    if (!local) {
        return std::nullopt;
    }
    char text[80];
    std::snprintf(text, sizeof text, "%02d/%02d/%04d %02d:%02d:%02d", local->tm_mon + 1,
                  local->tm_mday, local->tm_year + 1900, local->tm_hour, local->tm_min,
                  local->tm_sec);
    return std::string(text);
}

// The server knows three languages. It spells British English "en_UK", so that a locale of "en_GB" is
// reported like any other.
const wchar_t* language_id() {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): only a program that changes its environment meanwhile
    const char* const locale = std::getenv("LANG");
    if (locale != nullptr && std::strstr(locale, "en_UK") != nullptr) {
        return L"0809";
    }
    if (locale != nullptr && std::strstr(locale, "ja_JP") != nullptr) {
        return L"0411";
    }
    return L"0409";
}

}  // namespace

bool ISysProps::GetMiscInformation(MiscInformation& info) {
    return support::or_failure(false, [&] {
        info.wstrUserName = session::reported_users();
        if (const auto zone = zone_name()) {
            info.wstrTimeZone = sysprops_ansi_to_wide(*zone);
        }
        if (const auto now = local_time_text()) {
            info.wstrLastUpdate = sysprops_ansi_to_wide(*now);
        }
        info.wstrDefaultLangID = language_id();
        return true;
    });
}

}  // namespace velora_com::qel::sysprops
