#include "importers/sceneapi/dev/log.h"

#include <gtest/gtest.h>

#include <regex>

#include "tests/support/installation_entries.h"

namespace qor {
namespace {

// The log stays open until the process ends, so each test here runs in a process of its own.
class LogTest : public testing::Test {
protected:
    LogTest() { std::ofstream(folder_.path() / "program") << "no program"; }
    // Closes the log, so that the folder with its large file can be deleted.
    ~LogTest() override { std::fclose(Output2FILE::stream()); }

    // Writes a statement to a log of `size` bytes. `is_kept` says whether those must stay.
    void check_growth(std::uintmax_t size, bool is_kept) {
        const RegistryEntries registry(installation_);
        std::ofstream(log_).close();
        std::filesystem::resize_file(log_, size);
        QOR_LOG(kLogInfo) << "line";
        const std::uintmax_t line = std::filesystem::file_size(log_) - (is_kept ? size : 0);
        EXPECT_TRUE(line > 0 && line < 100) << line;
    }

    TemporaryFolder folder_;
    const std::filesystem::path log_ = folder_.path() / "sceneapi.log";
    const std::vector<RegistryEntry> installation_ = installation_entries(
        "HKEY_CURRENT_USER", "Velmora 5", folder_ / "program", "", folder_.path().u8string());
};

TEST_F(LogTest, WritesOneLineForEachStatementOnceItCanBeOpened) {
    int evaluated = 0;
    {
        const RegistryEntries registry({});
        QOR_LOG(kLogError) << ++evaluated;
    }
    const RegistryEntries registry(installation_);
    std::filesystem::create_directory(log_);
    testing::internal::CaptureStderr();
    QOR_LOG(kLogError) << ++evaluated;
    EXPECT_TRUE(std::regex_match(testing::internal::GetCapturedStderr(),
                                 std::regex("could not open log file:\\r?\\n"
                                            "opening log: .*\\r?\\n")));
    std::filesystem::remove(log_);

    QOR_LOG(kLogNone) << ++evaluated;
    EXPECT_EQ(evaluated, 0);
    QOR_LOG(kLogDebug4) << "first " << ++evaluated;
    FILELog().get(kLogError, "C:\\src/dev\\unit.cpp", 12345) << "second";
    const std::string time = " - [0-2][0-9]:[0-5][0-9]:[0-5][0-9]\\.[0-9]{3} ";
    const std::string text = file_contents(log_.u8string());
    EXPECT_TRUE(std::regex_match(
        text, std::regex("log_test\\.cpp:[0-9]+" + time + "DEBUG4:  first 1\\r?\\n" +
                         "unit\\.cpp:12345" + time + "ERROR:  second\\r?\\n")))
        << text;
}

TEST_F(LogTest, GrowsBelowTheLimit) {
    check_growth(20 * 1024 * 1024 - 1, true);
}

TEST_F(LogTest, StartsAgainAtTheLimit) {
    check_growth(20 * 1024 * 1024, false);
}

}  // namespace
}  // namespace qor
