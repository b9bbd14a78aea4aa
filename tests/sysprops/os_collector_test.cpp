// The operating-system collector: its version file and its word size.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>

#include "support/scripted_platform.h"
#include "sysprops/scripted_host.h"
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {
namespace {

using platform::script;

// A machine with a version file of its own. What the file says is scripted; that it is there is not.
class OSCollector : public ::testing::Test {
protected:
    void SetUp() override {
        script() = {};
        scripted_host() = {};
        char name[] = "/tmp/version_file_XXXXXX";
        close(mkstemp(name));
        path = name;
        write_file("<plist/>");
        script().system_version_file = path;
        script().property_list = {{{"ProductVersion", "10.4.11"}}};
    }
    void TearDown() override { std::remove(path.c_str()); }

    void write_file(const std::string& bytes) const {
        std::ofstream(path, std::ios::binary) << bytes;
    }

    // Collects into a fresh record.
    bool collect() {
        info = OSInformation();
        return ISysProps().GetOSInformation(info);
    }

    void expect_identity_alone() {
        EXPECT_FALSE(collect());
        EXPECT_EQ(info.wstrPlatformID, L"MAC");
        EXPECT_EQ(info.wstrOSType, L"Mac OS X");
        EXPECT_EQ(info.wstrOSOEMId, L"Apple Macintosh");
        for (const std::wstring* field :
             {&info.wstrOSVersion, &info.wstrOSCsdVersion, &info.wstrOSBuildNum,
              &info.wstrOSPlatform, &info.wstrOSBitMode}) {
            EXPECT_EQ(*field, L"N/A");
        }
    }

    std::string path;
    OSInformation info;
};

TEST_F(OSCollector, SplitsTheVersion) {
    const struct {
        const char* version;
        std::optional<std::string> build;
        const wchar_t *version_text, *csd, *build_text;
    } cases[] = {
        {"10.4.11", "8S165", L"10.4.11", L"11", L"8S165"},
        {"10.5", "9A581", L"10.5", L"N/A", L"9A581"},
        {"10.4.11", {}, L"10.4.11", L"11", L"10.4.11"},
        {"10.4.11.7.8", {}, L"10.4.11", L"11", L"10.4.11.7.8"},
        {"10", "x", L"10.", L"N/A", L"x"},
        {"", "x", L".", L"N/A", L"x"},
        {".10..5.", "", L"10.5", L"N/A", L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.version);
        script().property_list = {{{"ProductVersion", c.version}}};
        if (c.build) {
            script().property_list->emplace("ProductBuildVersion", *c.build);
        }
        EXPECT_TRUE(collect());
        EXPECT_EQ(info.wstrOSVersion, c.version_text);
        EXPECT_EQ(info.wstrOSCsdVersion, c.csd);
        EXPECT_EQ(info.wstrOSBuildNum, c.build_text);
        EXPECT_EQ(info.wstrOSPlatform, L"Workstation");
        EXPECT_EQ(info.wstrPlatformID, L"MAC");
    }
}

TEST_F(OSCollector, TellsAServerByItsFile) {
    script().server_version_file = path;
    EXPECT_TRUE(collect());
    EXPECT_EQ(info.wstrOSPlatform, L"Server");
}

TEST_F(OSCollector, SetsOnlyTheIdentityWithoutAVersion) {
    {
        SCOPED_TRACE("no property list");
        script().property_list.reset();
        expect_identity_alone();
    }
    {
        SCOPED_TRACE("no version in it");
        script().property_list = {{{"ProductBuildVersion", "8S165"}}};
        expect_identity_alone();
    }
    script().property_list = {{{"ProductVersion", "10.4.11"}}};
    script().asked.clear();
    {
        SCOPED_TRACE("empty file");
        write_file("");
        expect_identity_alone();
    }
    {
        SCOPED_TRACE("first byte zero");
        write_file(std::string("\0<plist/>", 9));
        expect_identity_alone();
    }
    {
        SCOPED_TRACE("far too large");
        ASSERT_EQ(truncate(path.c_str(), (off_t{64} << 20) + 1), 0);
        expect_identity_alone();
    }
    {
        SCOPED_TRACE("no file");
        script().system_version_file = path + ".none";
        expect_identity_alone();
    }
    {
        SCOPED_TRACE("a folder");
        script().system_version_file = "/tmp";
        expect_identity_alone();
    }
    EXPECT_TRUE(script().asked.empty()) << "nothing was parsed";
}

TEST_F(OSCollector, DoesNotWaitForAPipe) {
    script().system_version_file = path + ".pipe";
    ASSERT_EQ(mkfifo(script().system_version_file.c_str(), 0600), 0);
    expect_identity_alone();
    std::remove(script().system_version_file.c_str());
}

TEST_F(OSCollector, WordSize) {
    const struct {
        const char* machine;
        std::optional<std::string> output;
        const wchar_t* expected;
        bool asks_shell;
    } cases[] = {
        {"x86_64", {}, L"1", false},
        {"ppc_64", {}, L"1", false},
        {"i386", {}, L"0", false},
        {"Power Macintosh", "1\n", L"1", true},
        {"Power Macintosh", "0\n", L"0", true},
        {"Power Macintosh", "", L"0", true},
        {"Power Macintosh", "   1", L"1", true},
        {"Power Macintosh", "    1", L"0", true},  // four bytes are read
        {"Power Macintosh", {}, L"-1", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.machine + (" " + c.output.value_or("nothing")));
        scripted_host().machine = c.machine;
        script().run_command = [&](const std::string&) { return c.output; };
        script().asked.clear();
        EXPECT_TRUE(collect());
        EXPECT_EQ(info.wstrOSBitMode, c.expected);
        const std::string command = "run_command: sysctl hw | grep 64bit | awk '{ print $2 }'";
        EXPECT_EQ(script().asked.back() == command, c.asks_shell);
    }
    scripted_host().uname_fails = true;
    EXPECT_TRUE(collect());
    EXPECT_EQ(info.wstrOSBitMode, L"-1") << "no machine name, and no shell";
}

}  // namespace
}  // namespace velora_com::qel::sysprops
