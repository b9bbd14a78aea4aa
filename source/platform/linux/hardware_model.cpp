#include <algorithm>

#include "platform/linux/text_file.h"
#include "platform/platform.h"

namespace velora_com::qel::platform {

std::optional<std::string> hardware_model() {
    // The firmware's product name: DMI on PCs; the device tree on PowerPC and ARM, ended by a null.
    for (const char* path : {"/sys/class/dmi/id/product_name", "/proc/device-tree/model"}) {
        auto name = read_text_file(path);
        if (!name) {
            continue;
        }
        name->resize(std::min({name->size(), name->find('\0'), size_t{255}}));
        name->erase(name->find_last_not_of(" \n") + 1);
        if (!name->empty()) {
            return name;
        }
    }
    return std::nullopt;
}

}  // namespace velora_com::qel::platform
