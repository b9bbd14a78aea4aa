#include "platform/linux/expat_memory.h"

#include <cstdlib>

namespace velora_com::qel::platform {

namespace {

// Stands before every block, so that the budget gets back what a block has taken.
struct alignas(std::max_align_t) Header {
    size_t size;
};

}  // namespace

thread_local ExpatMemory* ExpatMemory::current_ = nullptr;

void* ExpatMemory::allocate(size_t size) noexcept {
    return reallocate(nullptr, size);
}

void* ExpatMemory::reallocate(void* memory, size_t size) noexcept {
    Header* header = memory == nullptr ? nullptr : static_cast<Header*>(memory) - 1;
    const size_t available = current_->left_ + (header == nullptr ? 0 : header->size);
    if (size > available) {
        current_->exceeded_ = true;
        return nullptr;
    }
    header = static_cast<Header*>(std::realloc(header, sizeof(Header) + size));
    if (header == nullptr) {
        return nullptr;
    }
    header->size = size;
    current_->left_ = available - size;
    return header + 1;
}

void ExpatMemory::release(void* memory) noexcept {
    if (memory != nullptr) {
        Header* const header = static_cast<Header*>(memory) - 1;
        current_->left_ += header->size;
        std::free(header);
    }
}

const XML_Memory_Handling_Suite& ExpatMemory::suite() noexcept {
    static constexpr XML_Memory_Handling_Suite functions = {allocate, reallocate, release};
    return functions;
}

}  // namespace velora_com::qel::platform
