#include "vlrcomn/linked_list.h"

#include <gtest/gtest.h>

#include <iterator>
#include <list>
#include <random>
#include <vector>

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
    EXPECT_DEATH(LinkedList_Init(nullptr),
                 "../source/Linklist:31: LinkedList_Init: Assertion `lphLinkedList' failed");
    LinkedListItem only{};
    LinkedListHeader short_chain{&only, &only, 3};
    EXPECT_DEATH(LinkedList_PeekAt(&short_chain, 1),
                 "../source/Linklist:200: LinkedList_PeekAt: Assertion `lpItem' failed");
}

// Heads and tails of the intrusive lists are tested with the locked lists, which are built on them.
TEST(IntrusiveLists, LoseAnItemAtAnyPlace) {
    for (size_t place = 0; place < 3; ++place) {
        orLLItem items[3], *head = items;
        orLL_Init(&head);
        orLL2Node nodes[5] = {{nodes + 1, nodes}};
        for (size_t i = 0; i < 3; ++i) {
            orLL_XInsertHead(&head, &items[2 - i]);
            nodes[i + 1] = {&nodes[i + 2], &nodes[i]};
        }
        nodes[4] = {&nodes[4], &nodes[3]};
        EXPECT_EQ(orLL_XGetStart(head), &items[0]);
        orLL_XRemove(place == 0 ? &head : &items[place - 1].next, &items[place]);
        orLL2_XRemove(&nodes[place + 1]);
        const size_t first = place == 0 ? 1 : 0, second = place == 2 ? 1 : 2;
        EXPECT_EQ(head, &items[first]);
        EXPECT_EQ(orLL_XGetNext(head), &items[second]);
        EXPECT_EQ(orLL_XGetNext(&items[second]), nullptr);
        EXPECT_EQ(orLL2_XGetNext(&nodes[0]), &nodes[first + 1]);
        EXPECT_EQ(orLL2_XGetNext(&nodes[first + 1]), &nodes[second + 1]);
        EXPECT_EQ(orLL2_XGetPrev(&nodes[4]), &nodes[second + 1]);
        EXPECT_EQ(orLL2_XGetPrev(&nodes[second + 1]), &nodes[first + 1]);
        EXPECT_EQ(nodes[place + 1].next, &nodes[place + 2]) << "the node's own links stay";
        EXPECT_EQ(nodes[place + 1].previous, &nodes[place]);
    }
}

}  // namespace
