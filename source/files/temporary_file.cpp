#include <fcntl.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "support/boundary.h"
#include "support/config.h"
#include "support/open_file.h"
#include "vlrcomn/file.h"

namespace support = velora_com::qel::support;

namespace {

support::FileDescriptor make_temporary_file(char* name) {
#if defined(VLRCOMN_HAVE_MKOSTEMP) && defined(VLRCOMN_HAVE_O_CLOEXEC)
    return support::FileDescriptor(::mkostemp(name, O_CLOEXEC));
#else
    support::FileDescriptor file(::mkstemp(name));
    support::close_on_exec(file.get());
    return file;
#endif
}

}  // namespace

uint32_t oruGetTempFileName(const char* directory, const char* prefix, uint32_t unique, char* out) {
    if (directory == nullptr || out == nullptr) {
        return 0;
    }
    return support::or_failure(uint32_t{0}, [&] {
        std::string name = directory;
        name += '/';
        name += prefix != nullptr ? prefix : "";
        name += "XXXXXX";
        const support::CancellationOff cancellation_off;
        if (!make_temporary_file(name.data())) {
            return uint32_t{0};
        }
        std::memcpy(out, name.c_str(), name.size() + 1);
        return unique != 0 ? unique : uint32_t{1};
    });
}
