// The seam: what each system has to be asked in a way of its own. Calls that all supported systems share, POSIX
// or not (getifaddrs, the list of interfaces by ioctl), stand where they are used; so do those that one system
// has and another replaces by a plain call, which cmake/probes.cmake finds out. The text of a shell command
// belongs to who needs its output, and run_command runs it.
//
// platform/linux and platform/macosx answer it, platform/posix holds answers that both share, and the
// tests link a scripted answerer instead. An answerer only asks and converts; deriving, rounding and
// wording belong to the collectors above. Every function may be called from any thread, throws nothing
// but std::bad_alloc, and answers "nothing" when the system does not know.
#pragma once

#include <sys/socket.h>
#include <sys/types.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct ifaddrs;

namespace velora_com::qel::platform {

// --- Processor -----------------------------------------------------------------------------------

// Number of processors that are online, whatever this process may use of them.
std::optional<int32_t> processor_count();

struct ProcessorFacts {
    // Of several processors, the fastest listed. On Linux it is what the kernel states at this moment,
    // which follows frequency scaling.
    std::optional<uint64_t> clock_hz;
    // As the Gestalt manager numbers it: 2 PowerPC, 10 Intel.
    std::optional<int32_t> architecture;
    // As the Gestalt manager numbers it, for example 268 for a G4 or the four characters "ixxx" read as
    // a big-endian number for an Intel processor.
    std::optional<int32_t> type;
};

// Asked of Gestalt on the Mac and of /proc/cpuinfo, read once, on Linux.
ProcessorFacts processor_facts();

// Model name of the machine, for example "PowerBook5,6"; at most 255 bytes. Asked of the kernel's
// "hw.model" on the Mac; on Linux of the firmware: the product name of DMI, else the device tree's model.
std::optional<std::string> hardware_model();

// --- Memory --------------------------------------------------------------------------------------

// Pages that hold nothing at all.
struct FreePages {
    uint64_t count;
    uint64_t page_size;  // in bytes
};

struct MemoryFacts {
    std::optional<uint64_t> installed;  // in bytes
    std::optional<FreePages> free;
};

// Either figure may be missing without the other.
MemoryFacts memory_facts();

// --- File systems --------------------------------------------------------------------------------

// Figures that do not fit are given in larger blocks, up to 1 MiB, and cut from 2 PiB on. All three are 0
// when the system does not know them.
struct MountedFileSystem {
    std::string mount_point;
    int32_t block_size;   // in bytes
    int32_t blocks;       // in units of block_size
    int32_t free_blocks;  // reserved blocks included
    bool local;           // the figures of a file system that is not local are 0
};

// The mounted file systems in the system's order; empty when they cannot be listed. On Linux no server
// that stays silent holds this call up: a network file system is known by its type in the mount table
// and is not asked, nor is one mounted below it or served by a user's program; they are not local, and
// neither is memory. What other mounts hide does not stand there, and a file system mounted in several
// places, as a whole or by parts, stands at the first of them only.
std::vector<MountedFileSystem> mounted_file_systems();

struct AvailableSpace {
    uint64_t blocks;  // free to an ordinary user
    uint64_t block_size;
};

// Space of the file system that holds `path`. Leaves errno set on failure.
std::optional<AvailableSpace> available_space(const char* path);

// Copies everything from the current position of `source` to its end to the current position of
// `destination`, by the kernel's own copy where there is one. Both positions are undefined afterwards.
// False with errno set when a read or write fails.
bool copy_contents(int source, int destination);

// --- Operating system ----------------------------------------------------------------------------

// Paths of the version file, a property list, and of the file that marks a server edition.
const char* system_version_file();
const char* server_version_file();

// The longest string that property_list_strings hands out, in bytes of UTF-8.
constexpr size_t max_property_string = 255;

// Reads `document` as an XML property list and looks `keys` up in its top-level dictionary. Nothing
// when the document is no property list or its top level is no dictionary; otherwise one answer for
// each key, empty when the key is missing, its value is no string, or the string is longer than
// max_property_string. Of equal keys the last counts. The Mac reads the other forms of property lists
// as well, the binary one above all. On Linux these too are no property lists: a
// document with declarations of its own, one over 256 MiB, one whose reading would take more than four
// times its size and 4 MiB (tens of thousands of levels), and any on a host without Expat.
std::optional<std::vector<std::optional<std::string>>> property_list_strings(
    std::string_view document, const std::vector<std::string_view>& keys);

// When the system started, in seconds since 1970-01-01 UTC.
std::optional<int64_t> boot_time();

// Runs `command` with the shell, waits for its end and returns at most `max_bytes` of its output; a command
// that writes more ends by SIGPIPE. Nothing when no process can be started; a shell that cannot be executed
// leaves the output empty. The library's own descriptors stay closed in the child (where the system cannot
// open them so, one that another thread opens at that moment may be left), which starts with the default
// handling of SIGPIPE. Cancelling the thread takes effect after the call.
std::optional<std::string> run_command(const char* command, size_t max_bytes);

// --- Network -------------------------------------------------------------------------------------

// The kernel's NIS domain name and the domain name of getdomainname. Nothing when the system has
// none to give; an answer may be empty.
std::optional<std::string> nis_domain();
std::optional<std::string> domain_name();

// Whether an entry of a getifaddrs list is a link-layer entry, and the address that it carries. A longer
// address is cut; a shorter one, also of no bytes, is filled up with zeros, on the Mac with what else the
// entry holds first.
using LinkLayerAddress = std::array<unsigned char, 6>;
std::optional<LinkLayerAddress> link_layer_address(const ifaddrs& entry);

// How many bytes may be read of a socket address; it may be shorter than its family's structure. One that
// leaves its family unset, as masks do, belongs to `family`.
socklen_t socket_address_size(const sockaddr& address, int family);

}  // namespace velora_com::qel::platform
