// The end of a thread against the closing of its handle: whichever comes second touches nothing
// that the first has given up.
#pragma once

#include "sync/handle_object.h"
#include "vlrcomn/thread.h"

namespace velora_com::qel::sync {

// Stands in for bSignalled of a thread whose handle was closed before its end.
extern SignalWord bDummyThreadSignalled;

// What a new thread needs; freed by its end.
struct StartBlock {
    support::Mutex* mutex;
    pthread_cond_t* cond;
    SignalWord* signal;  // the record's bSignalled; bDummyThreadSignalled once the handle is closed
    oruThreadRoutine routine;
    void* parameter;
    oruHandle handle;  // valid as long as `signal` is not redirected
};

// Signals the thread's handle, unless it was closed.
void signal_thread_end(const StartBlock& block) noexcept;

// Makes a thread's record, which nobody else uses, safe to be freed: redirects the signal of a thread that
// has not ended, or waits until a thread that is about to end no longer uses the record.
void part_from_thread(_oruHandleObject_t& record) noexcept;

}  // namespace velora_com::qel::sync
