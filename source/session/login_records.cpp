#include "session/login_records.h"

#include <utmpx.h>

#include <algorithm>
#include <cstddef>

#include "support/owners.h"

namespace velora_com::qel::session {

namespace {

// Guards the process's record cursor.
support::Mutex cursor_mutex;

// One walk over the database. It ends the database before it begins: on Mac OS X 10.4 setutxent only
// seeks, and the stream of a process that is not root goes on with the bytes that it has read before.
// NOLINTBEGIN(concurrency-mt-unsafe): the mutex makes it one walk at a time
struct Walk {
    Walk() VLRCOMN_REQUIRES(cursor_mutex) { endutxent(); }
    ~Walk() VLRCOMN_REQUIRES(cursor_mutex) { setutxent(); }
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;

    static const utmpx* next() VLRCOMN_REQUIRES(cursor_mutex) { return getutxent(); }
};
// NOLINTEND(concurrency-mt-unsafe)

// A field of the record, which ends at its terminator or, without one, with the field.
template <size_t size>
std::string field_text(const char (&field)[size]) {
    return std::string(field, std::find(field, field + size, '\0'));
}

}  // namespace

bool LoginRecord::is_user() const {
    return type == USER_PROCESS;
}

std::vector<LoginRecord> login_records() {
    std::vector<LoginRecord> records;
    const support::CancellationOff uncancelled;
    const support::MutexGuard guard(cursor_mutex);
    const Walk walk;
    while (const utmpx* entry = Walk::next()) {
        records.push_back({entry->ut_type, field_text(entry->ut_id), field_text(entry->ut_user),
                           field_text(entry->ut_line)});
    }
    return records;
}

}  // namespace velora_com::qel::session
