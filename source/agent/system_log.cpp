#include "vlrcomn/system_log.h"

#include <syslog.h>

#include <cerrno>

#include "support/owners.h"

namespace velora_com::qel {

namespace {

// The C library keeps the pointer beyond the call.
constexpr const char default_tag[] = "[QEL]";

// The C library has one tag for the process: held from the opening of the log to its closing, so that no other
// message changes it in between.
support::Mutex one_message;

int system_level(SyslogPriority priority) {
    switch (priority) {
        case SyslogCritical:
            return LOG_CRIT;
        case SyslogError:
            return LOG_ERR;
        case SyslogWarning:
            return LOG_WARNING;
        case SyslogInfo:
            break;
    }
    return LOG_INFO;
}

[[gnu::format(printf, 3, 0)]] void write_message(int level, const char* ident, const char* format,
                                                 std::va_list arguments, int error)
    VLRCOMN_REQUIRES(one_message) {
    openlog(ident, LOG_CONS | LOG_NDELAY, LOG_USER);
    errno = error;  // what "%m" stands for
    vsyslog(level, format, arguments);
    closelog();
}

}  // namespace

int vLogInSystemLog(int level, const char* ident, const char* format, std::va_list arguments) {
    if (format == nullptr) {
        return 1;
    }
    const support::ErrnoKeeper keeper;
    const int error = errno;
    const support::CancellationOff cancellation_off;
    const support::MutexGuard lock(one_message);
    write_message(level, ident, format, arguments, error);
    return 1;
}

int vLogInSystemLog(int level, const char* format, std::va_list arguments) {
    return vLogInSystemLog(level, default_tag, format, arguments);
}

// NOLINTBEGIN(cert-dcl50-cpp): the interface has printf's form
int LogInSystemLog(SyslogPriority priority, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const int result = vLogInSystemLog(system_level(priority), format, arguments);
    va_end(arguments);
    return result;
}

int LogInSystemLog(SyslogPriority priority, const char* ident, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const int result = vLogInSystemLog(system_level(priority), ident, format, arguments);
    va_end(arguments);
    return result;
}
// NOLINTEND(cert-dcl50-cpp)

}  // namespace velora_com::qel
