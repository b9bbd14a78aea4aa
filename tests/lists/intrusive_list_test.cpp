#include <gtest/gtest.h>

#include <list>
#include <random>
#include <vector>

#include "vlrcomn/linked_list.h"

namespace {

TEST(PlainList, BehavesAsAList) {
    for (const unsigned seed : {2u, 30u, 400u}) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        std::vector<orLLItem> items(5000);
        orLLItem* head = &items[0];
        orLL_Init(&head);
        std::list<orLLItem*> model;
        for (orLLItem& fresh : items) {
            orLL_XInsertHead(&head, &fresh);
            model.push_front(&fresh);
            if (random() % 3 == 0) {
                ASSERT_EQ(orLL_XRemoveHead(&head), model.front());
                model.pop_front();
            }
            if (random() % 3 == 0 && !model.empty()) {
                // Takes out an item in the middle by the link that points at it.
                orLLItem** link = &head;
                auto position = model.begin();
                for (size_t i = random() % model.size(); i > 0; --i, ++position) {
                    link = &(*link)->next;
                }
                orLL_XRemove(link, *position);
                model.erase(position);
            }
            ASSERT_EQ(orLL_IsEmpty(&head), model.empty() ? 1 : 0);
            orLLItem* item = orLL_XGetStart(head);
            for (orLLItem* expected : model) {
                ASSERT_EQ(orLL_XIsEnd(item), 0);
                ASSERT_EQ(item, expected);
                item = orLL_XGetNext(item);
            }
            ASSERT_EQ(orLL_XIsEnd(item), 1);
        }
    }
}

TEST(PlainList, IgnoresNull) {
    orLLItem item{&item};
    orLLItem* head = nullptr;
    orLL_Init(nullptr);
    orLL_XInsertHead(nullptr, &item);
    orLL_XInsertHead(&head, nullptr);
    orLL_XRemove(nullptr, &item);
    orLL_XRemove(&head, nullptr);
    EXPECT_EQ(orLL_XRemoveHead(nullptr), nullptr);
    EXPECT_EQ(orLL_XRemoveHead(&head), nullptr);
    EXPECT_EQ(head, nullptr);
    EXPECT_EQ(item.next, &item);
    EXPECT_EQ(orLL_XGetNext(nullptr), nullptr);
    EXPECT_EQ(orLL_IsEmpty(nullptr), 1);
}

TEST(SentinelList, RemovesAnyNodeAndEndsAtTheSentinel) {
    orLL2Node front{}, back{}, middle{};
    front = {&middle, &front};
    middle = {&back, &front};
    back = {&back, &middle};
    EXPECT_EQ(orLL2_XGetNext(&front), &middle);
    EXPECT_EQ(orLL2_XGetPrev(&back), &middle);
    EXPECT_EQ(orLL2_XIsEnd(&middle), 0);
    EXPECT_EQ(orLL2_XIsEnd(&back), 1);
    orLL2_XRemove(&middle);
    EXPECT_EQ(front.next, &back);
    EXPECT_EQ(back.previous, &front);
    EXPECT_EQ(middle.next, &back) << "the node's own links stay";
    EXPECT_EQ(middle.previous, &front);

    orLL2Node alone{nullptr, nullptr}, half{nullptr, &front};
    orLL2_XRemove(nullptr);
    orLL2_XRemove(&alone);
    orLL2_XRemove(&half);
    EXPECT_EQ(front.next, nullptr);
    EXPECT_EQ(orLL2_XGetNext(nullptr), nullptr);
    EXPECT_EQ(orLL2_XGetPrev(nullptr), nullptr);
    EXPECT_EQ(orLL2_XIsEnd(nullptr), 1);
}

}  // namespace
