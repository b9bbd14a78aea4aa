// The machine as a test describes it: script() holds the answers of the scripted platform, each "nothing" at
// first. A fixture resets it with script() = {}.
#pragma once

#include <functional>
#include <map>

#include "platform/platform.h"

namespace velora_com::qel::platform {

struct Script {
    std::optional<int32_t> processor_count;
    ProcessorFacts processor_facts;
    std::optional<std::string> hardware_model;
    MemoryFacts memory_facts;
    std::vector<MountedFileSystem> mounted_file_systems;
    std::optional<AvailableSpace> available_space;
    std::string system_version_file = "/nonexistent";
    std::string server_version_file = "/nonexistent";
    // Strings of the top-level dictionary; nothing stands for a document that is no property list.
    std::optional<std::map<std::string, std::string, std::less<>>> property_list;
    std::optional<int64_t> boot_time;
    // Answers a shell command; the answer is cut to the bytes asked for.
    std::function<std::optional<std::string>(const std::string&)> run_command;
    std::optional<std::string> nis_domain;
    std::optional<std::string> domain_name;
    // Names of the questions asked, in order.
    std::vector<std::string> asked;
};

Script& script();

}  // namespace velora_com::qel::platform
