// What the tests of handles, waits and threads share.
#pragma once

#include "support/test.h"
#include "sync/handle_object.h"
#include "vlrcomn/sync.h"
#include "vlrcomn/thread.h"

namespace sync_test {

using namespace velora_com::qel::sync;

struct CloseHandle {
    void operator()(oruHandle handle) const { EXPECT_EQ(oruCloseHandle(handle), 1); }
};
using Handle = std::unique_ptr<_oruHandleObject_t, CloseHandle>;

inline Handle make_event(int initial_state = 0) {
    return Handle(oruCreateEvent(nullptr, 1, initial_state, nullptr));
}
inline Handle make_mutex(int initial_owner = 0) {
    return Handle(oruCreateMutex(nullptr, initial_owner, nullptr));
}
inline Handle start_thread(oruThreadRoutine routine, void* parameter) {
    return Handle(oruCreateThread(nullptr, 0, routine, parameter, 0, nullptr));
}
inline uint32_t wait_for(const Handle& handle, uint32_t milliseconds = ORU_INFINITE) {
    return oruWaitForSingleObject(handle.get(), milliseconds);
}

inline void expect_unlocked(const Handle& handle) {
    const bool free = handle->mutex.try_lock();
    EXPECT_TRUE(free);
    if (free) {
        handle->mutex.unlock();
    }
}

}  // namespace sync_test
