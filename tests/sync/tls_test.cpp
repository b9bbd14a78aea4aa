#include <sys/wait.h>

#include <thread>

#include "portability/tls_index.h"
#include "sync_support.h"

using namespace sync_test;
using namespace velora_com::qel::portability;

namespace {

class Tls : public Bounded {
protected:
    void SetUp() override { free_tls_indices_of_process(); }
    void TearDown() override { free_tls_indices_of_process(); }
};

TEST_F(Tls, HandsOutTheLowestFreeIndex) {
    for (uint32_t index = 0; index < 512; ++index) {
        ASSERT_EQ(oruTlsAlloc(), index);
    }
    EXPECT_EQ(noted_by([] { EXPECT_EQ(oruTlsAlloc(), ORU_TLS_OUT_OF_INDEXES); }),
              static_cast<uint32_t>(EAGAIN));
    for (const uint32_t index : {300u, 511u, 5u, 0u}) {
        EXPECT_EQ(oruTlsFree(index), 1);
    }
    for (const uint32_t index : {0u, 5u, 300u, 511u}) {
        EXPECT_EQ(oruTlsAlloc(), index);
    }
}

TEST_F(Tls, RefusesIndicesThatAreNotInUse) {
    ASSERT_EQ(oruTlsAlloc(), 0u);
    for (const uint32_t index : {1u, 511u, 512u, ORU_TLS_OUT_OF_INDEXES}) {
        SCOPED_TRACE(index);
        const auto refused = static_cast<uint32_t>(EINVAL);
        EXPECT_EQ(noted_by([&] { EXPECT_EQ(oruTlsFree(index), 0); }), refused);
        EXPECT_EQ(noted_by([&] { EXPECT_EQ(oruTlsSetValue(index, this), 0); }), refused);
        EXPECT_EQ(noted_by([&] { EXPECT_EQ(oruTlsGetValue(index), nullptr); }), refused);
    }
}

TEST_F(Tls, HoldsAValueForEachThread) {
    uint32_t index = oruTlsAlloc();
    int mine = 0;
    EXPECT_EQ(noted_by([&] { EXPECT_EQ(oruTlsGetValue(index), nullptr); }), 0u);
    EXPECT_EQ(oruTlsSetValue(index, &mine), 1);
    std::thread([&] {
        EXPECT_EQ(oruTlsGetValue(index), nullptr);
        EXPECT_EQ(oruTlsSetValue(index, &index), 1);
    }).join();
    EXPECT_EQ(oruTlsGetValue(index), &mine);
    EXPECT_EQ(oruTlsFree(index), 1);
    ASSERT_EQ(oruTlsAlloc(), index);
    EXPECT_EQ(oruTlsGetValue(index), nullptr) << "a new index, no old value";
}

TEST_F(Tls, AForkedChildLeavesItsParentsIndices) {
    const uint32_t index = oruTlsAlloc();
    const pid_t child = fork();
    if (child == 0) {
        const uint32_t own = oruTlsAlloc();
        free_tls_indices_of_process();
        _exit(own == index + 1 && pTlsKeyTable[index] != 0 && pTlsKeyTable[own] == 0 ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

}  // namespace
