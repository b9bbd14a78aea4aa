#include "scripted_host.h"

#include <netdb.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#if !defined(__THROW)  // as glibc declares these calls
#define __THROW
#endif

ScriptedHost& scripted_host() {
    static ScriptedHost host;
    return host;
}

namespace {

void copy_out(const std::string& text, char* out, size_t size) {
    std::memset(out, 0, size);
    std::memcpy(out, text.data(), std::min(text.size(), size));
}

}  // namespace

extern "C" int uname(utsname* out) __THROW {
    if (scripted_host().uname_fails) {
        errno = EFAULT;
        return -1;
    }
    copy_out(scripted_host().machine, out->machine, sizeof out->machine);
    copy_out(scripted_host().node, out->nodename, sizeof out->nodename);
    return 0;
}

extern "C" int gethostname(char* out, size_t size) __THROW {
    if (!scripted_host().host_name) {
        errno = EPERM;
        return -1;
    }
    copy_out(*scripted_host().host_name, out, size);
    return 0;
}

extern "C" hostent* gethostbyname(const char* name) {
    static hostent entry;
    if (!scripted_host().official_name || name != *scripted_host().host_name) {
        return nullptr;
    }
    entry.h_name = scripted_host().official_name->data();
    return &entry;
}
