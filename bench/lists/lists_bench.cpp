// Locked lists against a standard container behind a mutex.
#include <benchmark/benchmark.h>

#include <deque>
#include <forward_list>
#include <list>
#include <mutex>

#include "registry.h"
#include "vlrcomn/locked_list.h"

namespace {

class OurStack {
public:
    using Item = orLLItem;
    OurStack() { orSLL_Create(&list_); }
    ~OurStack() { orSLL_Release(list_); }
    void push(Item* item) { orSLL_XInsertHead(list_, item); }
    Item* pop() { return orSLL_XRemoveHead(list_); }

private:
    AttachedThread thread_;
    orSLL* list_ = nullptr;
};

class OurDeque {
public:
    using Item = orLL2Node;
    OurDeque() { orSLL2_Create(&list_); }
    ~OurDeque() { orSLL2_Release(list_); }
    void push(Item* item) { orSLL2_XInsertTail(list_, item); }
    Item* pop() { return orSLL2_XRemoveHead(list_); }

private:
    AttachedThread thread_;
    orSLL2* list_ = nullptr;
};

template <typename Container>
void put(Container& items, int* item) {
    items.push_back(item);
}
void put(std::forward_list<int*>& items, int* item) {
    items.push_front(item);
}

template <typename Container>
class Guarded {
public:
    using Item = int;
    void push(Item* item) {
        const std::lock_guard guard(mutex_);
        put(items_, item);
    }
    Item* pop() {
        const std::lock_guard guard(mutex_);
        Item* const item = items_.front();
        items_.pop_front();
        return item;
    }

private:
    std::mutex mutex_;
    Container items_;
};

// One item out and in again, with three more inside.
template <typename List>
void out_and_in(benchmark::State& state) {
    typename List::Item items[4];
    List list;
    for (auto& item : items) {
        list.push(&item);
    }
    for (auto _ : state) {
        list.push(list.pop());
    }
}

BENCHMARK_TEMPLATE(out_and_in, OurStack)->Name("BM_locked_stack_out_and_in/ours");
BENCHMARK_TEMPLATE(out_and_in, Guarded<std::forward_list<int*>>)
    ->Name("BM_locked_stack_out_and_in/std_mutex_forward_list");
BENCHMARK_TEMPLATE(out_and_in, OurDeque)->Name("BM_locked_queue_out_and_in/ours");
BENCHMARK_TEMPLATE(out_and_in, Guarded<std::deque<int*>>)
    ->Name("BM_locked_queue_out_and_in/std_mutex_deque");
BENCHMARK_TEMPLATE(out_and_in, Guarded<std::list<int*>>)
    ->Name("BM_locked_queue_out_and_in/std_mutex_list");

}  // namespace
