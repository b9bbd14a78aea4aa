// Failed preconditions that end the process by contract, in every build.
#pragma once

namespace velora_com::qel::support {

// Calls the C library's own handler of failed assertions, which names all four and aborts. The texts
// are the contract's and need not be those of the code that calls.
[[noreturn]] void assertion_failed(const char* function, const char* file, int line,
                                   const char* expression);

}  // namespace velora_com::qel::support
