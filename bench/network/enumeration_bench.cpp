// Filling the table of interfaces against the system call sequence that no enumeration can do without.
//
// The networks are made here: as many interfaces as the name says, each with one IPv4 address, or one
// interface with 400 addresses, half of them IPv6. "machine" is the network of whoever runs this.
#include <benchmark/benchmark.h>
#include <ifaddrs.h>

#include <map>
#include <memory>
#include <string>

#include "network/network_namespace.h"
#include "vlrcomn/net_interface.h"

namespace {

using network_test::NetworkNamespace;

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
            state.SkipWithError(network_->why_not().substr(0, 60).c_str());
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

[[maybe_unused]] const int registered = [] {
    const std::map<std::string, std::string> workloads = {
        {"machine", ""},
        {"001_interface", interfaces(1)},
        {"050_interfaces", interfaces(50)},
        {"200_interfaces", interfaces(200)},
        {"400_addresses", addresses(400)},
    };
    for (const auto& [name, commands] : workloads) {
        const std::string prefix = "BM_enumeration";
        benchmark::RegisterBenchmark((prefix + "/ours/" + name).c_str(), fill, commands);
        benchmark::RegisterBenchmark((prefix + "/limit/" + name).c_str(), snapshot, commands);
    }
    return 0;
}();

}  // namespace
