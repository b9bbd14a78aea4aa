#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "support/owners.h"
#include "support/scripted_platform.h"
#include "vlrcomn/agent_identity.h"

namespace {

using velora_com::qel::platform::script;
using velora_com::qel::support::LoadedLibrary;

bool is_loaded(const char* path) {
    return LoadedLibrary(dlopen(path, RTLD_LAZY | RTLD_NOLOAD)) != nullptr;
}

TEST(VersionStamp, FormatsWhatThePluginTells) {
    char text[64];
    EXPECT_EQ(orumcomn_GetFileResourceVersionStamp(PLUGIN_GOOD, text, sizeof text), 1);
    EXPECT_STREQ(text, "0001000200030004");
    EXPECT_EQ(orumcomn_GetFileResourceStringVersionStamp(PLUGIN_GOOD, text, sizeof text), 1);
    EXPECT_STREQ(text, "1.2.3.4");
    EXPECT_FALSE(is_loaded(PLUGIN_GOOD));

    const LoadedLibrary plugin(dlopen(PLUGIN_GOOD, RTLD_LAZY));
    std::fill_n(static_cast<uint16_t*>(dlsym(plugin.get(), "plugin_version")), 4, uint16_t{0xfffe});
    EXPECT_EQ(orumcomn_GetFileResourceVersionStamp(PLUGIN_GOOD, text, sizeof text), 1);
    EXPECT_STREQ(text, "fffefffefffefffe");
    EXPECT_EQ(orumcomn_GetFileResourceStringVersionStamp(PLUGIN_GOOD, text, 24), 1);
    EXPECT_STREQ(text, "65534.65534.65534.65534");
}

TEST(VersionStamp, FillsShortBuffersWithoutTerminator) {
    char text[20];
    for (const uint32_t size : {0u, 16u, 19u}) {
        std::memset(text, 'x', sizeof text);
        EXPECT_EQ(orumcomn_GetFileResourceVersionStamp(PLUGIN_GOOD, text, size), 1);
        std::string expected = std::string("0001000200030004") + std::string(4, '\0');
        expected = expected.substr(0, size) + std::string(sizeof text - size, 'x');
        EXPECT_EQ(std::string(text, sizeof text), expected) << size;
    }
}

TEST(VersionStamp, FailsWithACleanBuffer) {
    for (const char* path :
         {PLUGIN_FAILING, PLUGIN_SILENT, "/nonexistent.so", static_cast<const char*>(nullptr)}) {
        SCOPED_TRACE(path == nullptr ? "null" : path);
        char text[9] = "xxxxxxxx";
        EXPECT_EQ(orumcomn_GetFileResourceStringVersionStamp(path, text, 8), 0);
        EXPECT_EQ(std::string(text, sizeof text), std::string(9, '\0'));
        EXPECT_FALSE(path != nullptr && is_loaded(path));
    }
    EXPECT_EQ(orumcomn_GetFileResourceVersionStamp(PLUGIN_GOOD, nullptr, 8), 0);
}

TEST(SoftwareId, FollowsTheSize) {
    const std::string id = "KSVAGENT4800MACX";
    for (const uint32_t size : {16u, 17u, 20u}) {
        SCOPED_TRACE(size);
        std::string text(24, 'x');
        orumcomn_get_agent_softwareid(text.data(), size);
        std::string expected(24, 'x');
        if (size > 16) {
            expected = id + std::string(size - 17, '\0') + std::string(25 - size, 'x');
        }
        EXPECT_EQ(text, expected);

        std::wstring wide(24, L'x');
        orumcomn_get_agent_softwareid_W(wide.data(), size);
        EXPECT_EQ(wide, size > 16
                            ? L"KSVAGENT4800MACX" + std::wstring(1, L'\0') + std::wstring(7, L'x')
                            : std::wstring(24, L'x'));
    }
    orumcomn_get_agent_softwareid(nullptr, 20);
    orumcomn_get_agent_softwareid_W(nullptr, 20);
}

TEST(DiskSpace, WrapsAndExtendsTheSign) {
    const struct {
        uint64_t blocks;
        uint64_t block_size;
        uint64_t expected;
    } cases[] = {{10, 512, 5120000},
                 {1000, 4096, UINT64_C(0xFFFFFFFFF4240000)},  // 4096000000 has its top bit set
                 {0x100000000, 4096, 0},
                 {1048577, 4096, 4096000}};
    uint64_t space = 7;
    for (const auto& c : cases) {
        script().available_space = {c.blocks, c.block_size};
        EXPECT_EQ(orumcomn_get_disk_free_spaceA("/", &space), ORU_SUCCESS);
        EXPECT_EQ(space, c.expected);
    }
    EXPECT_EQ(orumcomn_get_disk_free_spaceA("/", nullptr), ORU_FAILURE);
    EXPECT_EQ(orumcomn_get_disk_free_spaceA(nullptr, &space), ORU_FAILURE);
    script() = {};
    EXPECT_EQ(orumcomn_get_disk_free_spaceA("/", &space), ORU_FAILURE);
    EXPECT_EQ(space, cases[3].expected);
}

}  // namespace
