#include "support/time_now.h"
#include "vlrcomn/system.h"

static_assert(sizeof(oruSystemTime) == 16, "eight 16-bit numbers");

void oruGetSystemTime(oruSystemTime* record) {
    if (record == nullptr) {
        return;
    }
    *record = {};
    if (const std::optional<std::tm> time = velora_com::qel::support::local_time_now()) {
        record->year = static_cast<uint16_t>(time->tm_year + 1900);
        record->month = static_cast<uint16_t>(time->tm_mon + 1);
        record->day_of_week = static_cast<uint16_t>(time->tm_wday);
        record->day = static_cast<uint16_t>(time->tm_mday);
        record->hour = static_cast<uint16_t>(time->tm_hour);
        record->minute = static_cast<uint16_t>(time->tm_min);
        record->second = static_cast<uint16_t>(time->tm_sec);
    }
}
