#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <random>

#include "vlrcomn/linked_list.h"

namespace {

// Both chains and the header agree with the model.
void expect_equal(const LinkedListHeader& list, const std::deque<LinkedListItem*>& model) {
    ASSERT_EQ(list.count, model.size());
    const LinkedListItem* item = list.head;
    const LinkedListItem* before = nullptr;
    for (const LinkedListItem* expected : model) {
        ASSERT_EQ(item, expected);
        ASSERT_EQ(item->previous, before);
        before = item;
        item = item->next;
    }
    ASSERT_EQ(item, nullptr);
    ASSERT_EQ(list.tail, before);
}

TEST(LinkedList, BehavesAsADeque) {
    for (const unsigned seed : {1u, 20u, 300u}) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        std::deque<LinkedListItem> items(40);
        std::deque<LinkedListItem*> model;
        LinkedListHandle list = nullptr;
        ASSERT_EQ(LinkedList_Init(&list), 1);
        for (int step = 0; step < 20000; ++step) {
            const auto index = static_cast<uint32_t>(random() % (model.size() + 2));
            LinkedListItem* removed = nullptr;
            LinkedListItem* expected = nullptr;
            // Insertions and removals are about as frequent, so that lengths around 0 come up often.
            const auto action = random() % 6;
            if (action < 3 && model.size() < items.size()) {
                LinkedListItem* fresh = nullptr;
                for (LinkedListItem& item : items) {
                    if (std::find(model.begin(), model.end(), &item) == model.end()) {
                        fresh = &item;
                        break;
                    }
                }
                if (action == 0) {
                    ASSERT_EQ(LinkedList_AddHead(list, fresh), 1);
                    model.push_front(fresh);
                } else {
                    ASSERT_EQ(LinkedList_AddTail(list, fresh), 1);
                    model.push_back(fresh);
                }
            } else if (action == 3) {
                removed = LinkedList_RemoveTail(list);
                if (!model.empty()) {
                    expected = model.back();
                    model.pop_back();
                }
            } else {
                expected = index < model.size() ? model[index] : nullptr;
                ASSERT_EQ(LinkedList_PeekAt(list, index), expected);
                removed = LinkedList_RemoveAt(list, index);
                if (expected != nullptr) {
                    model.erase(model.begin() + index);
                }
            }
            ASSERT_EQ(removed, expected);
            ASSERT_EQ(LinkedList_GetCount(list), static_cast<int>(model.size()));
            ASSERT_NO_FATAL_FAILURE(expect_equal(*list, model)) << "step " << step;
        }
        LinkedList_End(&list);
        EXPECT_EQ(list, nullptr);
    }
}

TEST(LinkedList, RefusesNullAndKeepsTheLinksOfRemovedItems) {
    LinkedListHandle list = nullptr;
    LinkedList_End(nullptr);
    LinkedList_End(&list);
    ASSERT_EQ(LinkedList_Init(&list), 1);
    LinkedListItem first{}, second{}, third{};
    EXPECT_EQ(LinkedList_AddHead(nullptr, &first), 0);
    EXPECT_EQ(LinkedList_AddHead(list, nullptr), 0);
    EXPECT_EQ(LinkedList_AddTail(nullptr, &first), 0);
    EXPECT_EQ(LinkedList_AddTail(list, nullptr), 0);
    EXPECT_EQ(LinkedList_RemoveTail(nullptr), nullptr);
    EXPECT_EQ(LinkedList_PeekAt(nullptr, 0), nullptr);
    EXPECT_EQ(LinkedList_RemoveAt(nullptr, 0), nullptr);
    EXPECT_EQ(LinkedList_RemoveAt(list, 0), nullptr);
    for (LinkedListItem* item : {&first, &second, &third}) {
        LinkedList_AddTail(list, item);
    }
    EXPECT_EQ(LinkedList_RemoveAt(list, UINT32_MAX), nullptr);
    EXPECT_EQ(LinkedList_RemoveAt(list, 1), &second);
    EXPECT_EQ(second.previous, &first);
    EXPECT_EQ(second.next, &third);
    LinkedList_End(&list);
}

using LinkedListDeathTest = testing::Test;

TEST(LinkedListDeathTest, BrokenPreconditionsAreAssertions) {
    EXPECT_DEATH(LinkedList_Init(nullptr),
                 "../source/Linklist:31: LinkedList_Init: Assertion `lphLinkedList' failed");
    EXPECT_DEATH(LinkedList_GetCount(nullptr),
                 "../source/Linklist:167: LinkedList_GetCount: Assertion `lpMain' failed");
    LinkedListItem only{};
    LinkedListHeader short_chain{&only, &only, 3};
    EXPECT_DEATH(LinkedList_PeekAt(&short_chain, 1),
                 "../source/Linklist:200: LinkedList_PeekAt: Assertion `lpItem' failed");
    EXPECT_DEATH(LinkedList_RemoveAt(&short_chain, 1),
                 "../source/Linklist:245: LinkedList_RemoveAt: Assertion `lpItem' failed");
    LinkedListHeader no_tail{nullptr, &only, 1};
    EXPECT_DEATH(LinkedList_RemoveAt(&no_tail, 0),
                 "../source/Linklist:238: LinkedList_RemoveAt: Assertion `lpMain->lpTail' failed");
}

}  // namespace
