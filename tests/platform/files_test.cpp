#include "platform/files.h"

#include <gtest/gtest.h>

#include "platform/clock.h"
#include "platform/message_box.h"
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

TEST(Clock, TellsTimeInItsForm) {
    const auto time = local_time_of_day();
    ASSERT_TRUE(time);
    ASSERT_EQ(time->size(), 8u);
    EXPECT_EQ((*time)[2], ':');
    EXPECT_EQ((*time)[5], ':');
    const std::uint32_t before = tick_count();
    EXPECT_LT(tick_count() - before, 60000u);
}

TEST(MessageBox, GoesToTheHandlerOfTheHost) {
    std::string told;
    set_message_box_handler(
        [&](const std::string& text, const std::string& title, std::uint32_t style) {
            told = title + ": " + text + " " + std::to_string(style);
        });
    show_message_box(nullptr, "text", "Error", kMessageBoxError);
    set_message_box_handler({});
    EXPECT_EQ(told, "Error: text 16");
}

}  // namespace
}  // namespace platform
