#pragma once

#include <iconv.h>

// Owns an iconv descriptor, whose failure value is all-ones.
class Converter {
public:
    Converter(const char* to, const char* from) noexcept : descriptor_(iconv_open(to, from)) {}
    ~Converter() {
        if (*this) {
            iconv_close(descriptor_);
        }
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    explicit operator bool() const noexcept {
        return descriptor_ != reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr)
    }
    iconv_t get() const noexcept { return descriptor_; }

private:
    iconv_t descriptor_;
};
