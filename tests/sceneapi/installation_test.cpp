#include "importers/sceneapi/dev/installation.h"

#include <gtest/gtest.h>

#include "tests/support/installation_entries.h"

namespace qor {
namespace {

constexpr char kUser[] = "HKEY_CURRENT_USER";

class InstallationTest : public testing::Test {
protected:
    InstallationTest() { std::ofstream(folder_.path() / "program") << "no program"; }

    TemporaryFolder folder_;
    const std::string program_ = folder_ / "program";
    const std::string resources_ = folder_.path().u8string();
};

// Each key, of the user or of the machine, has its own text in `keys` as its BinFolder.
TEST_F(InstallationTest, IsFoundByPathThenByNameThenByNumber) {
    const struct {
        std::vector<std::string> keys;
        const char* path;
        const char* name;
        int min, max;
        const char* wanted;
    } cases[] = {
        {{}, "", "", 5, 20, ""},
        {{"user 9", "user 11"}, "", "", 5, 10, "user 9"},
        {{"user 0"}, "", "", 0, 20, ""},
        {{"machine 9", "user 9"}, "", "", 5, 20, "user 9"},
        {{"machine 12", "user 11"}, "", "", 5, 20, "machine 12"},
        {{"user 9", "user 11"}, "C:\\Program Files\\Velmora 9\\", "", 5, 20, "user 9"},
        {{"user 9", "user 11"}, "C:\\Program Files\\Velmora 9", "", 5, 20, "user 9"},
        {{"user 9", "user 11"}, "/opt/Velmora 9/", "", 5, 20, "user 9"},
        {{"user 0", "user 11"}, "C:\\Program Files\\Velmora\\", "", 0, 20, "user 11"},
        {{"user 9", "user 11"}, "C:\\9\\", "", 5, 20, "user 11"},
        {{"user 9", "user 11"}, "C:\\Velmora 9\\", "", 10, 20, "user 11"},
        {{"user 9", "user 11"}, "C:\\Velmora 9\\", "Velmora 11", 5, 20, "user 9"},
        {{"user 7 b", "user 11"}, "", "Velmora 7 b", 5, 20, "user 7 b"},
        {{"user 7 b", "user 11"}, "", "Velmora 7 b", 8, 20, "user 11"},
        {{"user 9", "user 11"}, "", "Velmora9", 5, 20, "user 11"},
        {{"user 9", "user no program 11"}, "", "Velmora 11", 5, 20, "user 9"},
        {{"user 9", "user no resources 11"}, "C:\\Velmora 11", "", 5, 20, "user 9"},
    };
    for (const auto& c : cases) {
        std::vector<RegistryEntry> entries = {
            {kUser, "SOFTWARE\\Quoria", "VelmoraActivePath", registry_text(c.path)},
            {kUser, "SOFTWARE\\Quoria", "VelmoraVersion", registry_text(c.name)}};
        for (const std::string& key : c.keys) {
            const auto more = installation_entries(
                key.front() == 'u' ? kUser : "HKEY_LOCAL_MACHINE",
                "Velmora " + key.substr(key.find_first_of("0123456789")),
                key.find("no program") == key.npos ? program_ : folder_ / "gone", key,
                key.find("no resources") == key.npos ? resources_ : program_);
            entries.insert(entries.end(), more.begin(), more.end());
        }
        const RegistryEntries registry(entries);
        int version = -1;
        const std::string found = Installation::get().bin_folder(c.min, c.max, version);
        EXPECT_EQ(found, c.wanted) << c.path << c.name;
        const size_t digit = found.find_first_of("0123456789");
        EXPECT_EQ(version, digit == found.npos ? -1 : std::stoi(found.substr(digit)));
    }
}

TEST_F(InstallationTest, ExpandsEnvironmentVariablesInTexts) {
    const EnvironmentVariable variable("VSQ_PLACE", folder_.path().u8string());
    auto entries = installation_entries(kUser, "Velmora 11", "", "", "");
    entries[0].value = expandable_text("%VSQ_PLACE%/program");
    entries[1].value = expandable_text("%VSQ_NONE%/%VSQ_PLACE%%");
    entries[2].value = expandable_text(resources_);
    const RegistryEntries registry(entries);
    EXPECT_EQ(Installation::get().resource_folder(5, 20), resources_);
    int version = 0;
    EXPECT_EQ(Installation::get().bin_folder(5, 20, version),
              "%VSQ_NONE%/" + folder_.path().u8string() + "%");
}

// A text must fit its buffer in 16-bit characters, with the terminator.
TEST_F(InstallationTest, IgnoresTextsLongerThanTheirBuffers) {
    const struct {
        size_t length;
        bool is_valid, is_read;
    } cases[] = {{259, true, true}, {260, true, false}, {1023, true, false}, {1024, false, false}};
    for (const auto& c : cases) {
        const std::string folder = folder_ / "";
        const std::string program =
            folder + std::string(c.length - folder.size() - 7, '/') + "program";
        const RegistryEntries registry(
            installation_entries(kUser, "Velmora 11", program, "folder", resources_));
        EXPECT_EQ(Installation::get().resource_folder(5, 20), c.is_valid ? resources_ : "");
        EXPECT_EQ(Installation::get().bin_name(5, 20), c.is_read ? program : "") << c.length;
    }
}

TEST_F(InstallationTest, PortsAreNumbersOrTexts) {
    const std::string fits = registry_text("4300" + std::string(251, ' '));
    const std::string too_long = registry_text("4300" + std::string(252, ' '));
    const struct {
        std::string first, last;  // empty if there is no value
        const char* wanted;       // the status and both ports
    } cases[] = {
        {"dword:000010cc", "dword:000010d0", "0 4300 4304"},
        {"\"4300\"", "\"4304\"", "0 4300 4304"},
        {"dword:000010cc", "", "-1 4300 -7"},
        {"dword:000010cc", "\"4304\"", "-1 4300 -7"},
        {"", "dword:000010d0", "-2 -7 -7"},
        {fits, "\"4304\"", "0 4300 4304"},
        {too_long, "\"4304\"", "-2 -7 -7"},
        // Ports can't be numbers of two or eight bytes.
        {"hex(4):cc,10", "dword:000010d0", "-2 -7 -7"},
        {"dword:000010cc", "hex(4):d0,10,00,00,00,00,00,00", "-1 4300 -7"},
    };
    for (const auto& c : cases) {
        auto entries = installation_entries(kUser, "Velmora 11", program_, "", resources_);
        const std::string key = entries.front().key;
        for (const auto& [name, value] :
             {std::pair("LiveLinkPort", c.first), std::pair("LiveLinkMaxPort", c.last)}) {
            if (!value.empty()) {
                entries.push_back({kUser, key, name, value});
            }
        }
        const RegistryEntries registry(entries);
        const auto ports = [](int min_version) {
            int first = -7;
            int last = -7;
            const auto status = Installation::get().live_link_ports(min_version, 20, first, last);
            return std::to_string(static_cast<int>(status)) + " " + std::to_string(first) + " " +
                   std::to_string(last);
        };
        EXPECT_EQ(ports(5), c.wanted) << c.first << c.last;
        EXPECT_EQ(ports(12), "-3 -7 -7");
    }
}

}  // namespace
}  // namespace qor
