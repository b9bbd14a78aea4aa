// Filling the table of interfaces against the system call sequence that no enumeration can do without.
//
// The networks are made here: as many interfaces as the name says, each with one IPv4 address, or one
// interface with as many addresses, half of them IPv6. "machine" is the network of whoever runs this.
#include <benchmark/benchmark.h>
#include <ifaddrs.h>

#include <map>
#include <memory>
#include <string>

#include "network_namespace.h"
#include "support/registering.h"
#include "vlrcomn/net_interface.h"

#ifdef WITH_LIBUV
#include <uv.h>
#endif
#ifdef WITH_POCO
#include <Poco/Net/NetworkInterface.h>
#endif

namespace {

std::string interfaces(int count) {
    std::string commands = "link set lo up\n";
    for (int i = 0; i < count; ++i) {
        const std::string name = "v" + std::to_string(i);
        // Both ends of a pair count.
        if (i % 2 == 0) {
            commands +=
                "link add " + name + " type veth peer name v" + std::to_string(i + 1) + "\n";
        }
        commands += "addr add 10.1." + std::to_string(i) + ".1/24 dev " + name + "\n";
        commands += "link set " + name + " addrgenmode none up\n";
    }
    return commands;
}

std::string addresses(int count) {
    std::string commands = "link add v type veth peer name w\nlink set v addrgenmode none up\n";
    for (int i = 0; i < count / 2; ++i) {
        commands += "addr add 10.1." + std::to_string(i) + ".1/24 dev v\n";
        commands +=
            "addr add 2001:db8:0:" + std::to_string(i) + ":20d:93ff:fe12:3456/64 dev v nodad\n";
    }
    return commands;
}

// Moves the thread into the network that a workload needs, made once.
class Inside {
public:
    explicit Inside(benchmark::State& state, const std::string& commands) {
        if (commands.empty()) {
            return;
        }
        static std::map<std::string, std::unique_ptr<NetworkNamespace>> networks;
        auto& made = networks[commands];
        if (made == nullptr) {
            made = std::make_unique<NetworkNamespace>(commands);
        }
        network_ = made.get();
        if (!network_->why_not().empty()) {
            state.SkipWithError(network_->why_not().c_str());
            return;
        }
        network_->enter();
    }
    ~Inside() {
        if (network_ != nullptr) {
            network_->leave();
        }
    }
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;

private:
    NetworkNamespace* network_ = nullptr;
};

void fill(benchmark::State& state, const std::string& commands) {
    const Inside inside(state, commands);
    for (auto _ : state) {
        velora_com::qel::NetInterfaceList list(false);
        benchmark::DoNotOptimize(list.initialize());
    }
}

void snapshot(benchmark::State& state, const std::string& commands) {
    const Inside inside(state, commands);
    for (auto _ : state) {
        ifaddrs* list = nullptr;
        benchmark::DoNotOptimize(getifaddrs(&list));
        freeifaddrs(list);
    }
}

#ifdef WITH_LIBUV
// Leaves out what is down or has no address.
void with_libuv(benchmark::State& state, const std::string& commands) {
    const Inside inside(state, commands);
    for (auto _ : state) {
        uv_interface_address_t* list = nullptr;
        int count = 0;
        benchmark::DoNotOptimize(uv_interface_addresses(&list, &count));
        uv_free_interface_addresses(list, count);
    }
}
#endif

#ifdef WITH_POCO
void with_poco(benchmark::State& state, const std::string& commands) {
    const Inside inside(state, commands);
    for (auto _ : state) {
        benchmark::DoNotOptimize(Poco::Net::NetworkInterface::list(false, false));
    }
}
#endif

void add() {
    const std::pair<const char*, std::string> networks[] = {
        {"machine", ""},
        {"addresses:50", addresses(50)},
        {"addresses:100", addresses(100)},
        {"addresses:200", addresses(200)},
        {"addresses:400", addresses(400)},
        {"interfaces:50", interfaces(50)},
        {"interfaces:200", interfaces(200)},
    };
    for (const auto& [name, commands] : networks) {
        const auto add_one = [&, network = name, made = commands](const std::string& contender,
                                                                  auto run) {
            add_contender("enumeration", contender + "/" + network, run, made);
        };
        add_one("ours", fill);
        add_one("limit", snapshot);
#ifdef WITH_LIBUV
        add_one("libuv", with_libuv);
#endif
#ifdef WITH_POCO
        add_one("poco", with_poco);
#endif
    }
}
REGISTER_BENCHMARKS(add);

}  // namespace
