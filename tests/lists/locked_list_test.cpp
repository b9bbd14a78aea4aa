#include "vlrcomn/locked_list.h"

#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "locks/peers.h"

namespace {

// The two families under one set of names; [0] is the head and [1] the tail, which a stack lacks.
struct Stack {
    using List = orSLL;
    using Item = orLLItem;
    static constexpr auto init = orSLL_Init;
    static constexpr auto uninit = orSLL_Uninit;
    static constexpr auto create = orSLL_Create;
    static constexpr auto release = orSLL_Release;
    static constexpr decltype(&orSLL_XInsertHead) inserts[] = {orSLL_XInsertHead,
                                                               orSLL_XInsertHead};
    static constexpr decltype(&orSLL_XRemoveHead) removes[] = {orSLL_XRemoveHead,
                                                               orSLL_XRemoveHead};
    static constexpr bool two_ended = false;
    static constexpr auto get_head = orSLL_XGetHead;
    static constexpr auto lock_release = orSLL_LockRelease;
    static constexpr auto is_empty = orSLL_IsEmpty;
    static constexpr auto next = orLL_XGetNext;
    static constexpr auto is_end = orLL_XIsEnd;
    static Item* not_locked() { return ORSLL_NOT_LOCKED; }
};

struct Deque {
    using List = orSLL2;
    using Item = orLL2Node;
    static constexpr auto init = orSLL2_Init;
    static constexpr auto uninit = orSLL2_Uninit;
    static constexpr auto create = orSLL2_Create;
    static constexpr auto release = orSLL2_Release;
    static constexpr decltype(&orSLL2_XInsertHead) inserts[] = {orSLL2_XInsertHead,
                                                                orSLL2_XInsertTail};
    static constexpr decltype(&orSLL2_XRemoveHead) removes[] = {orSLL2_XRemoveHead,
                                                                orSLL2_XRemoveTail};
    static constexpr bool two_ended = true;
    static constexpr auto get_head = orSLL2_XGetHead;
    static constexpr auto lock_release = orSLL2_LockRelease;
    static constexpr auto is_empty = orSLL2_IsEmpty;
    static constexpr auto next = orLL2_XGetNext;
    static constexpr auto is_end = orLL2_XIsEnd;
    static Item* not_locked() { return nullptr; }
};

template <typename Family>
class LockedList : public testing::Test {
protected:
    ~LockedList() override { Family::release(list_); }

    std::vector<typename Family::Item*> walk() {
        std::vector<typename Family::Item*> items;
        for (auto* item = Family::get_head(list_, 0, 1); Family::is_end(item) == 0;
             item = Family::next(item)) {
            items.push_back(item);
        }
        Family::lock_release(list_);
        return items;
    }

