// The linked list, the intrusive lists, and these with their locks.

#include "locks/peers.h"
#include "vlrcomn/linked_list.h"
#include "vlrcomn/locked_list.h"

TEST(LinkedList, BehavesAsAList) {
    std::mt19937 random(1);
    std::vector<LinkedListItem> items(20000);
    std::deque<LinkedListItem*> model;
    LinkedListHandle list = nullptr;
    ASSERT_EQ(LinkedList_Init(&list), 1);
    for (LinkedListItem& fresh : items) {
        const bool at_head = random() % 2 == 0;
        if (random() % 2 == 0) {
            ASSERT_EQ((at_head ? LinkedList_AddHead : LinkedList_AddTail)(list, &fresh), 1);
            model.insert(at_head ? model.begin() : model.end(), &fresh);
        } else if (!model.empty()) {
            const auto i = static_cast<uint32_t>(random() % model.size());
            LinkedListItem *const item = model[i], *const next = item->next;
            const bool as_tail = next == nullptr && !at_head;
            ASSERT_EQ(LinkedList_PeekAt(list, i), item);
            ASSERT_EQ(as_tail ? LinkedList_RemoveTail(list) : LinkedList_RemoveAt(list, i), item);
            ASSERT_EQ(item->next, next) << "a removed item keeps its links";
            model.erase(model.begin() + static_cast<int>(i));
        }
        const auto count = static_cast<uint32_t>(model.size());
        ASSERT_EQ(LinkedList_GetCount(list), static_cast<int>(count));
        ASSERT_TRUE(!LinkedList_PeekAt(list, count) && !LinkedList_RemoveAt(list, count));
        const LinkedListItem *item = list->head, *before = nullptr;
        for (const LinkedListItem* expected : model) {
            ASSERT_TRUE(item == expected && item->previous == before);
            before = std::exchange(item, item->next);
        }
        ASSERT_TRUE(item == nullptr && list->tail == before);
    }
    LinkedList_End(&list);
}

TEST(LinkedListDeathTest, WhatContradictsItselfIsAnAssertion) {
    const auto message = [](const char* line, const char* function, const char* expression) {
        return assertion_message("\\.\\./source/Linklist", line, function, expression);
    };
    LinkedListItem only{};
    LinkedListHeader shorter{&only, &only, 3}, no_tail{nullptr, &only, 1};
    EXPECT_DEATH(LinkedList_Init(nullptr), message("31", "LinkedList_Init", "lphLinkedList"));
    EXPECT_DEATH(LinkedList_GetCount(nullptr), message("167", "LinkedList_GetCount", "lpMain"));
    EXPECT_DEATH(LinkedList_PeekAt(&shorter, 1), message("200", "LinkedList_PeekAt", "lpItem"));
    const char* const remove = "LinkedList_RemoveAt";
    EXPECT_DEATH(LinkedList_RemoveAt(&no_tail, 0), message("238", remove, "lpMain->lpTail"));
    EXPECT_DEATH(LinkedList_RemoveAt(&shorter, 1), message("245", remove, "lpItem"));
}

// What does nothing on lists that are missing, or whose lock is not to be had.
static void expect_untouched(orSLL* stack, orSLL2* deque) {
    static orLLItem item;
    static orLL2Node node;
    orSLL_XInsertHead(stack, &item);
    orSLL2_XInsertHead(deque, &node);
    orSLL2_XInsertTail(deque, &node);
    EXPECT_EQ(orSLL_XRemoveHead(stack), nullptr);
    EXPECT_TRUE(!orSLL2_XRemoveHead(deque) && !orSLL2_XRemoveTail(deque));
}

TEST(Lists, NullIsRefusedOrNothing) {
    LinkedListItem counted{};
    orLLItem item{nullptr}, *head = &item;
    orLL2Node node{};
    LinkedListHandle list = nullptr;
    LinkedList_End(nullptr);
    ASSERT_EQ(LinkedList_Init(&list), 1);
    EXPECT_EQ(LinkedList_AddHead(nullptr, &counted) + LinkedList_AddHead(list, nullptr), 0);
    EXPECT_EQ(LinkedList_AddTail(nullptr, &counted) + LinkedList_AddTail(list, nullptr), 0);
    EXPECT_EQ(LinkedList_GetCount(list), 0);
    for (LinkedListHandle none : {list, LinkedListHandle{nullptr}}) {
        EXPECT_TRUE(!LinkedList_PeekAt(none, 0) && !LinkedList_RemoveAt(none, 0));
        EXPECT_EQ(LinkedList_RemoveTail(none), nullptr);
    }
    LinkedList_End(&list);
    EXPECT_EQ(list, nullptr);

    orLL_Init(nullptr);
    orLL_XInsertHead(nullptr, &item);
    orLL_XInsertHead(&head, nullptr);
    orLL_XRemove(nullptr, &item);
    orLL_XRemove(&head, nullptr);
    EXPECT_EQ(head, &item);
    EXPECT_TRUE(!orLL_XRemoveHead(nullptr) && !orLL_XGetNext(nullptr));
    EXPECT_TRUE(!orLL2_XGetNext(nullptr) && !orLL2_XGetPrev(nullptr));
    EXPECT_EQ(orLL_IsEmpty(nullptr) + orLL_XIsEnd(nullptr) + orLL2_XIsEnd(nullptr), 3);
    orLL2_XRemove(nullptr);
    orLL2_XRemove(&node);  // in no list

    EXPECT_TRUE(orSLL_Init(nullptr) && orSLL_Create(nullptr) && orSLL_IsEmpty(nullptr));
    EXPECT_TRUE(orSLL2_Init(nullptr) && orSLL2_Create(nullptr) && orSLL2_IsEmpty(nullptr));
    expect_untouched(nullptr, nullptr);
    EXPECT_TRUE(!orSLL_XGetHead(nullptr, 1, 1) && !orSLL2_XGetHead(nullptr, 1, 1));
    orSLL_LockRelease(nullptr);
    orSLL2_LockRelease(nullptr);
    orSLL_Release(nullptr);
    orSLL2_Release(nullptr);
}

