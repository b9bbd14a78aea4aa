// Failed preconditions that end the process, also in builds without assert().
#pragma once

namespace velora_com::qel::support {

// Calls the C library's own handler of failed assertions, which names all four and aborts. The texts
// stay the same when the calling code changes, so that crash reports of one fault are found together.
[[noreturn]] void assertion_failed(const char* function, const char* file, int line,
                                   const char* expression);

}  // namespace velora_com::qel::support
