#include <benchmark/benchmark.h>

#include <future>
#include <thread>

#include "vlrcomn/se_lock.h"

int main(int argc, char** argv) {
    // With a second thread about, the C library does not leave out the locked instructions of its mutexes.
    std::promise<void> end;
    std::thread parked([&] { end.get_future().wait(); });
    orSO_ProcessAttach();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    orSO_ProcessDetach();
    end.set_value();
    parked.join();
}
