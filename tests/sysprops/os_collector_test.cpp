// The operating-system collector reads its version file. What the file says is scripted; that it is there
// is not.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/scripted_platform.h"
#include "support/temporary_folder.h"
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {
namespace {

using platform::script;

// Version, third number, build and edition, or what only the identity leaves.
std::wstring collected() {
    OSInformation info;
    const bool found = ISysProps().GetOSInformation(info);
    EXPECT_EQ(info.wstrPlatformID + info.wstrOSType + info.wstrOSOEMId,
              L"MACMac OS XApple Macintosh");
    EXPECT_EQ(info.wstrOSBitMode == L"N/A", !found);
    return info.wstrOSVersion + L' ' + info.wstrOSCsdVersion + L' ' + info.wstrOSBuildNum + L' ' +
           info.wstrOSPlatform;
}

using Strings = std::map<std::string, std::string, std::less<>>;

TEST(OSCollector, SplitsTheVersion) {
    const TemporaryFolder folder;
    script() = {};
    script().system_version_file = folder.write("version", "<plist/>");
    const std::pair<std::optional<Strings>, const wchar_t*> cases[] = {
        {{{{"ProductVersion", "10.5"}, {"ProductBuildVersion", "9A5"}}},
         L"10.5 N/A 9A5 Workstation"},
        {{{{"ProductVersion", "10.4.11.7"}}}, L"10.4.11 11 10.4.11.7 Workstation"},
        {{{{"ProductVersion", "10"}}}, L"10. N/A 10 Workstation"},
        {{{{"ProductVersion", ""}}}, L". N/A  Workstation"},
        {{{{"ProductVersion", ".10..5."}}}, L"10.5 N/A .10..5. Workstation"},
        {{{{"ProductBuildVersion", "8S165"}}}, L"N/A N/A N/A N/A"},
        {{}, L"N/A N/A N/A N/A"},
    };
    for (const auto& [strings, expected] : cases) {
        script().property_list = strings;
        EXPECT_EQ(collected(), expected);
    }
    script().property_list = Strings{{"ProductVersion", "10.5"}};
    script().server_version_file = script().system_version_file;
    EXPECT_EQ(collected(), L"10.5 N/A 10.5 Server");
}

TEST(OSCollector, ReadsNoOtherThanAProperFile) {
    const TemporaryFolder folder;
    ASSERT_EQ(truncate(folder.write("large", "<").c_str(), (off_t{64} << 20) + 1), 0);
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);  // which would block
    for (const std::string& path :
         {folder.write("empty"), folder.write("zero", std::string("\0<plist/>", 9)),
          folder / "large", folder / "pipe", folder / "none"}) {
        script() = {};
        script().system_version_file = path;
        script().property_list = Strings{{"ProductVersion", "10.5"}};
        EXPECT_EQ(collected(), L"N/A N/A N/A N/A") << path;
        EXPECT_TRUE(script().asked.empty()) << "parsed " << path;
    }
}

}  // namespace
}  // namespace velora_com::qel::sysprops
