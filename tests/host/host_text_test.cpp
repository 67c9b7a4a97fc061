#include "standins/host/memory/host_text.h"

#include <string>

#include <gtest/gtest.h>

#include "standins/host/memory/scene_builder.h"

using namespace memhost;

namespace {

struct Text {
    std::string utf8;
    std::wstring units;
};

TEST(HostText, GoesToUnitsAndBack) {
    const Text texts[] = {
        {"", L""},
        {"Box01", L"Box01"},
        // The last character of each length and the first of the next.
        {"\x7f\xc2\x80", L"\x7f\x80"},
        {"\xdf\xbf\xe0\xa0\x80", L"\x7ff\x800"},
        {"\xef\xbf\xbf\xf0\x90\x80\x80", {wchar_t(0xFFFF), wchar_t(0xD800), wchar_t(0xDC00)}},
        {"\xf4\x8f\xbf\xbf", {wchar_t(0xDBFF), wchar_t(0xDFFF)}},
    };
    for (const Text& text : texts) {
        EXPECT_EQ(units_from_utf8(text.utf8), text.units) << text.utf8;
        EXPECT_EQ(utf8_from_units(text.units), text.utf8);
        EXPECT_EQ(std::string(WStr(text.units.c_str()).ToUTF8().data()), text.utf8);
    }
}

TEST(HostText, TakesBytesThatAreNoUtf8AsLatin1) {
    const Text texts[] = {
        {"caf\xe9", L"caf\xe9"},
        {"\x80z", L"\x80z"},
        {"\xe2\x82", L"\xe2\x82"},                  // cut short
        {"\xc0\xaf", L"\xc0\xaf"},                  // longer than it need be
        {"\xed\xa0\x80", L"\xed\xa0\x80"},          // half of a surrogate pair
        {"\xf4\x90\x80\x80", L"\xf4\x90\x80\x80"},  // past the last character
    };
    for (const Text& text : texts) {
        EXPECT_EQ(units_from_utf8(text.utf8), text.units);
    }
}

TEST(HostText, GivesALoneSurrogateAsTheReplacementCharacter) {
    EXPECT_EQ(utf8_from_units({wchar_t(0xD83D), L'!'}), "\xef\xbf\xbd!");
    EXPECT_EQ(utf8_from_units({L'!', wchar_t(0xDE00)}), "!\xef\xbf\xbd");
}

// Whatever `wchar_t` is, a node's name has 16-bit units and ends at its zero.
TEST(HostText, IsWhatNodesAreNamedWith) {
    SceneBuilder scene;
    const std::wstring smile = {wchar_t(0xD83D), wchar_t(0xDE00)};
    EXPECT_EQ(scene.node(L"\U0001F600").node().GetName(), smile);
    EXPECT_EQ(scene.node("\xf0\x9f\x98\x80").node().GetName(), smile);
    EXPECT_EQ(scene.node(std::wstring(L"cut\0off", 7)).node().name(), L"cut");
}

}  // namespace
