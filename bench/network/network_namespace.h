// A network with nothing but its loopback interface and what the given commands add. Nothing of it outlives
// the program.
#pragma once

#include <fcntl.h>
#include <sched.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "support/owners.h"

class NetworkNamespace {
public:
    // Makes a network and runs `commands` in it, lines as "ip" takes them ("link set lo up"). The thread is
    // inside until it leaves.
    explicit NetworkNamespace(const std::string& commands) : former_(current()) {
        if (geteuid() != 0 || std::system("ip -V >/dev/null 2>&1") != 0) {
            why_not_ = "needs root and the ip command";
        } else if (!former_ || unshare(CLONE_NEWNET) != 0) {
            why_not_ = "network namespaces cannot be made here";
        } else {
            own_ = current();
            FILE* const ip = popen("ip -batch - 2>&1", "w");
            if (ip == nullptr || std::fputs(commands.c_str(), ip) < 0 || pclose(ip) != 0) {
                why_not_ = "ip refuses the commands";
            }
        }
    }
    ~NetworkNamespace() { leave(); }
    NetworkNamespace(const NetworkNamespace&) = delete;
    NetworkNamespace& operator=(const NetworkNamespace&) = delete;

    void enter() const { setns(own_.get(), CLONE_NEWNET); }
    void leave() const {
        if (own_) {
            setns(former_.get(), CLONE_NEWNET);
        }
    }

    // Empty when everything worked.
    const std::string& why_not() const { return why_not_; }

private:
    using FileDescriptor = velora_com::qel::support::FileDescriptor;

    static FileDescriptor current() {
        return FileDescriptor(open("/proc/thread-self/ns/net", O_RDONLY | O_CLOEXEC));
    }

    FileDescriptor former_;
    FileDescriptor own_;
    std::string why_not_;
};
