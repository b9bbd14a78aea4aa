#include "scripted_platform.h"

#include <net/if.h>

namespace velora_com::qel::platform {

Script& script() {
    static Script instance;
    return instance;
}

namespace {

template <typename Answer>
const Answer& answer(const char* question, const Answer& scripted) {
    script().asked.emplace_back(question);
    return scripted;
}

}  // namespace

#define ANSWER(question, parameters)                 \
    decltype(Script::question) question parameters { \
        return answer(#question, script().question); \
    }
ANSWER(available_space, (const char*))
ANSWER(processor_facts, ())
ANSWER(memory_facts, ())
ANSWER(processor_count, ())
ANSWER(hardware_model, ())
ANSWER(mounted_file_systems, ())
ANSWER(boot_time, ())
ANSWER(nis_domain, ())
ANSWER(domain_name, ())

bool copy_contents(int, int) {
    return false;
}

const char* system_version_file() {
    return script().system_version_file.c_str();
}
const char* server_version_file() {
    return script().server_version_file.c_str();
}

std::optional<std::vector<std::optional<std::string>>> property_list_strings(
    std::string_view, const std::vector<std::string_view>& keys) {
    const auto& dictionary = answer("property_list_strings", script().property_list);
    if (!dictionary) {
        return std::nullopt;
    }
    std::vector<std::optional<std::string>> strings;
    for (const std::string_view key : keys) {
        const auto found = dictionary->find(key);
        strings.push_back(found == dictionary->end() ? std::nullopt : std::optional(found->second));
    }
    return strings;
}

std::optional<std::string> run_command(const char* command, size_t max_bytes) {
    script().asked.emplace_back(std::string("run_command: ") + command);
    auto output = script().run_command ? script().run_command(command) : std::nullopt;
    if (output) {
        output->resize(std::min(output->size(), max_bytes));
    }
    return output;
}

std::optional<LinkLayerAddress> link_layer_address(const ifaddrs&) {
    return std::nullopt;
}
socklen_t socket_address_size(const sockaddr&, int) {
    return sizeof(sockaddr_storage);
}

}  // namespace velora_com::qel::platform
