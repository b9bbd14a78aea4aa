#include <gtest/gtest.h>

#include <iterator>
#include <list>
#include <random>
#include <vector>

#include "vlrcomn/linked_list.h"

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
        } else {
            const bool at_tail = random() % 2 == 0 && !model.empty();
            const auto index =
                static_cast<uint32_t>(at_tail ? model.size() - 1 : random() % (model.size() + 2));
            LinkedListItem* expected = nullptr;
            LinkedListItem kept{};
            if (index < model.size()) {
                const auto position = std::next(model.begin(), static_cast<int>(index));
                expected = *position;
                kept = *expected;
                model.erase(position);
            }
            ASSERT_EQ(LinkedList_PeekAt(list, index), expected);
            ASSERT_EQ(at_tail ? LinkedList_RemoveTail(list) : LinkedList_RemoveAt(list, index),
                      expected);
            if (expected != nullptr) {
                ASSERT_EQ(expected->next, kept.next) << "a removed item keeps its links";
                ASSERT_EQ(expected->previous, kept.previous);
            }
        }
        ASSERT_EQ(LinkedList_GetCount(list), static_cast<int>(model.size()));
        const LinkedListItem* before = nullptr;
        for (const LinkedListItem* expected : model) {
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

TEST(LinkedList, RefusesNull) {
    LinkedListItem item{};
    LinkedListHeader list{};
    LinkedListHandle none = nullptr;
    LinkedList_End(nullptr);
    LinkedList_End(&none);
    for (const auto add : {LinkedList_AddHead, LinkedList_AddTail}) {
        EXPECT_EQ(add(nullptr, &item), 0);
        EXPECT_EQ(add(&list, nullptr), 0);
    }
    for (LinkedListHandle handle : {none, &list}) {
        EXPECT_EQ(LinkedList_RemoveTail(handle), nullptr);
        EXPECT_EQ(LinkedList_PeekAt(handle, 0), nullptr);
        EXPECT_EQ(LinkedList_RemoveAt(handle, 0), nullptr);
        EXPECT_EQ(LinkedList_RemoveAt(handle, UINT32_MAX), nullptr);
    }
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
