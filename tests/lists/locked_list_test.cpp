#include "vlrcomn/locked_list.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <thread>
#include <vector>

#include "locks/peers.h"

namespace {

// The two families under one set of names; a stack has its head for a tail.
template <typename List, typename Item>
struct Functions {
    uint32_t (*init)(List*), (*create)(List**);
    void (*uninit)(List*), (*release)(List*), (*lock_release)(List*);
    void (*insert_head)(List*, Item*), (*insert_tail)(List*, Item*);
    Item* (*remove_head)(List*), *(*remove_tail)(List*);
    Item* (*get_head)(List*, int exclusive, int wait);
    bool (*is_empty)(List*);
    Item* (*next)(const Item*);
    int (*is_end)(const Item*);
};

struct Stack {
    using List = orSLL;
    using Item = orLLItem;
    static constexpr bool two_ended = false;
    static constexpr Functions<List, Item> functions{
        orSLL_Init,        orSLL_Create,      orSLL_Uninit,      orSLL_Release,
        orSLL_LockRelease, orSLL_XInsertHead, orSLL_XInsertHead, orSLL_XRemoveHead,
        orSLL_XRemoveHead, orSLL_XGetHead,    orSLL_IsEmpty,     orLL_XGetNext,
        orLL_XIsEnd};
    static Item* not_locked() { return ORSLL_NOT_LOCKED; }
};

struct Deque {
    using List = orSLL2;
    using Item = orLL2Node;
    static constexpr bool two_ended = true;
    static constexpr Functions<List, Item> functions{
        orSLL2_Init,        orSLL2_Create,      orSLL2_Uninit,      orSLL2_Release,
        orSLL2_LockRelease, orSLL2_XInsertHead, orSLL2_XInsertTail, orSLL2_XRemoveHead,
        orSLL2_XRemoveTail, orSLL2_XGetHead,    orSLL2_IsEmpty,     orLL2_XGetNext,
        orLL2_XIsEnd};
    static Item* not_locked() { return nullptr; }
};

template <typename Family>
class LockedList : public testing::Test {
protected:
    using Item = typename Family::Item;
    static constexpr auto& of = Family::functions;

    LockedList() { EXPECT_EQ(of.create(&list_), ORU_SUCCESS); }
    ~LockedList() override { of.release(list_); }

    std::vector<Item*> walk() {
        std::vector<Item*> items;
        for (Item* item = of.get_head(list_, 0, 1); of.is_end(item) == 0; item = of.next(item)) {
            items.push_back(item);
        }
        of.lock_release(list_);
        return items;
    }

    locks::Registry registry_;
    typename Family::List* list_ = nullptr;
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
    auto* const list = this->list_;
    std::mt19937 random(4);
    std::vector<typename TypeParam::Item> items(3000);
    std::vector<typename TypeParam::Item*> model;
    for (auto& fresh : items) {
        const bool at_tail = random() % 2 == 0;
        (at_tail ? this->of.insert_tail : this->of.insert_head)(list, &fresh);
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
            ASSERT_EQ((from_tail ? this->of.remove_tail : this->of.remove_head)(list), expected);
        }
        ASSERT_EQ(this->of.is_empty(list), model.empty());
        ASSERT_EQ(this->walk(), model);
    }
    this->of.uninit(list);
}

TYPED_TEST(LockedList, IgnoresNullAndAListWithoutLockIsClosed) {
    auto* const list = this->list_;
    typename TypeParam::Item item{};
    EXPECT_EQ(this->of.init(nullptr), ORU_FAILURE);
    EXPECT_EQ(this->of.create(nullptr), ORU_FAILURE);
    this->of.uninit(nullptr);
    this->of.release(nullptr);
    this->of.lock_release(nullptr);
    EXPECT_EQ(this->of.get_head(nullptr, 1, 1), nullptr);
    EXPECT_TRUE(this->of.is_empty(nullptr));
    for (const auto insert : {this->of.insert_head, this->of.insert_tail}) {
        insert(nullptr, &item);
        insert(list, nullptr);
        EXPECT_TRUE(this->of.is_empty(list));
    }
    EXPECT_EQ(this->of.remove_head(nullptr), nullptr);
    EXPECT_EQ(this->of.remove_tail(nullptr), nullptr);
    this->of.insert_head(list, &item);
    this->of.uninit(list);
    EXPECT_EQ(this->of.get_head(list, 1, 1), TypeParam::not_locked());
    EXPECT_EQ(this->of.remove_head(list), nullptr);
    EXPECT_TRUE(this->of.is_empty(list));
}

TYPED_TEST(LockedList, ABusyLockIsNotWaitedForAndNothingIsTouched) {
    auto* const list = this->list_;
    typename TypeParam::Item item{}, stray{};
    this->of.insert_head(list, &item);
    locks::Peer owner;
    owner.run([&] { EXPECT_EQ(this->of.get_head(list, 1, 1), &item); });
    EXPECT_EQ(this->of.get_head(list, 0, 0), TypeParam::not_locked());
    EXPECT_EQ(this->of.get_head(list, 1, 2), TypeParam::not_locked()) << "2 is no wait";
    // A thread without identity would have to wait and cannot.
    std::thread([&] {
        this->of.insert_head(list, &stray);
        this->of.insert_tail(list, &stray);
        EXPECT_EQ(this->of.remove_head(list), nullptr);
        EXPECT_EQ(this->of.remove_tail(list), nullptr);
        EXPECT_EQ(this->of.get_head(list, 0, 1), TypeParam::not_locked());
        EXPECT_TRUE(this->of.is_empty(list));
    }).join();
    owner.run([&] {
        EXPECT_FALSE(this->of.is_empty(list)) << "recursive for its owner";
        EXPECT_EQ(this->of.remove_head(list), &item);
        this->of.lock_release(list);
    });
    auto* const end = this->of.get_head(list, 1, 1);
    EXPECT_EQ(this->of.is_end(end), 1) << "empty, and held all the same";
    EXPECT_EQ(list->lock->owner, orSO_GetThread());
    this->of.lock_release(list);
}

}  // namespace
