// Version texts against the stream library's formatting. Input: four components of two bytes each, then
// the buffer's size.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iomanip>
#include <memory>
#include <sstream>

#include "agent/plugin_version_text.h"

using namespace velora_com::qel::agent;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 9) {
        return 0;
    }
    uint16_t parts[4];
    std::memcpy(parts, data, sizeof parts);
    const uint32_t buffer_size = data[8] % 40;

    for (const VersionForm form : {VersionForm::binary, VersionForm::dotted}) {
        std::ostringstream expected;
        for (const uint16_t part : parts) {
            if (form == VersionForm::binary) {
                expected << std::hex << std::setfill('0') << std::setw(4) << part;
            } else {
                expected << (expected.tellp() == 0 ? "" : ".") << part;
            }
        }
        // A buffer of exactly the size given, so that a byte past it is noticed.
        const std::unique_ptr<char[]> buffer(new char[buffer_size]);
        std::fill_n(buffer.get(), buffer_size, 'x');
        write_version({parts[0], parts[1], parts[2], parts[3]}, form, buffer.get(), buffer_size);
        std::string wanted = expected.str() + '\0';
        wanted.resize(std::max<size_t>(wanted.size(), buffer_size), 'x');
        wanted.resize(buffer_size);
        if (std::string(buffer.get(), buffer_size) != wanted) {
            std::abort();
        }
    }
    return 0;
}
