#include "mac_imitation/mac_imitation.h"

#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/CoreServices.h>
#include <sys/sysctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <sstream>

namespace mac_imitation {

Machine& machine() {
    static Machine instance;
    return instance;
}

namespace {

template <typename... Words>
void record(const Words&... words) {
    std::ostringstream line;
    const char* gap = "";
    ((line << std::exchange(gap, " ") << words), ...);
    machine().calls.push_back(line.str());
}

bool fails(const char* function) {
    errno = EIO;
    return machine().failing.count(function) != 0;
}

// A fault of the library that a test cannot look for afterwards.
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
    errno = ENOMEM;
    return length == value.size() ? 0 : -1;
}

constexpr mach_port_t host_port = 42;
constexpr mach_port_t task_port = 43;

enum class Kind : CFTypeID { data = 1, string, dictionary, number };

struct Object {
    Kind kind;
    std::string text;
    std::map<std::string, CFTypeRef> values;
};

std::map<CFTypeRef, std::unique_ptr<Object>>& objects() {
    static std::map<CFTypeRef, std::unique_ptr<Object>> all;
    return all;
}

template <typename Reference = CFTypeRef>
Reference make(Kind kind, std::string text = {}) {
    auto object = std::make_unique<Object>(Object{kind, std::move(text), {}});
    const CFTypeRef reference = object.get();
    objects().emplace(reference, std::move(object));
    machine().objects = objects().size();
    return static_cast<Reference>(reference);
}

Object& at(CFTypeRef reference) {
    const auto found = objects().find(reference);
    require(found != objects().end());
    return *found->second;
}

}  // namespace

}  // namespace mac_imitation

using namespace mac_imitation;

