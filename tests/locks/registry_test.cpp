#include <gtest/gtest.h>

#include <thread>

#include "lists/thread_registry.h"
#include "locks/peers.h"
#include "vlrcomn/handle.h"
#include "vlrcomn/sync.h"
#include "vlrcomn/thread.h"

namespace {

TEST(Registry, AttachesAndDetaches) {
    EXPECT_EQ(orSO_tls_index, -1);
    EXPECT_EQ(orSO_ThreadAttach(), 0u);
    EXPECT_EQ(orSO_GetThread(), ORSO_NO_THREAD);
    EXPECT_EQ(orSO_DbgGetThread(), 0u);
    EXPECT_EQ(orSO_ThreadAttachX(), 0);
    EXPECT_EQ(orSO_ThreadDetach(), 0);
    EXPECT_EQ(orSO_ProcessDetach(), 0);

    const int32_t index = orSO_ProcessAttach();
    ASSERT_GE(index, 0);
    EXPECT_EQ(orSO_tls_index, index);
    EXPECT_EQ(orSO_DbgGetThread(), 0u);
    EXPECT_EQ(orSO_ThreadAttach(), 1u);
    const uintptr_t me = orSO_GetThread();
    EXPECT_EQ(orSO_ThreadAttach(), me) << "only the first one gives 1";
    EXPECT_EQ(orSO_DbgGetThread(), me);
    std::thread([] { EXPECT_EQ(orSO_GetThread(), ORSO_NO_THREAD); }).join();
    orSO_ThreadDetachX();
    EXPECT_EQ(orSO_GetThread(), me);
    EXPECT_EQ(orSO_ThreadDetach(), 1);
    EXPECT_EQ(orSO_GetThread(), ORSO_NO_THREAD);
    EXPECT_EQ(orSO_DbgGetThread(), ORSO_NO_THREAD);
    EXPECT_EQ(orSO_ThreadDetach(), 1) << "nothing to close is no failure";

    EXPECT_EQ(orSO_ThreadAttach(), 1u);
    const auto event = reinterpret_cast<oruHandle>(orSO_GetThread());
    EXPECT_EQ(oruWaitForSingleObject(event, 0), ORU_WAIT_TIMEOUT) << "starts reset";
    EXPECT_EQ(orSO_ThreadAttachX(), 1);
    EXPECT_EQ(orSO_GetThread(), ORSO_NO_THREAD);
    EXPECT_EQ(oruCloseHandle(event), 1) << "left open for its owner";
    EXPECT_EQ(orSO_ProcessDetach(), 1);
    EXPECT_EQ(orSO_tls_index, -1);
}

// The end of a layer-started thread frees the index; attaching anew is the way on.
TEST(Registry, SurvivesTheSweepOfAnEndingThread) {
    ASSERT_GE(orSO_ProcessAttach(), 0);
    ASSERT_EQ(orSO_ThreadAttach(), 1u);
    const auto left_behind = reinterpret_cast<oruHandle>(orSO_GetThread());
    const oruHandle thread = oruCreateThread(
        nullptr, 0, [](void*) -> uint32_t { return 0; }, nullptr, 0, nullptr);
    while (oruWaitForSingleObject(thread, ORU_INFINITE) != ORU_WAIT_SIGNALLED) {
    }
    oruCloseHandle(thread);
    EXPECT_EQ(orSO_GetThread(), ORSO_NO_THREAD);
    EXPECT_EQ(orSO_ThreadAttach(), 0u);

    const locks::Registry attached_anew;
    const locks::Lock lock;
    EXPECT_EQ(orSO_SELockExclusive(lock, 1), 1);
    EXPECT_EQ(lock->owner, orSO_GetThread());
    orSO_SELockRelease(lock);
    oruCloseHandle(left_behind);
}

}  // namespace
