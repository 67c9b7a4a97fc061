#include "plugins/3dsmax/shell/terminal_dialog.h"

#include <gtest/gtest.h>

#include <sstream>

#include "plugins/3dsmax/shell/radius_scale.h"
#include "standins/host/memory/memory_host.h"

namespace {

// In the order of the settings file.
std::string flags_of(const Qor::Options& options) {
    std::string flags;
    for (const Qor::OptionKey& option : Qor::kOptionKeys) {
        flags += options.*option.field ? '1' : '0';
    }
    return flags;
}

TEST(TerminalDialog, TakesTheAnswersOver) {
    const std::string initial = "1011111110";
    const struct {
        const char* what;
        const char* input;
        bool confirmed;
        std::string flags;
        float multiplier;
    } cases[] = {
        {"only empty lines", "\n\n\n\n\n\n\n\n\n\n", true, initial, RadiusMultiplierAt(50)},
        {"all changed", "0\n1\n100\n0\n0\n0\n0\n0\n0\n1\n", true, "0101000001",
         RadiusMultiplierAt(100)},
        {"lines of Windows", "0\r\n\r\n7\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n", true, "0011111110",
         RadiusMultiplierAt(7)},
        {"what means nothing is asked again",
         "yes\n2\n-1\n0\n\n0\n101\n99999999999\n1\n\n\n\n\n\n\n\n", true, "0011111110",
         RadiusMultiplierAt(1)},
        {"no input", "", false, initial, 1.0f},
        {"an end after the multiplier", "0\n1\n100\n0\n", false, initial, RadiusMultiplierAt(100)},
        {"an end before the last answer", "0\n1\n1\n0\n0\n0\n0\n0\n0\n", false, initial,
         RadiusMultiplierAt(1)},
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
        EXPECT_EQ(options.CurveRadiusMultiplier, dialog.multiplier);
    }
}

}  // namespace
