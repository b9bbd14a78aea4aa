// Checks that hold only in a forked child.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

// Whether `check` returns true in a child of this process; it must make no assertions of its own.
template <typename Check>
bool holds_in_child(Check check) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(check() ? 0 : 1);
    }
    int status = -1;
    return waitpid(child, &status, 0) == child && status == 0;
}
