// Lets a signal that qemu-ppc delivers be unwound through. glibc ends a cancelled thread by an exception
// that starts in a signal handler and passes the frame below it, which the kernel laid down. The kernel's
// shared object describes that frame to the unwinder; the emulator has no such object, so that a thread
// cancelled in a blocking call ended the process. This file, linked into each test program for 32-bit
// PowerPC, writes the description down once, before main.
//
// Nothing here is measured out by hand: a signal that the program sends to itself shows where the frame
// returns to and where the registers are saved, and the C library's ucontext_t says in which order.
#include <asm/ptrace.h>
#include <ucontext.h>
#include <csignal>

#include <cstddef>
#include <cstdint>
#include <cstring>

extern "C" void __register_frame(void* tables);  // of the compiler's runtime library

namespace {

// DWARF 4, sections 7.7.1 and 7.23.
enum : unsigned char {
    kOpDereference = 0x06,
    kOpPlusConstant = 0x23,
    kOpRegister1Plus = 0x71,
    kCfaDefinedByExpression = 0x0f,
    kSavedAtExpression = 0x10,
};

// Numbers of registers in unwind tables of this processor; r0 to r31 are 0 to 31, f0 to f31 come next.
constexpr unsigned kFirstFloat = 32, kLinkRegister = 65, kConditionRegister = 70;
constexpr unsigned kProgramCounter = 67;  // no register's number: free for the interrupted address

// Two tables, as in a section .eh_frame: one of how to undo the frame, one of the addresses it is for.
class UnwindTables {
public:
    // The frame that `handler_frame` follows keeps the address of its saved registers `distance` above it.
    void write(uintptr_t return_address, ptrdiff_t distance) {
        distance_ = distance;
        const size_t rules = begin_table();
        word(0);                // this is the table of rules
        add(1);                 // version
        add('S'), add('\0');    // the frame is a signal's
        uleb(1), sleb(-4);      // units of code and stack, neither of them used
        uleb(kProgramCounter);  // holds where to go on
        add(kCfaDefinedByExpression);
        expression(offsetof(mcontext_t, gregs[PT_R1]), true);
        for (unsigned i = 0; i < 32; ++i) {
            saved(i, offsetof(mcontext_t, gregs) + i * sizeof(unsigned long));
            saved(kFirstFloat + i, offsetof(mcontext_t, fpregs) + i * sizeof(double));
        }
        saved(kLinkRegister, offsetof(mcontext_t, gregs[PT_LNK]));
        saved(kConditionRegister, offsetof(mcontext_t, gregs[PT_CCR]));
        saved(kProgramCounter, offsetof(mcontext_t, gregs[PT_NIP]));
        end_table(rules);

        const size_t addresses = begin_table();
        word(static_cast<uint32_t>(addresses -
                                   (rules - sizeof(uint32_t))));  // how far back the rules are
        // The unwinder looks up the byte before a return address: a call would be there.
        word(static_cast<uint32_t>(return_address) - 4);
        word(4 + 8);
        end_table(addresses);
        word(0);  // end of the tables
        __register_frame(bytes_);
    }

private:
    void add(unsigned value) { bytes_[used_++] = static_cast<unsigned char>(value); }
    void word(uint32_t value) {
        std::memcpy(bytes_ + used_, &value, sizeof value);
        used_ += sizeof value;
    }
    void uleb(size_t value) {
        for (; value >= 0x80; value >>= 7) {
            add(value % 0x80 + 0x80);
        }
        add(static_cast<unsigned>(value));
    }
    void sleb(ptrdiff_t value) {
        for (; value < -0x40 || value >= 0x40; value >>= 7) {
            add((static_cast<unsigned>(value) & 0x7f) + 0x80);
        }
        add(static_cast<unsigned>(value) & 0x7f);
    }
    // The address of a place among the saved registers, or what stands there.
    void expression(size_t offset, bool contents) {
        const size_t length = used_;
        add(0);
        add(kOpRegister1Plus);
        sleb(distance_);
        add(kOpDereference);
        add(kOpPlusConstant);
        uleb(offset);
        if (contents) {
            add(kOpDereference);
        }
        bytes_[length] = static_cast<unsigned char>(used_ - length - 1);
    }
    void saved(unsigned register_number, size_t offset) {
        add(kSavedAtExpression);
        uleb(register_number);
        expression(offset, false);
    }
    size_t begin_table() {
        word(0);  // its length, known later
        return used_;
    }
    void end_table(size_t begin) {
        while (used_ % sizeof(uint32_t) != 0) {
            add(0);  // no operation
        }
        const auto length = static_cast<uint32_t>(used_ - begin);
        std::memcpy(bytes_ + begin - sizeof length, &length, sizeof length);
    }

    alignas(uint32_t) unsigned char bytes_[1024] = {};
    size_t used_ = 0;
    ptrdiff_t distance_ = 0;
};

UnwindTables tables;  // used as long as the process runs

void look_at_frame(int, siginfo_t*, void* context) {
    const auto* const code = static_cast<const uint32_t*>(__builtin_return_address(0));
    if (code[0] != 0x380000ac || code[1] != 0x44000002) {
        return;  // not "li r0,rt_sigreturn; sc"
    }
    const auto* const where =
        reinterpret_cast<char*>(&static_cast<ucontext_t*>(context)->uc_mcontext.uc_regs);
    tables.write(reinterpret_cast<uintptr_t>(code),
                 where - static_cast<char*>(__builtin_dwarf_cfa()));
}

__attribute__((constructor)) void describe_signal_frame() {
    struct sigaction look = {}, before;
    look.sa_sigaction = look_at_frame;
    look.sa_flags = SA_SIGINFO;
    sigaction(SIGURG, &look, &before);
    raise(SIGURG);
    sigaction(SIGURG, &before, nullptr);
}

}  // namespace