    locks::Registry registry_;
    typename Family::List* list_ = [] {
        typename Family::List* list = nullptr;
        EXPECT_EQ(Family::create(&list), ORU_SUCCESS);
        return list;
    }();
};
using Families = testing::Types<Stack, Deque>;
struct FamilyNames {
    template <typename Family>
    static std::string GetName(int) {
        return Family::two_ended ? "orSLL2" : "orSLL";
    }
};
TYPED_TEST_SUITE(LockedList, Families, FamilyNames);

TYPED_TEST(LockedList, BehavesAsAList) {
    std::mt19937 random(4);
    std::vector<typename TypeParam::Item> items(3000);
    std::vector<typename TypeParam::Item*> model;
    for (auto& fresh : items) {
        const bool at_tail = random() % 2 == 0;
        TypeParam::inserts[at_tail](this->list_, &fresh);
        model.insert(at_tail && TypeParam::two_ended ? model.end() : model.begin(), &fresh);
        for (auto removals = random() % 3; removals > 0; --removals) {
            const bool from_tail = random() % 2 == 0;
            typename TypeParam::Item* expected = nullptr;
            if (!model.empty()) {
                const auto position =
                    from_tail && TypeParam::two_ended ? model.end() - 1 : model.begin();
                expected = *position;
                model.erase(position);
            }
            ASSERT_EQ(TypeParam::removes[from_tail](this->list_), expected);
        }
        ASSERT_EQ(TypeParam::is_empty(this->list_), model.empty());
        ASSERT_EQ(this->walk(), model);
    }
    TypeParam::uninit(this->list_);
}

TYPED_TEST(LockedList, IgnoresNullAndAListWithoutLockIsClosed) {
    typename TypeParam::Item item{};
    EXPECT_EQ(TypeParam::init(nullptr), ORU_FAILURE);
    EXPECT_EQ(TypeParam::create(nullptr), ORU_FAILURE);
    TypeParam::uninit(nullptr);
    TypeParam::release(nullptr);
    TypeParam::lock_release(nullptr);
    EXPECT_EQ(TypeParam::get_head(nullptr, 1, 1), nullptr);
    EXPECT_TRUE(TypeParam::is_empty(nullptr));
    for (const int end : {0, 1}) {
        TypeParam::inserts[end](nullptr, &item);
        TypeParam::inserts[end](this->list_, nullptr);
        EXPECT_EQ(TypeParam::removes[end](nullptr), nullptr);
        EXPECT_TRUE(TypeParam::is_empty(this->list_));
    }
    TypeParam::inserts[0](this->list_, &item);
    TypeParam::uninit(this->list_);
    EXPECT_EQ(TypeParam::get_head(this->list_, 1, 1), TypeParam::not_locked());
    EXPECT_EQ(TypeParam::removes[0](this->list_), nullptr);
    EXPECT_TRUE(TypeParam::is_empty(this->list_));
}

TYPED_TEST(LockedList, ABusyLockIsNotWaitedForAndNothingIsTouched) {
    typename TypeParam::Item item{}, stray{};
    TypeParam::inserts[0](this->list_, &item);
    locks::Peer owner;
    owner.run([&] { EXPECT_EQ(TypeParam::get_head(this->list_, 1, 1), &item); });
    EXPECT_EQ(TypeParam::get_head(this->list_, 0, 0), TypeParam::not_locked());
    EXPECT_EQ(TypeParam::get_head(this->list_, 1, 2), TypeParam::not_locked()) << "2 is no wait";
    // A thread without identity would have to wait and cannot.
    std::thread([&] {
        for (const int end : {0, 1}) {
            TypeParam::inserts[end](this->list_, &stray);
            EXPECT_EQ(TypeParam::removes[end](this->list_), nullptr);
        }
        EXPECT_EQ(TypeParam::get_head(this->list_, 0, 1), TypeParam::not_locked());
        EXPECT_TRUE(TypeParam::is_empty(this->list_));
    }).join();
    owner.run([&] {
        EXPECT_FALSE(TypeParam::is_empty(this->list_)) << "recursive for its owner";
        EXPECT_EQ(TypeParam::removes[0](this->list_), &item);
        TypeParam::lock_release(this->list_);
    });
    auto* const end = TypeParam::get_head(this->list_, 1, 1);
    EXPECT_EQ(TypeParam::is_end(end), 1) << "empty, and held all the same";
    EXPECT_EQ(this->list_->lock->owner, orSO_GetThread());
    TypeParam::lock_release(this->list_);
}

// No item is in two hands: a thread puts in only what it has taken out.
TYPED_TEST(LockedList, KeepsEveryItemUnderConcurrentUse) {
    struct Owned : TypeParam::Item {
        std::atomic<bool> listed{true};
    };
    std::vector<Owned> items(6);
    for (Owned& item : items) {
        TypeParam::inserts[0](this->list_, &item);
    }
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([&, number] {
            const locks::Attached attached;
            for (int round = number; round < 1000; ++round) {
                if (auto* const item =
                        static_cast<Owned*>(TypeParam::removes[round % 3 % 2](this->list_))) {
                    EXPECT_TRUE(item->listed.exchange(false));
                    EXPECT_LT(this->walk().size(), items.size());
                    EXPECT_FALSE(item->listed.exchange(true));
                    TypeParam::inserts[round % 2](this->list_, item);
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(this->walk().size(), items.size());
    TypeParam::uninit(this->list_);
}

}  // namespace
