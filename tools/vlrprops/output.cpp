#include "output.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace vlrprops {

namespace {

// Makes sure that 0 to 2 are open, so that no descriptor opened later takes the place of a standard one.
void fill_standard_descriptors() {
    int descriptor = 0;
    do {
        descriptor = open("/dev/null", O_RDWR);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    if (descriptor > STDERR_FILENO) {
        close(descriptor);
    }
}

}  // namespace

Output::Output() : descriptor_(fcntl(STDOUT_FILENO, F_DUPFD, STDERR_FILENO + 1)) {
    if (descriptor_ >= 0) {
        // A child that the library starts has no business with the report.
        fcntl(descriptor_, F_SETFD, FD_CLOEXEC);
    }
    fill_standard_descriptors();
    const int null_device = open("/dev/null", O_WRONLY);
    // Without a null device the diagnostics are better among the errors than in the report.
    apart_ = dup2(null_device >= 0 ? null_device : STDERR_FILENO, STDOUT_FILENO) >= 0;
    if (null_device > STDERR_FILENO) {
        close(null_device);
    }
}

size_t Output::width(size_t otherwise) const {
    if (!isatty(descriptor_)) {
        return otherwise;
    }
    winsize size = {};
    if (ioctl(descriptor_, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) {
        return 80;
    }
    return std::max<size_t>(size.ws_col, 40);
}

bool Output::finish(const std::string& text) {
    size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = write(descriptor_, text.data() + written, text.size() - written);
        if (count < 0 && errno != EINTR) {
            return false;
        }
        written += count > 0 ? static_cast<size_t>(count) : 0;
    }
    return close(descriptor_) == 0;
}

}  // namespace vlrprops
