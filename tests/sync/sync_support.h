// What the tests of handles, waits and threads share.
#pragma once

#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <memory>

#include "portability/errors.h"
#include "portability/handle_object.h"
#include "vlrcomn/handle.h"
#include "vlrcomn/sync.h"
#include "vlrcomn/thread.h"

namespace sync_test {

// A test that hangs ends the program ("Alarm clock") instead of the build; VLRCOMN_TEST_PATIENCE
// multiplies the time for slow machines and emulators.
class Bounded : public testing::Test {
protected:
    Bounded() {
        const char* patience = std::getenv("VLRCOMN_TEST_PATIENCE");
        alarm(100u * (patience != nullptr ? static_cast<unsigned>(std::atoi(patience)) : 1u));
    }
    ~Bounded() override { alarm(0); }
};

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

// Shows that the frame it lives in was left through its destructors.
struct DestructionMark {
    ~DestructionMark() { destroyed = true; }
    std::atomic<bool>& destroyed;
};

// What a call noted in the layer's error word.
template <typename Call>
uint32_t noted_by(Call call) {
    velora_com::qel::portability::nErrno = 0;
    call();
    return velora_com::qel::portability::nErrno;
}

}  // namespace sync_test
