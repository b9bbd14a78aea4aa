// The POSIX calls by which the collectors name this host, answered by the test. They take the place of
// the C library's in every program that links scripted_host.cpp.
#pragma once

#include <functional>
#include <optional>
#include <string>

struct ScriptedHost {
    bool uname_fails = false;
    std::string machine = "Power Macintosh";
    std::string node = "alpha";
    std::optional<std::string> host_name = "alpha";
    // The official name of the host; nothing when the resolver does not know it.
    std::optional<std::string> official_name;
};

ScriptedHost& scripted_host();
