#include "platform/files.h"

#include <gtest/gtest.h>

#include "platform/wide_text.h"
#include "tests/support/temporary_folder.h"

namespace platform {
namespace {

TEST(Files, PathsAreUtf8AndTakeEitherSeparator) {
    const TemporaryFolder folder;
    const std::string name = "\xce\xa9 \xf0\x9f\x98\x80";
    std::FILE* file = open_file(folder / name, "wb");
    ASSERT_NE(file, nullptr);
    std::fputs("a\n", file);
    std::fclose(file);
    EXPECT_EQ(file_contents(folder / name), "a\n");

    EXPECT_TRUE(path_exists(folder / name));
    EXPECT_TRUE(path_exists(folder.path().u8string()));
    EXPECT_TRUE(path_exists(folder.path().u8string() + "\\" + name));
    EXPECT_FALSE(path_exists(folder / "missing"));
    EXPECT_EQ(open_file(folder / "missing", "rb"), nullptr);
}

// Each byte that isn't valid UTF-8 becomes a unit of its own.
TEST(WideText, ConvertsFromAndToUtf8) {
    const struct {
        std::string utf8;
        std::wstring units;
        std::string back;  // empty if converting back gives the same bytes
    } kTexts[] = {
        {"C:/\xc2\x80\xdf\xbf\xe0\xa0\x80\xef\xbf\xbf", L"C:/\x80\x7ff\x800\xffff", ""},
        {"\xf0\x90\x80\x80\xf4\x8f\xbf\xbf", {0xD800, 0xDC00, 0xDBFF, 0xDFFF}, ""},
        {"\xe9 \xe2\x82", L"\xe9 \xe2\x82", "\xc3\xa9 \xc3\xa2\xc2\x82"},
        {"\xc0\xaf\xed\xa0\x80", L"\xc0\xaf\xed\xa0\x80",
         "\xc3\x80\xc2\xaf\xc3\xad\xc2\xa0\xc2\x80"},
        {"\xf4\x90\x80\x80\xff", L"\xf4\x90\x80\x80\xff",
         "\xc3\xb4\xc2\x90\xc2\x80\xc2\x80\xc3\xbf"},
    };
    for (const auto& [utf8, units, back] : kTexts) {
        EXPECT_TRUE(wide_from_utf8(utf8) == units) << utf8;
        EXPECT_EQ(utf8_from_wide(units), back.empty() ? utf8 : back);
    }
    // A surrogate without its partner.
    EXPECT_EQ(utf8_from_wide({0xD800, L'a', 0xDC00}),
              "\xef\xbf\xbd"
              "a\xef\xbf\xbd");
}

}  // namespace
}  // namespace platform
