#include <benchmark/benchmark.h>

#include <mutex>
#include <thread>

// A second thread exists throughout: the C library takes cheaper locks where there is only one.
int main(int argc, char** argv) {
    std::mutex parking;
    parking.lock();
    std::thread parked([&] { parking.lock(); });
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    parking.unlock();
    parked.join();
}
