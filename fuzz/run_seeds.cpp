// Runs a fuzz target once on no input and on each file that is named, without libFuzzer: what a seed once
// showed is asked again under every compiler and on every machine that runs the tests.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argument_count, char** arguments) {
    LLVMFuzzerTestOneInput(nullptr, 0);
    for (int i = 1; i < argument_count; ++i) {
        std::fprintf(stderr, "%s\n", arguments[i]);  // the last one named is that of the fault
        std::ifstream file(arguments[i], std::ios::binary);
        if (!file) {
            std::fprintf(stderr, "cannot be read\n");
            return 1;
        }
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    }
    return 0;
}
