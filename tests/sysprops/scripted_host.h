// The POSIX calls by which the collectors name this host, answered by the test in the place of the C
// library's. For one file of a program.
#pragma once

#include <netdb.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <cstring>
#include <optional>
#include <string>

#if !defined(__THROW)  // as glibc declares these calls
#define __THROW
#endif

// What is not there makes its call fail.
struct ScriptedHost {
    std::string machine = "Power Macintosh";
    std::optional<std::string> node = "alpha.example.org", host_name = "alpha", official_name;
};
inline ScriptedHost scripted_host;

extern "C" int uname(utsname* out) __THROW {
    if (!scripted_host.node) {
        return -1;
    }
    std::strcpy(out->machine, scripted_host.machine.c_str());
    std::strcpy(out->nodename, scripted_host.node->c_str());
    return 0;
}

extern "C" int gethostname(char* out, size_t size) __THROW {
    std::memset(out, 'h', size);  // as of a name that does not fit
    if (scripted_host.host_name && scripted_host.host_name->size() < size) {
        std::strcpy(out, scripted_host.host_name->c_str());
    }
    return scripted_host.host_name ? 0 : -1;
}

extern "C" hostent* gethostbyname(const char*) {
    static hostent entry;
    entry.h_name = scripted_host.official_name ? scripted_host.official_name->data() : nullptr;
    return scripted_host.official_name ? &entry : nullptr;
}
