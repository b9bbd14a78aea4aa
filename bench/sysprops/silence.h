// Listing the users writes diagnostic lines to standard output, which is no place for them here.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>

class Silence {
public:
    Silence() : kept_(dup(STDOUT_FILENO)) {
        flush();
        const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
    }
    ~Silence() {
        flush();
        dup2(kept_, STDOUT_FILENO);
        close(kept_);
    }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

private:
    static void flush() {
        std::cout.flush();
        std::wcout.flush();
        std::fflush(stdout);
    }
    int kept_;
};
