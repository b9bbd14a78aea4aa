#include "support/assertion.h"

// The handler is declared only where assertions are on.
#undef NDEBUG
#include <assert.h>

#include <cstdio>
#include <cstdlib>

#include "support/config.h"

namespace velora_com::qel::support {

#if defined(VLRCOMN_HAVE_ASSERT_FAIL)
namespace {

// One C library counts lines in int, another in unsigned int.
template <typename Line>
void call_handler(void (*handler)(const char*, const char*, Line, const char*),
                  const char* expression, const char* file, int line, const char* function) {
    handler(expression, file, static_cast<Line>(line), function);
}

}  // namespace
#endif

void assertion_failed(const char* function, const char* file, int line, const char* expression) {
#if defined(VLRCOMN_HAVE_ASSERT_FAIL)
    call_handler(&__assert_fail, expression, file, line, function);
#elif defined(VLRCOMN_HAVE_ASSERT_RTN)
    __assert_rtn(function, file, line, expression);
#else
    std::fprintf(stderr, "%s:%d: %s: Assertion `%s' failed.\n", file, line, function, expression);
#endif
    std::abort();
}

}  // namespace velora_com::qel::support
