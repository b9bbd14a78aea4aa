#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "support/owners.h"
#include "support/scripted_platform.h"
#include "vlrcomn/agent_identity.h"

namespace {

using velora_com::qel::platform::script;
using velora_com::qel::support::LoadedLibrary;

TEST(VersionStamp, FormatsWhatThePluginTells) {
    const LoadedLibrary plugin(dlopen(PLUGIN_GOOD, RTLD_LAZY));
    const uint16_t told[] = {0xfffe, 2, 30, 65535};
    std::copy(std::begin(told), std::end(told),
              static_cast<uint16_t*>(dlsym(plugin.get(), "plugin_version")));
    for (const uint32_t size : {0u, 16u, 17u, 20u}) {  // cut, without a terminator
        std::string binary(20, 'x');
        std::string dotted = binary;
        EXPECT_EQ(orumcomn_GetFileResourceVersionStamp(PLUGIN_GOOD, binary.data(), size), 1);
        EXPECT_EQ(orumcomn_GetFileResourceStringVersionStamp(PLUGIN_GOOD, dotted.data(), size), 1);
        const std::string zeros(4, '\0'), untouched(20 - size, 'x');
        EXPECT_EQ(binary, ("fffe0002001effff" + zeros).substr(0, size) + untouched);
        EXPECT_EQ(dotted, ("65534.2.30.65535" + zeros).substr(0, size) + untouched);
    }
}

TEST(VersionStamp, FailsWithACleanBufferAndNothingLoaded) {
    for (const char* path : {PLUGIN_FAILING, PLUGIN_SILENT, "/nonexistent.so"}) {
        SCOPED_TRACE(path);
        std::string text(9, 'x');
        EXPECT_EQ(orumcomn_GetFileResourceStringVersionStamp(path, text.data(), 8), 0);
        EXPECT_EQ(text, std::string(8, '\0') + 'x');
        EXPECT_EQ(LoadedLibrary(dlopen(path, RTLD_LAZY | RTLD_NOLOAD)), nullptr);
    }
}

TEST(SoftwareId, FollowsTheSize) {
    const std::wstring id = L"KSVAGENT4800MACX";
    for (const uint32_t size : {16u, 17u, 20u}) {
        std::string text(24, 'x'), expected = text;
        std::wstring wide(24, L'x'), expected_wide = wide;
        orumcomn_get_agent_softwareid(text.data(), size);
        orumcomn_get_agent_softwareid_W(wide.data(), size);
        if (size > 16) {  // without a terminator in 17 characters, unlike the wide one
            expected.replace(0, size - 1,
                             std::string(id.begin(), id.end()).append(size - 17, '\0'));
            expected_wide.replace(0, 17, id + L'\0');
        }
        EXPECT_EQ(text, expected) << size;
        EXPECT_EQ(wide, expected_wide) << size;
    }
}

TEST(DiskSpace, WrapsAndExtendsTheSign) {
    const uint64_t cases[][3] = {
        // blocks, their size, the result
        {10, 512, 5120000},
        {1000, 4096, UINT64_C(0xFFFFFFFFF4240000)},  // 4096000000 has its top bit set
        {UINT64_C(0x100000000), 4096, 0},
        {1048577, 4096, 4096000}};
    uint64_t space = 0;
    for (const auto& [blocks, block_size, expected] : cases) {
        script().available_space = {blocks, block_size};
        EXPECT_EQ(orumcomn_get_disk_free_spaceA("/", &space), ORU_SUCCESS);
        EXPECT_EQ(space, expected);
    }
    script() = {};
    EXPECT_EQ(orumcomn_get_disk_free_spaceA("/", &space), ORU_FAILURE);
    EXPECT_EQ(space, 4096000U);
}

// The fuzz target holds the matcher against a model; here stand the cases of its contract.
TEST(PlatformMatch, DecidesOnNamesAndRanges) {
    constexpr uint32_t match = 0;
    constexpr uint32_t outside = 1;
    constexpr uint32_t unnamed = ORU_FAILURE;
    const std::string longest(259, 'M');
    const struct {
        std::string platform;
        std::string list;
        uint32_t expected;
    } cases[] = {
        {"MACX:10:4:11", "WIN|MAC", match},
        {"MAC:10:4:11", "WIN|mac", unnamed},
        {"MAC:10:4:11", "MAC:10:4:0-10:4:10", outside},
        {"M A C : 1 0 : 4", " MAC : 10 : 4 - 10 : 4 ", match},
        // Bounds carry over from entry to entry of the platform's name only.
        {"MAC:10:4:0", "MAC:11-12|MAC:-20", outside},
        // Packing: builds spill into the minor, everything is modulo 2^64 and unsigned; numbers saturate.
        {"MAC:1:0:65536", "MAC:1:1:0-1:1:0", match},
        {"MAC:65535:-1:65535", "MAC:0", match},
        {"MAC:0:0:99999999999999999999", "MAC:0:0:2147483647-0:0:2147483647", match},
        // Lengths, blanks not counted.
        {longest, longest + " ", match},
        {longest + "M", "M", unnamed},
    };
    for (const auto& [platform, list, expected] : cases) {
        EXPECT_EQ(orumcomn_IsPlatformMatch(platform.c_str(), list.c_str()), expected)
            << platform << " in " << list;
    }
    EXPECT_EQ(orumcomn_IsPlatformMatch(nullptr, "MAC"), unnamed);
}

}  // namespace
