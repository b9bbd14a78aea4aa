// The linked list, the intrusive lists, and these with their locks.
#include <gtest/gtest.h>

#include <deque>
#include <iterator>
#include <list>
#include <random>
#include <thread>
#include <vector>

#include "locks/peers.h"
#include "support/assertion_message.h"
#include "vlrcomn/linked_list.h"
#include "vlrcomn/locked_list.h"

namespace {

TEST(LinkedList, BehavesAsAList) {
    std::mt19937 random(1);
    std::vector<LinkedListItem> items(20000);
    std::list<LinkedListItem*> model;
    LinkedListHandle list = nullptr;
    ASSERT_EQ(LinkedList_Init(&list), 1);
    // Removals are about as frequent as insertions, so that lengths around 0 come up often.
    for (LinkedListItem& fresh : items) {
        if (random() % 2 == 0) {
            const bool at_head = random() % 2 == 0;
            ASSERT_EQ((at_head ? LinkedList_AddHead : LinkedList_AddTail)(list, &fresh), 1);
            model.insert(at_head ? model.begin() : model.end(), &fresh);
        } else if (const size_t index = random() % (model.size() + 2); index < model.size()) {
            const auto position = std::next(model.begin(), static_cast<int>(index));
            const LinkedListItem *item = *position, kept = *item;
            const bool as_tail = index == model.size() - 1 && random() % 2 == 0;
            ASSERT_EQ(LinkedList_PeekAt(list, static_cast<uint32_t>(index)), item);
            ASSERT_EQ(as_tail ? LinkedList_RemoveTail(list)
                              : LinkedList_RemoveAt(list, static_cast<uint32_t>(index)),
                      item);
            ASSERT_EQ(item->next, kept.next) << "a removed item keeps its links";
            ASSERT_EQ(item->previous, kept.previous);
            model.erase(position);
        }
        const auto count = static_cast<uint32_t>(model.size());
        ASSERT_EQ(LinkedList_GetCount(list), static_cast<int>(count));
        ASSERT_EQ(LinkedList_PeekAt(list, count), nullptr);
        ASSERT_EQ(LinkedList_RemoveAt(list, count), nullptr);
        LinkedListItem* before = nullptr;
        for (LinkedListItem* expected : model) {
            ASSERT_EQ(before == nullptr ? list->head : before->next, expected);
            ASSERT_EQ(expected->previous, before);
            before = expected;
        }
        ASSERT_EQ(list->tail, before);
        ASSERT_EQ(before == nullptr ? list->head : before->next, nullptr);
    }
    LinkedList_End(&list);
    EXPECT_EQ(list, nullptr);
}

TEST(LinkedListDeathTest, BrokenPreconditionsAreAssertions) {
    const auto message = [](const char* line, const char* function, const char* text) {
        return assertion_message("\\.\\./source/Linklist", line, function, text);
    };
    EXPECT_DEATH(LinkedList_Init(nullptr), message("31", "LinkedList_Init", "lphLinkedList"));
    LinkedListItem only{};
    LinkedListHeader short_chain{&only, &only, 3};
    EXPECT_DEATH(LinkedList_PeekAt(&short_chain, 1), message("200", "LinkedList_PeekAt", "lpItem"));
}

// Heads and tails are tested with the locked lists, which are built on these.
TEST(IntrusiveLists, LoseAnItemAtAnyPlace) {
    for (size_t place = 0; place < 3; ++place) {
        orLLItem items[3], *head = nullptr;
        orLL2Node nodes[5] = {{nodes + 1, nodes}};
        for (size_t i = 0; i < 3; ++i) {
            orLL_XInsertHead(&head, &items[2 - i]);
            nodes[i + 1] = {&nodes[i + 2], &nodes[i]};
        }
        nodes[4] = {&nodes[4], &nodes[3]};
        orLL_XRemove(place == 0 ? &head : &items[place - 1].next, &items[place]);
        orLL2_XRemove(&nodes[place + 1]);
        const size_t first = place == 0 ? 1 : 0, second = place == 2 ? 1 : 2;
        EXPECT_EQ(orLL_XGetStart(head), &items[first]);
        EXPECT_EQ(orLL_XGetNext(head), &items[second]);
        EXPECT_EQ(orLL_XGetNext(&items[second]), nullptr);
        EXPECT_EQ(orLL2_XGetNext(&nodes[first + 1]), &nodes[second + 1]);
        EXPECT_EQ(orLL2_XGetPrev(&nodes[second + 1]), &nodes[first + 1]);
        EXPECT_EQ(nodes[place + 1].next, &nodes[place + 2]) << "the node's own links stay";
    }
}

class LockedLists : public testing::Test {
protected:
    LockedLists() {
        EXPECT_EQ(orSLL_Create(&stack_), ORU_SUCCESS);
        EXPECT_EQ(orSLL2_Create(&deque_), ORU_SUCCESS);
    }
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
    for (orLL2Node& fresh : nodes_) {
        const bool at_tail = random() % 2 == 0;
        (at_tail ? orSLL2_XInsertTail : orSLL2_XInsertHead)(deque_, &fresh);
        model.insert(at_tail ? model.end() : model.begin(), &fresh);
        for (auto removals = random() % 3; removals > 0; --removals) {
            const bool from_tail = random() % 2 == 0;
            orLL2Node* expected = nullptr;
            if (!model.empty()) {
                const auto position = from_tail ? model.end() - 1 : model.begin();
                expected = *position;
                model.erase(position);
            }
            ASSERT_EQ((from_tail ? orSLL2_XRemoveTail : orSLL2_XRemoveHead)(deque_), expected);
        }
        ASSERT_EQ(orSLL2_IsEmpty(deque_), model.empty());
        const orLL2Node* node = orSLL2_XGetHead(deque_, 0, 1);
        for (const orLL2Node* expected : model) {
            ASSERT_EQ(node, expected);
            node = orLL2_XGetNext(node);
        }
        ASSERT_EQ(orLL2_XIsEnd(node), 1);
        orSLL2_LockRelease(deque_);
    }
}

TEST_F(LockedLists, AStackGivesTheLatestFirst) {
    orLLItem items[3];
    for (orLLItem& item : items) {
        orSLL_XInsertHead(stack_, &item);
    }
    EXPECT_EQ(orSLL_XGetHead(stack_, 0, 1), &items[2]);
    EXPECT_EQ(orLL_XGetNext(&items[2]), &items[1]);
    orSLL_LockRelease(stack_);
    for (const int left : {2, 1, 0}) {
        EXPECT_FALSE(orSLL_IsEmpty(stack_));
        EXPECT_EQ(orSLL_XRemoveHead(stack_), &items[left]);
    }
    EXPECT_TRUE(orSLL_IsEmpty(stack_));
    EXPECT_EQ(orSLL_XRemoveHead(stack_), nullptr);
}

TEST_F(LockedLists, ABusyLockIsNotWaitedForAndNothingIsTouched) {
    orLLItem item{}, stray{};
    orLL2Node node{}, stray_node{};
    orSLL_XInsertHead(stack_, &item);
    orSLL2_XInsertHead(deque_, &node);
    locks::Peer owner;
    owner.run([&] {
        EXPECT_EQ(orSLL_XGetHead(stack_, 1, 1), &item);
        EXPECT_EQ(orSLL2_XGetHead(deque_, 1, 1), &node);
    });
    EXPECT_EQ(orSLL_XGetHead(stack_, 0, 0), ORSLL_NOT_LOCKED);
    EXPECT_EQ(orSLL2_XGetHead(deque_, 1, 2), nullptr) << "2 is no wait";
    // A thread without identity would have to wait and cannot.
    std::thread([&] {
        orSLL_XInsertHead(stack_, &stray);
        orSLL2_XInsertHead(deque_, &stray_node);
        orSLL2_XInsertTail(deque_, &stray_node);
        EXPECT_EQ(orSLL_XRemoveHead(stack_), nullptr);
        EXPECT_EQ(orSLL2_XRemoveHead(deque_), nullptr);
        EXPECT_EQ(orSLL2_XRemoveTail(deque_), nullptr);
        EXPECT_TRUE(orSLL_IsEmpty(stack_));
        EXPECT_TRUE(orSLL2_IsEmpty(deque_));
    }).join();
    owner.run([&] {
        EXPECT_EQ(orSLL_XRemoveHead(stack_), &item) << "recursive for its owner";
        EXPECT_EQ(orSLL2_XRemoveHead(deque_), &node);
        EXPECT_TRUE(orSLL2_IsEmpty(deque_));
        orSLL_LockRelease(stack_);
        orSLL2_LockRelease(deque_);
    });
    EXPECT_EQ(orLL_XIsEnd(orSLL_XGetHead(stack_, 1, 1)), 1) << "empty, and held all the same";
    EXPECT_EQ(stack_->lock->owner, orSO_GetThread());
    orSLL_LockRelease(stack_);
}

TEST_F(LockedLists, WithoutLockAreClosed) {
    orLLItem item{};
    orLL2Node node{};
    orSLL_Uninit(stack_);
    orSLL_XInsertHead(stack_, &item);
    EXPECT_EQ(orSLL_XGetHead(stack_, 1, 1), ORSLL_NOT_LOCKED);
    EXPECT_TRUE(orSLL_IsEmpty(stack_));
    orSLL2_Uninit(deque_);
    orSLL2_XInsertTail(deque_, &node);
    EXPECT_EQ(orSLL2_XGetHead(deque_, 1, 1), nullptr);
    EXPECT_EQ(orSLL2_XRemoveHead(nullptr), nullptr);
    orSLL2_XInsertHead(nullptr, &node);
    EXPECT_EQ(orSLL2_Create(nullptr), ORU_FAILURE);
}

}  // namespace