struct LockedLists : testing::Test {
    LockedLists() { EXPECT_TRUE(!orSLL_Create(&stack_) && !orSLL2_Create(&deque_)); }
    ~LockedLists() override {
        orSLL_Release(stack_);
        orSLL2_Release(deque_);
    }

    const locks::Registry registry_;
    std::vector<orLL2Node> nodes_;  // outlive the deque, which may hold some to the end
    orSLL* stack_ = nullptr;
    orSLL2* deque_ = nullptr;
};

TEST_F(LockedLists, ADequeBehavesAsOne) {
    std::mt19937 random(4);
    nodes_.resize(3000);
    std::deque<orLL2Node*> model;
    EXPECT_TRUE(!orSLL2_XRemoveHead(deque_) && !orSLL2_XRemoveTail(deque_));
    for (orLL2Node& fresh : nodes_) {
        const bool at_tail = random() % 2 == 0;
        (at_tail ? orSLL2_XInsertTail : orSLL2_XInsertHead)(deque_, &fresh);
        model.insert(at_tail ? model.end() : model.begin(), &fresh);
        for (auto removals = random() % 3; removals > 0 && !model.empty(); --removals) {
            const auto place = model.begin() + static_cast<int>(random() % model.size());
            if (place == model.begin()) {
                ASSERT_EQ(orSLL2_XRemoveHead(deque_), *place);
            } else if (*place == model.back()) {
                ASSERT_EQ(orSLL2_XRemoveTail(deque_), *place);
            } else {
                orLL2_XRemove(*place);
            }
            model.erase(place);
        }
        ASSERT_EQ(orSLL2_IsEmpty(deque_), model.empty());
        const orLL2Node* node = orSLL2_XGetHead(deque_, 0, 1);
        for (const orLL2Node* expected : model) {
            ASSERT_EQ(node, expected);
            node = orLL2_XGetNext(node);
        }
        ASSERT_EQ(orLL2_XIsEnd(node), 1);
        ASSERT_EQ(orLL2_XGetPrev(node), model.empty() ? &deque_->head : model.back());
        orSLL2_LockRelease(deque_);
    }
}

TEST_F(LockedLists, AStackGivesTheLatestFirst) {
    orLLItem items[3];
    orSLL unset{items, nullptr};
    EXPECT_TRUE(orSLL_Init(&unset) == ORU_SUCCESS && orSLL_IsEmpty(&unset));
    orSLL_Uninit(&unset);
    for (orLLItem& item : items) {
        orSLL_XInsertHead(stack_, &item);
    }
    EXPECT_EQ(orSLL_XGetHead(stack_, 1, 1), &items[2]);
    orLL_XRemove(&items[2].next, &items[1]);
    EXPECT_EQ(orLL_XGetNext(&items[2]), &items[0]);
    EXPECT_EQ(orLL_XIsEnd(&items[0]) + orLL_XIsEnd(orLL_XGetNext(&items[0])), 1);
    EXPECT_EQ(orSLL_XRemoveHead(stack_), &items[2]) << "recursive for its owner";
    orSLL_LockRelease(stack_);
    EXPECT_FALSE(orSLL_IsEmpty(stack_));
    EXPECT_TRUE(orSLL_XRemoveHead(stack_) == &items[0] && !orSLL_XRemoveHead(stack_));
    EXPECT_EQ(orSLL_XGetHead(stack_, 1, 1), nullptr) << "empty, and held all the same";
    const velora_com::qel::locks::SpinGuard guard(stack_->lock->spin);
    EXPECT_EQ(stack_->lock->owner, orSO_GetThread());
}

// Whose lock is not granted reaches no link: a thread without identity would have to wait and cannot.
TEST_F(LockedLists, ABusyLockIsNotWaitedForAndNothingIsTouched) {
    orLLItem item{};
    nodes_.resize(1);
    orSLL_XInsertHead(stack_, &item);
    orSLL2_XInsertHead(deque_, &nodes_[0]);
    locks::Peer owner;
    owner.run([&] {
        orSLL_XGetHead(stack_, 1, 1);
        orSLL2_XGetHead(deque_, 1, 1);
    });
    EXPECT_EQ(orSLL_XGetHead(stack_, 0, 0), ORSLL_NOT_LOCKED);
    EXPECT_EQ(orSLL2_XGetHead(deque_, 1, 2), nullptr) << "2 is no wait";
    std::thread(expect_untouched, stack_, deque_).join();
    EXPECT_TRUE(stack_->first == &item && deque_->head.next == &nodes_[0]);
    orSLL_Uninit(stack_);
    orSLL2_Uninit(deque_);
    expect_untouched(stack_, deque_);
}
