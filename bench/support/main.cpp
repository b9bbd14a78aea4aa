// The main program of every benchmark.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <mutex>
#include <thread>

namespace {

#if defined(__OPTIMIZE__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
constexpr bool optimised = true;
#else
constexpr bool optimised = false;
#endif

}  // namespace

int main(int argc, char** argv) {
    if (!optimised) {
        std::fputs("*** This build is not optimised: its ratios say nothing.\n", stderr);
    }
    benchmark::AddCustomContext("optimised", optimised ? "yes" : "no");
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    // With one thread, the C library leaves out the locked instructions of its mutexes: keep a second.
    std::mutex parking;
    parking.lock();
    std::thread parked([&] { parking.lock(); });
    benchmark::RunSpecifiedBenchmarks();
    parking.unlock();
    parked.join();
}
