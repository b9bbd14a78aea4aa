// Networks of a test's own.
//
// A NetworkNamespace is a network with nothing but its loopback interface and what the given commands
// add; the thread that makes it is inside until it makes another or leaves. Sockets stay in the network
// in which they were opened. Nothing of it outlives the program.
#pragma once

#include <fcntl.h>
#include <sched.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "support/owners.h"

namespace network_test {

class NetworkNamespace {
public:
    // Enters a new network and runs `commands`, lines as "ip" takes them ("link set lo up").
    explicit NetworkNamespace(const std::string& commands) {
        former_ = current();
        if (geteuid() != 0 || std::system("ip -V >/dev/null 2>&1") != 0) {
            why_not_ = "needs root and the ip command";
        } else if (!former_ || unshare(CLONE_NEWNET) != 0) {
            why_not_ = "network namespaces cannot be made here";
        } else {
            own_ = current();
            configure(commands);
        }
    }
    ~NetworkNamespace() { leave(); }
    NetworkNamespace(const NetworkNamespace&) = delete;
    NetworkNamespace& operator=(const NetworkNamespace&) = delete;

    // Runs more commands inside this network; the thread stays where it is.
    void configure(const std::string& commands) {
        const FileDescriptor here = current();
        enter();
        FILE* const ip = popen("ip -batch - 2>&1", "w");
        if (ip == nullptr || std::fputs(commands.c_str(), ip) < 0 || pclose(ip) != 0) {
            why_not_ = "ip refuses: " + commands;
        }
        setns(here.get(), CLONE_NEWNET);
    }

    void enter() const { setns(own_.get(), CLONE_NEWNET); }
    void leave() const {
        if (own_) {
            setns(former_.get(), CLONE_NEWNET);
        }
    }

    // Empty when everything worked.
    const std::string& why_not() const { return why_not_; }

    // By what the ip command knows this network, as in "link set v0 netns NAME".
    std::string name() const {
        return "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(own_.get());
    }

private:
    using FileDescriptor = velora_com::qel::support::FileDescriptor;

    static FileDescriptor current() {
        return FileDescriptor(open("/proc/thread-self/ns/net", O_RDONLY | O_CLOEXEC));
    }

    FileDescriptor former_;
    FileDescriptor own_;
    std::string why_not_;
};

}  // namespace network_test

#define SKIP_WITHOUT(network)                \
    if (!(network).why_not().empty()) {      \
        GTEST_SKIP() << (network).why_not(); \
    }
