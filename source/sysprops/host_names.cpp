// The machine's names.
#include <netdb.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <cstring>
#include <optional>

#include "platform/platform.h"
#include "support/boundary.h"
#include "support/owners.h"
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {

namespace {

// The resolver's answer is one record for the whole process: held until it has been copied.
support::Mutex resolver_mutex;

const hostent* ask_resolver(const char* host) VLRCOMN_REQUIRES(resolver_mutex) {
    return gethostbyname(host);  // NOLINT(concurrency-mt-unsafe): see resolver_mutex
}

// The official name under which the resolver knows `host`.
std::optional<std::string> official_name(const char* host) {
    const support::CancellationOff uncancelled;
    const support::MutexGuard guard(resolver_mutex);
    const hostent* const entry = ask_resolver(host);
    return entry == nullptr ? std::nullopt : std::optional<std::string>(entry->h_name);
}

}  // namespace

bool getComputerName(std::string& name) {
    return support::or_failure(false, [&] {
        utsname host;
        if (uname(&host) != 0) {
            return false;
        }
        name.assign(host.nodename, std::strcspn(host.nodename, "."));
        return true;
    });
}

std::wstring getDomainName() {
    return support::or_failure(unknown_domain, [] {
        const std::optional<std::string> domain = platform::nis_domain();
        return domain && !domain->empty() ? sysprops_ansi_to_wide(*domain) : unknown_domain;
    });
}

std::wstring getFqdnAddress() {
    return support::or_failure(DefaultProp_Val, [] {
        char host[2048] = "";
        if (gethostname(host, sizeof host - 1) != 0) {
            return DefaultProp_Val;
        }
        std::optional<std::string> name = official_name(host);
        if (!name) {
            name = host;
            if (const std::optional<std::string> domain = platform::domain_name()) {
                *name += "." + *domain;
            }
        }
        return sysprops_ansi_to_wide(*name);
    });
}

}  // namespace velora_com::qel::sysprops
