// Path flattening against its steps, taken one by one on a string. Input: the path, a line
// feed, the base.
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "files/flat_path.h"
#include "vlrcomn/path_resolution.h"

namespace {

std::optional<std::string> model(const std::string& input, const std::string& base) {
    std::string flat = input;
    if (!flat.empty() && flat.back() == '/') {
        flat.erase(flat.size() - 1);
    }
    if (flat.empty() || flat.front() != '/') {
        flat = base + "/" + flat;
    }
    flat += '/';
    for (size_t at; (at = flat.find("/./")) != std::string::npos;) {
        flat.erase(at + 1, 2);
    }
    for (size_t at; (at = flat.find("/../")) != std::string::npos;) {
        const std::string before = flat;
        const size_t slash = flat.rfind('/', at - 1);
        flat.erase(slash + 1, at - slash + 3);
        if (flat == before) {
            return std::nullopt;
        }
    }
    flat.erase(flat.size() - 1);
    return flat;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::string cwd = velora_com::qel::files::working_directory();
    std::string path(data, data + size);
    std::string base;
    if (const size_t line_end = path.find('\n'); line_end != std::string::npos) {
        base = path.substr(line_end + 1);
        path.resize(line_end);
    }
    const std::optional<std::string> flat_base = model(base, cwd);
    const std::optional<std::string> expected = flat_base ? model(path, *flat_base) : std::nullopt;
    std::string flat;
    const velora_com::qel::FileNameFlattener flattener(path, base);
    if (flattener.GetFlatPath(flat) != expected.has_value() || flat != expected.value_or("")) {
        std::abort();
    }
    return 0;
}
