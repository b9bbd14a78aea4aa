#include <gtest/gtest.h>

#include <iterator>
#include <list>
#include <random>
#include <vector>

#include "vlrcomn/linked_list.h"

namespace {

TEST(PlainList, BehavesAsAList) {
    std::mt19937 random(2);
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
            ASSERT_EQ(item, expected);
            ASSERT_EQ(orLL_XIsEnd(item), 0);
            item = orLL_XGetNext(item);
        }
        ASSERT_EQ(orLL_XIsEnd(item), 1);
    }
}

TEST(SentinelList, BehavesAsAList) {
    std::mt19937 random(3);
    std::vector<orLL2Node> nodes(200);
    for (size_t i = 0; i < nodes.size(); ++i) {
        nodes[i] = {&nodes[i + 1 < nodes.size() ? i + 1 : i], &nodes[i > 0 ? i - 1 : i]};
    }
    std::list<orLL2Node*> model;
    for (size_t i = 1; i + 1 < nodes.size(); ++i) {
        model.push_back(&nodes[i]);
    }
    while (!model.empty()) {
        const auto position =
            std::next(model.begin(), static_cast<std::ptrdiff_t>(random() % model.size()));
        const orLL2Node kept = **position;
        orLL2_XRemove(*position);
        ASSERT_EQ((*position)->next, kept.next) << "the node's own links stay";
        ASSERT_EQ((*position)->previous, kept.previous);
        model.erase(position);
        orLL2Node* node = &nodes.front();
        for (orLL2Node* expected : model) {
            ASSERT_EQ(orLL2_XGetPrev(expected), node);
            node = orLL2_XGetNext(node);
            ASSERT_EQ(node, expected);
            ASSERT_EQ(orLL2_XIsEnd(node), 0);
        }
        ASSERT_EQ(orLL2_XIsEnd(orLL2_XGetNext(node)), 1);
    }
}

TEST(IntrusiveLists, IgnoreNull) {
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

    orLL2Node alone{nullptr, nullptr}, front{&alone, nullptr}, half{nullptr, &front};
    orLL2_XRemove(nullptr);
    orLL2_XRemove(&alone);
    orLL2_XRemove(&half);
    EXPECT_EQ(front.next, nullptr);
    EXPECT_EQ(orLL2_XGetNext(nullptr), nullptr);
    EXPECT_EQ(orLL2_XGetPrev(nullptr), nullptr);
    EXPECT_EQ(orLL2_XIsEnd(nullptr), 1);
}

}  // namespace
