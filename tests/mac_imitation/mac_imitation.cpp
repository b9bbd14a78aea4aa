#include "mac_imitation/mac_imitation.h"

#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/CoreServices.h>
#include <sys/sysctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <sstream>

using namespace mac_imitation;

namespace {

// Records the question; false when it is to fail.
template <typename... Arguments>
bool answers(const char* function, const Arguments&... arguments) {
    std::ostringstream line;
    line << function;
    ((line << ' ' << arguments), ...);
    machine.calls.push_back(line.str());
    errno = EIO;
    return machine.failing.count(function) == 0;
}

// Of a fault that a test cannot look for afterwards.
void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

// As the kernel does: a value that does not fit is cut and the call fails.
int give(const std::string& value, void* buffer, size_t* size) {
    const size_t length = std::min(value.size(), *size);
    std::memcpy(buffer, value.data(), length);
    *size = length;
    return length == value.size() ? 0 : -1;
}

constexpr mach_port_t host_port = 42, task_port = 43;

template <typename Reference>
Reference make(bool answered, const Object& object) {
    machine.objects += answered ? 1 : 0;
    return answered ? reinterpret_cast<Reference>(new Object(object)) : nullptr;
}

const Object& object_at(CFTypeRef reference, Kind kind) {
    const auto* object = static_cast<const Object*>(reference);
    require(object->kind == kind);
    return *object;
}

}  // namespace

extern "C" {

int sysctl(int* name, u_int levels, void* old_value, size_t* old_size, void* new_value, size_t) {
    require(levels == 2 && new_value == nullptr);
    const std::string& value = machine.kernel_values[{name[0], name[1]}];
    return answers("sysctl", name[0], name[1], *old_size) ? give(value, old_value, old_size) : -1;
}

int sysctlbyname(const char* name, void* old_value, size_t* old_size, void* new_value, size_t) {
    require(new_value == nullptr);
    return answers("sysctlbyname", name, *old_size) ? give(machine.model, old_value, old_size) : -1;
}

int getdomainname(char* name, size_t size) noexcept {
    return answers("getdomainname", size) ? give(machine.domain, name, &size) : -1;
}

OSErr Gestalt(OSType selector, SInt32* response) {
    *response = machine.gestalt[selector];
    return answers("Gestalt") ? noErr : -5551;
}

mach_port_t mach_host_self() {
    ++machine.host_rights;
    return host_port;
}
mach_port_t mach_task_self() {
    return task_port;
}
kern_return_t mach_port_deallocate(mach_port_t task, mach_port_t port) {
    require(task == task_port && port == host_port && machine.host_rights-- > 0);
    return KERN_SUCCESS;
}
kern_return_t host_page_size(mach_port_t host, vm_size_t* size) {
    require(host == host_port && machine.host_rights > 0);
    *size = machine.page_size;
    return answers("host_page_size") ? KERN_SUCCESS : 5;
}
kern_return_t host_statistics(mach_port_t host, int flavour, host_info_t info,
                              mach_msg_type_number_t* words) {
    require(host == host_port && machine.host_rights > 0);
    std::memcpy(info, &machine.statistics, *words * sizeof(integer_t));
    return answers("host_statistics", flavour, *words) ? KERN_SUCCESS : 5;
}

int statfs(const char* path, struct statfs* answer) {
    *answer = machine.file_systems.at(0);
    return answers("statfs", path) ? 0 : -1;
}

int getfsstat(struct statfs* records, int bytes, int mode) {
    const auto room = static_cast<size_t>(bytes) / sizeof(struct statfs);
    require(static_cast<size_t>(bytes) % sizeof(struct statfs) == 0);
    if (!answers(records == nullptr ? "getfsstat count" : "getfsstat fill", room, mode)) {
        return -1;
    }
    if (records == nullptr) {
        return machine.file_systems_counted;
    }
    const size_t filled = std::min(room, machine.file_systems.size());
    std::copy_n(machine.file_systems.begin(), filled, records);
    return static_cast<int>(filled);
}

const CFAllocatorRef kCFAllocatorDefault = nullptr;

void CFRelease(CFTypeRef object) {
    --machine.objects;
    delete static_cast<const Object*>(object);
}
CFTypeID CFGetTypeID(CFTypeRef object) {
    return static_cast<CFTypeID>(static_cast<const Object*>(object)->kind);
}
CFTypeID CFDictionaryGetTypeID() {
    return static_cast<CFTypeID>(Kind::dictionary);
}
CFTypeID CFStringGetTypeID() {
    return static_cast<CFTypeID>(Kind::string);
}

CFDataRef CFDataCreate(CFAllocatorRef, const UInt8* bytes, CFIndex length) {
    const std::string document(reinterpret_cast<const char*>(bytes), static_cast<size_t>(length));
    return make<CFDataRef>(answers("CFDataCreate", document), {Kind::other, document, {}});
}

CFPropertyListRef CFPropertyListCreateFromXMLData(CFAllocatorRef, CFDataRef data,
                                                  CFOptionFlags mutability, CFStringRef* error) {
    require(object_at(data, Kind::other).values.empty() && error == nullptr);
    const bool answered = answers("CFPropertyListCreateFromXMLData", mutability);
    return make<CFPropertyListRef>(answered, machine.property_list);
}

Boolean CFDictionaryGetValueIfPresent(CFDictionaryRef dictionary, const void* key,
                                      const void** value) {
    const auto& values = object_at(dictionary, Kind::dictionary).values;
    const auto found = values.find(object_at(key, Kind::string).text);
    return found != values.end() && (*value = &found->second) != nullptr;
}

CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char* text, CFStringEncoding encoding) {
    require(encoding == kCFStringEncodingUTF8);
    return make<CFStringRef>(answers("CFStringCreateWithCString"), {Kind::string, text, {}});
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size,
                           CFStringEncoding encoding) {
    require(encoding == kCFStringEncodingUTF8);
    const std::string& text = object_at(string, Kind::string).text;
    return text.size() < static_cast<size_t>(size) && std::strcpy(buffer, text.c_str()) == buffer;
}

}  // extern "C"