extern "C" {

int sysctl(int* name, u_int levels, void* old_value, size_t* old_size, void* new_value,
           size_t new_size) {
    require(levels == 2 && new_value == nullptr && new_size == 0);
    record("sysctl", name[0], name[1], *old_size);
    const auto found = machine().kernel_values.find({name[0], name[1]});
    if (fails("sysctl") || found == machine().kernel_values.end()) {
        return -1;
    }
    return give(found->second, old_value, old_size);
}

int sysctlbyname(const char* name, void* old_value, size_t* old_size, void* new_value,
                 size_t new_size) {
    require(new_value == nullptr && new_size == 0);
    record("sysctlbyname", name, *old_size);
    return fails("sysctlbyname") ? -1 : give(machine().model, old_value, old_size);
}

int getdomainname(char* name, size_t size) noexcept {
    record("getdomainname", size);
    return fails("getdomainname") ? -1 : give(machine().domain, name, &size);
}

OSErr Gestalt(OSType selector, SInt32* response) {
    std::string name;
    for (const int shift : {24, 16, 8, 0}) {
        name.push_back(static_cast<char>(selector >> shift & 0xFF));
    }
    record("Gestalt", name);
    const auto found = machine().gestalt.find(name);
    if (fails("Gestalt") || found == machine().gestalt.end()) {
        return -5551;
    }
    *response = found->second;
    return noErr;
}

mach_port_t mach_host_self() {
    ++machine().host_rights;
    return host_port;
}
mach_port_t mach_task_self() {
    return task_port;
}
kern_return_t mach_port_deallocate(mach_port_t task, mach_port_t port) {
    require(task == task_port && port == host_port && machine().host_rights > 0);
    --machine().host_rights;
    return KERN_SUCCESS;
}
kern_return_t host_page_size(mach_port_t host, vm_size_t* size) {
    require(host == host_port && machine().host_rights > 0);
    *size = machine().page_size;
    return fails("host_page_size") ? 5 : KERN_SUCCESS;
}
kern_return_t host_statistics(mach_port_t host, int flavour, host_info_t info,
                              mach_msg_type_number_t* words) {
    require(host == host_port && machine().host_rights > 0);
    record("host_statistics", flavour, *words);
    std::memcpy(info, &machine().statistics, *words * sizeof(integer_t));
    return fails("host_statistics") ? 5 : KERN_SUCCESS;
}

int statfs(const char* path, struct statfs* answer) {
    record("statfs", path);
    if (fails("statfs") || machine().file_systems.empty()) {
        return -1;
    }
    *answer = machine().file_systems.front();
    return 0;
}

int getfsstat(struct statfs* records, int bytes, int mode) {
    const auto room = static_cast<size_t>(bytes) / sizeof(struct statfs);
    require(static_cast<size_t>(bytes) % sizeof(struct statfs) == 0);
    record("getfsstat", records == nullptr ? "count" : "fill", room, mode);
    const std::vector<struct statfs>& all = machine().file_systems;
    if (records == nullptr) {
        const int counted = machine().file_systems_counted;
        return fails("getfsstat count") ? -1
               : counted >= 0           ? counted
                                        : static_cast<int>(all.size());
    }
    const size_t filled = std::min(room, all.size());
    std::copy_n(all.begin(), filled, records);
    return fails("getfsstat fill") ? -1 : static_cast<int>(filled);
}

const CFAllocatorRef kCFAllocatorDefault = nullptr;

void CFRelease(CFTypeRef object) {
    for (const auto& [key, value] : at(object).values) {
        CFRelease(value);
    }
    objects().erase(object);
    machine().objects = objects().size();
}
CFTypeID CFGetTypeID(CFTypeRef object) {
    return static_cast<CFTypeID>(at(object).kind);
}
CFTypeID CFDictionaryGetTypeID() {
    return static_cast<CFTypeID>(Kind::dictionary);
}
CFTypeID CFStringGetTypeID() {
    return static_cast<CFTypeID>(Kind::string);
}

CFDataRef CFDataCreate(CFAllocatorRef allocator, const UInt8* bytes, CFIndex length) {
    require(allocator == kCFAllocatorDefault);
    machine().document.assign(reinterpret_cast<const char*>(bytes), static_cast<size_t>(length));
    return fails("CFDataCreate") ? nullptr : make<CFDataRef>(Kind::data);
}

CFPropertyListRef CFPropertyListCreateFromXMLData(CFAllocatorRef allocator, CFDataRef data,
                                                  CFOptionFlags mutability, CFStringRef* error) {
    require(allocator == kCFAllocatorDefault && at(data).kind == Kind::data && error == nullptr);
    record("CFPropertyListCreateFromXMLData", mutability);
    if (machine().other_top_level) {
        return make(Kind::string, "top");
    }
    if (!machine().dictionary) {
        return nullptr;
    }
    const CFTypeRef dictionary = make(Kind::dictionary);
    for (const auto& [key, value] : *machine().dictionary) {
        at(dictionary).values[key] = value ? make(Kind::string, *value) : make(Kind::number);
    }
    return dictionary;
}

Boolean CFDictionaryGetValueIfPresent(CFDictionaryRef dictionary, const void* key,
                                      const void** value) {
    require(at(dictionary).kind == Kind::dictionary && at(key).kind == Kind::string);
    const auto& values = at(dictionary).values;
    const auto found = values.find(at(key).text);
    if (found == values.end()) {
        return 0;
    }
    *value = found->second;
    return 1;
}

CFStringRef CFStringCreateWithCString(CFAllocatorRef allocator, const char* text,
                                      CFStringEncoding encoding) {
    require(allocator == kCFAllocatorDefault && encoding == kCFStringEncodingUTF8);
    return fails("CFStringCreateWithCString") ? nullptr : make<CFStringRef>(Kind::string, text);
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size,
                           CFStringEncoding encoding) {
    require(at(string).kind == Kind::string && encoding == kCFStringEncodingUTF8);
    record("CFStringGetCString", size);
    const std::string& text = at(string).text;
    if (text.size() + 1 > static_cast<size_t>(size)) {
        return 0;
    }
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return 1;
}

}  // extern "C"
