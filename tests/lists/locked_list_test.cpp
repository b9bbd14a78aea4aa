#include "vlrcomn/locked_list.h"

#include <gtest/gtest.h>
#include <sched.h>

#include <atomic>
#include <deque>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "locks/peers.h"

namespace {

// The two families under one set of names. Pushing to and popping from the back is the second one's own.
struct Stack {
    using List = orSLL;
    using Item = orLLItem;
    static constexpr bool two_ended = false;
    static constexpr auto init = orSLL_Init;
    static constexpr auto uninit = orSLL_Uninit;
    static constexpr auto create = orSLL_Create;
    static constexpr auto release = orSLL_Release;
    static constexpr auto insert_head = orSLL_XInsertHead;
    static constexpr auto insert_tail = orSLL_XInsertHead;
    static constexpr auto remove_head = orSLL_XRemoveHead;
    static constexpr auto remove_tail = orSLL_XRemoveHead;
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
    static constexpr bool two_ended = true;
    static constexpr auto init = orSLL2_Init;
    static constexpr auto uninit = orSLL2_Uninit;
    static constexpr auto create = orSLL2_Create;
    static constexpr auto release = orSLL2_Release;
    static constexpr auto insert_head = orSLL2_XInsertHead;
    static constexpr auto insert_tail = orSLL2_XInsertTail;
    static constexpr auto remove_head = orSLL2_XRemoveHead;
    static constexpr auto remove_tail = orSLL2_XRemoveTail;
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

TYPED_TEST(LockedList, BehavesAsADeque) {
    for (const unsigned seed : {4u, 50u, 600u}) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        std::vector<typename TypeParam::Item> items(2000);
        std::deque<typename TypeParam::Item*> model;
        for (auto& fresh : items) {
            if (TypeParam::two_ended && random() % 2 == 0) {
                TypeParam::insert_tail(this->list_, &fresh);
                model.push_back(&fresh);
            } else {
                TypeParam::insert_head(this->list_, &fresh);
                model.push_front(&fresh);
            }
            for (auto removals = random() % 3; removals > 0; --removals) {
                const bool from_tail = TypeParam::two_ended && random() % 2 == 0;
                typename TypeParam::Item* expected = nullptr;
                if (!model.empty()) {
                    expected = from_tail ? model.back() : model.front();
                    from_tail ? model.pop_back() : model.pop_front();
                }
                ASSERT_EQ(from_tail ? TypeParam::remove_tail(this->list_)
                                    : TypeParam::remove_head(this->list_),
                          expected);
            }
            ASSERT_EQ(TypeParam::is_empty(this->list_), model.empty());
            ASSERT_EQ(this->walk(),
                      (std::vector<typename TypeParam::Item*>(model.begin(), model.end())));
        }
        while (TypeParam::remove_head(this->list_) != nullptr) {
        }
    }
}

TYPED_TEST(LockedList, IgnoresNull) {
    typename TypeParam::Item item{};
    EXPECT_EQ(TypeParam::init(nullptr), ORU_FAILURE);
    EXPECT_EQ(TypeParam::create(nullptr), ORU_FAILURE);
    TypeParam::uninit(nullptr);
    TypeParam::release(nullptr);
    for (const auto insert : {TypeParam::insert_head, TypeParam::insert_tail}) {
        insert(nullptr, &item);
        insert(this->list_, nullptr);
    }
    for (const auto remove : {TypeParam::remove_head, TypeParam::remove_tail}) {
        EXPECT_EQ(remove(nullptr), nullptr);
        EXPECT_EQ(remove(this->list_), nullptr);
    }
    EXPECT_EQ(TypeParam::get_head(nullptr, 1, 1), nullptr);
    TypeParam::lock_release(nullptr);
    EXPECT_TRUE(TypeParam::is_empty(nullptr));
    EXPECT_TRUE(TypeParam::is_empty(this->list_));
}

TYPED_TEST(LockedList, ABusyLockIsNotWaitedForAndNothingIsTouched) {
    typename TypeParam::Item item{}, stray{};
    TypeParam::insert_head(this->list_, &item);
    locks::Peer owner;
    owner.run([&] { EXPECT_EQ(TypeParam::get_head(this->list_, 1, 1), &item); });
    EXPECT_EQ(TypeParam::get_head(this->list_, 0, 0), TypeParam::not_locked());
    EXPECT_EQ(TypeParam::get_head(this->list_, 1, 2), TypeParam::not_locked()) << "2 is no wait";
    // A thread without identity would have to wait and cannot.
    std::thread([&] {
        TypeParam::insert_head(this->list_, &stray);
        TypeParam::insert_tail(this->list_, &stray);
        EXPECT_EQ(TypeParam::remove_head(this->list_), nullptr);
        EXPECT_EQ(TypeParam::remove_tail(this->list_), nullptr);
        EXPECT_EQ(TypeParam::get_head(this->list_, 0, 1), TypeParam::not_locked());
        EXPECT_TRUE(TypeParam::is_empty(this->list_));
    }).join();
    owner.run([&] {
        EXPECT_FALSE(TypeParam::is_empty(this->list_)) << "recursive for its owner";
        EXPECT_EQ(TypeParam::remove_head(this->list_), &item);
        TypeParam::lock_release(this->list_);
    });
    EXPECT_TRUE(this->walk().empty());

    auto* const end = TypeParam::get_head(this->list_, 1, 1);
    EXPECT_EQ(TypeParam::is_end(end), 1) << "empty, and held all the same";
    EXPECT_EQ(this->list_->lock->owner, orSO_GetThread());
    TypeParam::lock_release(this->list_);
}

TYPED_TEST(LockedList, AListWithoutLockIsClosed) {
    typename TypeParam::Item item{};
    TypeParam::insert_head(this->list_, &item);
    TypeParam::uninit(this->list_);
    EXPECT_EQ(TypeParam::get_head(this->list_, 1, 1), TypeParam::not_locked());
    EXPECT_EQ(TypeParam::remove_head(this->list_), nullptr);
    EXPECT_TRUE(TypeParam::is_empty(this->list_));
}

// Every item is taken out exactly as often as it was put in, whoever does it.
TYPED_TEST(LockedList, KeepsEveryItemUnderConcurrentUse) {
    constexpr int kThreads = 4;
    struct Owned : TypeParam::Item {
        std::atomic<int> balance{0};
    };
    std::vector<Owned> items(3 * kThreads);
    std::atomic<size_t> looked_at{0};
    std::vector<std::thread> threads;
    for (int number = 0; number < kThreads; ++number) {
        threads.emplace_back([&, number] {
            const locks::Attached attached;
            std::vector<Owned*> mine;
            for (size_t i = static_cast<size_t>(number); i < items.size(); i += kThreads) {
                mine.push_back(&items[i]);
            }
            for (int round = 0; round < 400; ++round) {
                while (!mine.empty()) {
                    ASSERT_EQ(mine.back()->balance.fetch_add(1), 0);
                    (round % 2 == 0 ? TypeParam::insert_head : TypeParam::insert_tail)(this->list_,
                                                                                       mine.back());
                    mine.pop_back();
                }
                looked_at += this->walk().size();
                sched_yield();
                for (int removal = 0; removal < 3; ++removal) {
                    auto* const item =
                        static_cast<Owned*>((round % 3 == 0 ? TypeParam::remove_head
                                                            : TypeParam::remove_tail)(this->list_));
                    if (item != nullptr) {
                        ASSERT_EQ(item->balance.fetch_sub(1), 1);
                        mine.push_back(item);
                    }
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    int left = 0;
    for (const Owned& item : items) {
        left += item.balance;
    }
    EXPECT_EQ(this->walk().size(), static_cast<size_t>(left));
    EXPECT_GT(looked_at, 0u);
}

}  // namespace
