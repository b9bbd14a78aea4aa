#include <CoreFoundation/CoreFoundation.h>

#include <memory>
#include <type_traits>

#include "platform/platform.h"

namespace velora_com::qel::platform {

namespace {

struct ObjectReleaser {
    void operator()(CFTypeRef object) const noexcept { CFRelease(object); }
};

// Owns a CoreFoundation object that was created or copied.
template <typename Reference>
using Owned = std::unique_ptr<std::remove_pointer_t<Reference>, ObjectReleaser>;

std::optional<std::string> find_string(CFDictionaryRef dictionary, std::string_view key) {
    const Owned<CFStringRef> name(CFStringCreateWithCString(
        kCFAllocatorDefault, std::string(key).c_str(), kCFStringEncodingUTF8));
    const void* value = nullptr;
    if (!name || !CFDictionaryGetValueIfPresent(dictionary, name.get(), &value) ||
        value == nullptr || CFGetTypeID(value) != CFStringGetTypeID()) {
        return std::nullopt;
    }
    char text[max_property_string + 1];
    if (!CFStringGetCString(static_cast<CFStringRef>(value), text, sizeof text,
                            kCFStringEncodingUTF8)) {
        return std::nullopt;
    }
    return std::string(text);
}

}  // namespace

std::optional<std::vector<std::optional<std::string>>> property_list_strings(
    std::string_view document, const std::vector<std::string_view>& keys) {
    const Owned<CFDataRef> data(CFDataCreate(kCFAllocatorDefault,
                                             reinterpret_cast<const UInt8*>(document.data()),
                                             static_cast<CFIndex>(document.size())));
    if (!data) {
        return std::nullopt;
    }
    const Owned<CFPropertyListRef> list(CFPropertyListCreateFromXMLData(
        kCFAllocatorDefault, data.get(), kCFPropertyListImmutable, nullptr));
    if (!list || CFGetTypeID(list.get()) != CFDictionaryGetTypeID()) {
        return std::nullopt;
    }
    std::vector<std::optional<std::string>> strings;
    strings.reserve(keys.size());
    for (const std::string_view key : keys) {
        strings.push_back(find_string(static_cast<CFDictionaryRef>(list.get()), key));
    }
    return strings;
}

}  // namespace velora_com::qel::platform
