#include <ctime>

#include "support/owners.h"
#include "vlrcomn/system.h"

static_assert(sizeof(oruSystemTime) == 16, "eight 16-bit numbers");

void oruGetSystemTime(oruSystemTime* record) {
    if (record == nullptr) {
        return;
    }
    *record = {};
    // localtime_r may open a zone file, which a cancelled thread would leave open.
    const velora_com::qel::support::CancellationOff no_cancellation;
    const time_t now = std::time(nullptr);
    std::tm time = {};
    if (localtime_r(&now, &time) != nullptr) {
        record->year = static_cast<uint16_t>(time.tm_year + 1900);
        record->month = static_cast<uint16_t>(time.tm_mon + 1);
        record->day_of_week = static_cast<uint16_t>(time.tm_wday);
        record->day = static_cast<uint16_t>(time.tm_mday);
        record->hour = static_cast<uint16_t>(time.tm_hour);
        record->minute = static_cast<uint16_t>(time.tm_min);
        record->second = static_cast<uint16_t>(time.tm_sec);
    }
}
