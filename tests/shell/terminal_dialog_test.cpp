#include "plugins/3dsmax/shell/terminal_dialog.h"

#include <gtest/gtest.h>

#include <sstream>

#include "standins/host/memory/memory_host.h"

namespace {

// The settings as 0 and 1, in the order of the settings file.
std::string flags_of(const Qor::Options& options) {
    std::string flags;
    for (bool Qor::Options::*const field : Qor::kOptionFields) {
        flags += options.*field ? '1' : '0';
    }
    return flags;
}

TEST(TerminalDialog, AppliesTheAnswers) {
    const std::string initial = "1011111110";
    const std::string kept = "\n\n\n\n\n\n\n";
    // The label has one decimal less once the multiplier is above 0.5.
    const struct {
        const char* what;
        std::string input;
        bool confirmed;
        std::string flags;
        float multiplier;
        const char* shown;
    } cases[] = {
        {"only empty lines", "\n\n\n" + kept, true, initial, 0.99904f, "= 1.0\n"},
        {"all changed", "0\n1\n100\n0\n0\n0\n0\n0\n0\n1\n", true, "0101000001", 9.9998f,
         "= 10.0\n"},
        {"line ends of Windows", "0\r\n\r\n34\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n", true, "0011111110",
         0.47801f, "= 0.48\n"},
        {"invalid answers are asked again", "yes\n2\n-1\n0\n\n0\n101\n99999999999\n1\n" + kept,
         true, "0011111110", 0.10452f, "= 0.10\n"},
        {"no input", "", false, initial, 1.0f, ""},
        {"input ends after the multiplier", "0\n1\n35\n0\n", false, initial, 0.50055f, "= 0.5\n"},
        {"input ends before the last answer", "0\n1\n1\n0\n0\n0\n0\n0\n0\n", false, initial,
         0.10452f, "= 0.10\n"},
    };
    for (const auto& dialog : cases) {
        SCOPED_TRACE(dialog.what);
        memhost::MemoryHost host;
        host.set_config_folder(L"no such folder");
        Qor::Options options(&host);
        std::istringstream in(dialog.input);
        std::ostringstream out;
        EXPECT_EQ(AskForOptions(options, in, out), dialog.confirmed);
        EXPECT_EQ(flags_of(options), dialog.flags);
        EXPECT_NEAR(options.CurveRadiusMultiplier, dialog.multiplier, 1e-4 * dialog.multiplier);
        EXPECT_NE(out.str().find(dialog.shown), std::string::npos) << out.str();
    }
}

}  // namespace
