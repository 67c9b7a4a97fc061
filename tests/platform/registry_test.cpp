#include "platform/registry.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "tests/support/registry_entries.h"

namespace platform {
namespace {

constexpr char kMachine[] = "HKEY_LOCAL_MACHINE";
constexpr char kUser[] = "HKEY_CURRENT_USER";
constexpr char kKey[] = "SOFTWARE\\Quoria test\\Velmora 11";

TEST(Registry, FindsTextsAndNumbersInAnyLetterCase) {
    const RegistryEntries registry({
        {kMachine, kKey, "BinFolder", "\"C:\\\\Program Files\\\\Velmora \\\"11\\\"\""},
        {kMachine, kKey, "LiveLinkPort", "dword:0000c0de"},
        {kMachine, kKey, "Name", "\"sz\xc3\xa9n \xf0\x9f\x98\x80\""},
        {kMachine, kKey, "Empty", "\"\""},
        {kUser, kKey, "BinFolder", "\"of the user\""},
    });

    const auto key = RegistryKey::open(RegistryHive::kLocalMachine, kKey);
    ASSERT_TRUE(key);
    EXPECT_EQ(key->read_text("binfolder"), "C:\\Program Files\\Velmora \"11\"");
    EXPECT_EQ(key->read_text("Name"), "sz\xc3\xa9n \xf0\x9f\x98\x80");
    EXPECT_EQ(key->read_text("Empty"), "");
    EXPECT_EQ(key->read_text("LiveLinkPort"), std::nullopt);
    EXPECT_EQ(key->read("Missing").has_value(), false);
    const auto port = key->read("LiveLinkPort");
    ASSERT_TRUE(port);
    EXPECT_EQ(port->type, RegistryType::kNumber);
    EXPECT_EQ(port->number, 0xc0deu);

    const auto of_user =
        RegistryKey::open(RegistryHive::kCurrentUser, "software\\QUORIA test\\velmora 11");
    ASSERT_TRUE(of_user);
    EXPECT_EQ(of_user->read_text("BinFolder"), "of the user");

    EXPECT_FALSE(RegistryKey::open(RegistryHive::kLocalMachine, "SOFTWARE\\Quoria test\\None"));
}

#ifndef _WIN32
TEST(Registry, ReadsWhatWindowsExports) {
    const RegistryEntries registry({});
    std::ofstream file(std::string(std::getenv("XDG_CONFIG_HOME")) + "/quoria/registry.reg",
                       std::ios::binary);
    for (const char16_t unit : std::u16string(u"\ufeff[HKEY_CURRENT_USER\\Key]\r\n\"Name\"="
                                              u"\"sz\u00e9n \u20ac \U0001f600 \xd83d!\"\r\n")) {
        file.put(static_cast<char>(unit & 0xff)).put(static_cast<char>(unit >> 8));
    }
    file.close();
    EXPECT_EQ(RegistryKey::open(RegistryHive::kCurrentUser, "Key").value().read_text("Name"),
              "sz\u00e9n \u20ac \U0001f600 \ufffd!");
}
#endif

}  // namespace
}  // namespace platform
