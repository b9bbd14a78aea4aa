#include <dlfcn.h>

#include "support/scripted_platform.h"
#include "support/test.h"
#include "vlrcomn/agent_identity.h"
#include "vlrcomn/policy_keys.h"

using velora_com::qel::platform::script;

TEST(VersionStamp, FormatsWhatThePluginTells) {
    std::string binary(20, 'x'), dotted = binary;  // fuzz/agent goes through the sizes
    EXPECT_EQ(orumcomn_GetFileResourceVersionStamp(PLUGIN_GOOD, binary.data(), 16), 1);
    EXPECT_EQ(orumcomn_GetFileResourceStringVersionStamp(PLUGIN_GOOD, dotted.data(), 17), 1);
    EXPECT_EQ(binary + dotted, std::string("fffe0002001effffxxxx65534.2.30.65535\0xxx", 40));
}

TEST(VersionStamp, FailsWithACleanBufferAndNothingLoaded) {
    setenv("PLUGIN_FAILS", "", 1);
    for (const char* path : {PLUGIN_GOOD, PLUGIN_SILENT, "/nonexistent.so"}) {
        std::string text(9, 'x');
        EXPECT_EQ(orumcomn_GetFileResourceStringVersionStamp(path, text.data(), 8), 0) << path;
        EXPECT_EQ(text, std::string(8, '\0') + 'x') << path;
        EXPECT_EQ(dlopen(path, RTLD_LAZY | RTLD_NOLOAD), nullptr) << path;
    }
    char text = 'x';
    EXPECT_TRUE(orumcomn_GetFileResourceVersionStamp(nullptr, &text, 1) == 0 && text == '\0');
    EXPECT_EQ(orumcomn_GetFileResourceVersionStamp(PLUGIN_GOOD, nullptr, 1), 0);
}

TEST(SoftwareId, FollowsTheSize) {
    for (const uint32_t size : {16u, 17u, 20u}) {
        std::string text(24, 'x');
        std::wstring wide(18, L'x');
        orumcomn_get_agent_softwareid(text.data(), size);
        orumcomn_get_agent_softwareid_W(wide.data(), size);
        // Without a terminator in 17 characters, unlike the wide one.
        const std::string id = size > 16 ? "KSVAGENT4800MACX" + std::string(size - 17, '\0') : "";
        EXPECT_EQ(text, id + std::string(24 - id.size(), 'x')) << size;
        EXPECT_EQ(wide,
                  std::wstring(size > 16 ? L"KSVAGENT4800MACX\0x" : L"xxxxxxxxxxxxxxxxxx", 18));
    }
}

TEST(DiskSpace, WrapsAndExtendsTheSign) {
    const uint64_t cases[][3] = {{1000, 4096, UINT64_C(0xFFFFFFFFF4240000)},
                                 {UINT64_C(0x100000001), 4096, 4096000}};
    uint64_t space = 0;
    for (const auto& [blocks, block_size, expected] : cases) {
        script().available_space = {blocks, block_size};
        EXPECT_TRUE(orumcomn_get_disk_free_spaceA("/", &space) == 0 && space == expected) << blocks;
    }
    EXPECT_EQ(orumcomn_get_disk_free_spaceA(nullptr, &space), ORU_FAILURE);
    EXPECT_EQ(orumcomn_get_disk_free_spaceA("/", nullptr), ORU_FAILURE);
    script() = {};
    EXPECT_TRUE(orumcomn_get_disk_free_spaceA("/", &space) == ORU_FAILURE && space == 4096000);
}

// Read before main, by an initialiser that may run before those of the library's own files.
static const std::wstring early = velora_com::qel::section_general;

TEST(PolicyKeys, AreCompleteForStaticInitialisers) {
    EXPECT_EQ(early, L"General");
}
