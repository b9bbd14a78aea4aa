// A bound on the memory of one Expat parser, whatever its document makes it keep: open elements, long
// tokens, attributes.
#pragma once

#include <expat.h>

#include <cstddef>

namespace velora_com::qel::platform {

// Stands in the stack frame that creates, runs and frees one parser, which takes its memory through
// suite(). The parser meets the end of the budget as it meets the end of memory.
class ExpatMemory {
public:
    explicit ExpatMemory(size_t budget) noexcept : left_(budget), outer_(current_) {
        current_ = this;
    }
    ~ExpatMemory() { current_ = outer_; }
    ExpatMemory(const ExpatMemory&) = delete;
    ExpatMemory& operator=(const ExpatMemory&) = delete;

    static const XML_Memory_Handling_Suite& suite() noexcept;

    // Whether the budget, and not the system, refused memory.
    bool exceeded() const noexcept { return exceeded_; }

private:
    static void* allocate(size_t size) noexcept;
    static void* reallocate(void* memory, size_t size) noexcept;
    static void release(void* memory) noexcept;

    // Expat passes no context to these functions; they run on the thread that parses.
    static thread_local ExpatMemory* current_;

    size_t left_;
    bool exceeded_ = false;
    ExpatMemory* outer_;
};

}  // namespace velora_com::qel::platform
