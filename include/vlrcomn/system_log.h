/**
 * @file
 * @brief One message to the system log, under the agent's tag or another.
 *
 * Each call opens the log (options LOG_CONS and LOG_NDELAY, facility LOG_USER), writes one message
 * and closes it again. A null format writes nothing. `errno` is kept, so that "%m" names the
 * caller's error.
 *
 * Beware of the overloads: a second text selects the form with a tag. To log a text that comes from
 * elsewhere, do not write
 * @code
 * LogInSystemLog(SyslogError, "%s", text);           // wrong: logs `text` as a format, tagged "%s"
 * LogInSystemLog(SyslogError, "[QEL]", "%s", text);  // right
 * @endcode
 *
 * Thread safety: every function may be called from any thread. The C library's log is one for the process,
 * so that a message takes its turn: it may wait until another thread's is written, and keeps its own tag. A
 * thread that calls syslog(3) itself takes no part in that: its messages may carry a tag given here, or one
 * of these the program's name. Cancellation is held back until the message is written.
 *
 * No function here may be called from a signal handler, where it could wait for the thread that it
 * interrupted. In the child of a `fork` a message may wait for ever for one that another thread was writing:
 * after `fork` in a process with several threads only `exec` is safe.
 *
 * Lifetime of a tag: the C library keeps the pointer, not the text. A tag must therefore outlive
 * every use of the log by the process; use literals.
 */
#ifndef VLRCOMN_SYSTEM_LOG_H
#define VLRCOMN_SYSTEM_LOG_H

#include <cstdarg>
#include <cstdint>

#include "vlrcomn/types.h"

namespace velora_com::qel {

/** @addtogroup utilities
 * @{ */

/** How severe a message is. Any other value counts as SyslogInfo. */
enum SyslogPriority : int32_t {
    SyslogCritical = 0, /**< LOG_CRIT */
    SyslogError = 1,    /**< LOG_ERR */
    SyslogWarning = 2,  /**< LOG_WARNING */
    SyslogInfo = 3,     /**< LOG_INFO */
};

/**
 * Logs a message tagged "[QEL]".
 *
 * @param priority how severe the message is
 * @param format a printf format, "%m" included
 * @return 1
 */
VLRCOMN_API int LogInSystemLog(SyslogPriority priority, const char* format, ...)
    VLRCOMN_PRINTF_FORMAT(2, 3);

/**
 * Logs a message with a tag of the caller's.
 *
 * @param priority how severe the message is
 * @param ident the tag; null stands for the program's name. See above for how long it must live.
 * @param format a printf format, "%m" included
 * @return 1
 */
VLRCOMN_API int LogInSystemLog(SyslogPriority priority, const char* ident, const char* format, ...)
    VLRCOMN_PRINTF_FORMAT(3, 4);

/**
 * Logs a message tagged "[QEL]" at a level of the system's own.
 *
 * @param level a level of <syslog.h>, for example LOG_ERR
 * @param format a printf format, "%m" included
 * @param arguments the values for @p format; the caller ends the list
 * @return 1
 */
VLRCOMN_API int vLogInSystemLog(int level, const char* format, std::va_list arguments)
    VLRCOMN_PRINTF_FORMAT(2, 0);

/**
 * Logs a message with a tag of the caller's at a level of the system's own.
 *
 * @param level a level of <syslog.h>
 * @param ident the tag; null stands for the program's name. See above for how long it must live.
 * @param format a printf format, "%m" included
 * @param arguments the values for @p format; the caller ends the list
 * @return 1
 */
VLRCOMN_API int vLogInSystemLog(int level, const char* ident, const char* format,
                                std::va_list arguments) VLRCOMN_PRINTF_FORMAT(3, 0);

/** @} */

}  // namespace velora_com::qel

#endif
