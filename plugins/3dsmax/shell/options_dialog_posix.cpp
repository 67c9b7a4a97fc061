#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "plugins/3dsmax/shell/options_controls.h"
#include "plugins/3dsmax/shell/radius_scale.h"
#include "plugins/3dsmax/shell/terminal_dialog.h"

namespace {

// A whole number from `lowest` to `highest`, or nothing.
std::optional<int> parse_number(const std::string& text, int lowest, int highest) {
    if (text.empty() || text.size() > 9 ||
        text.find_first_not_of("0123456789") != std::string::npos) {
        return std::nullopt;
    }
    const int number = std::stoi(text);
    return number >= lowest && number <= highest ? std::optional<int>(number) : std::nullopt;
}

// Nothing at the end of the input.
std::optional<int> ask(const std::string& question, int shown, int lowest, int highest,
                       std::istream& in, std::ostream& out) {
    for (std::string line;;) {
        out << question << " [" << shown << "]: " << std::flush;
        if (!std::getline(in, line)) {
            out << '\n';
            return std::nullopt;
        }
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (line.empty()) {
            return shown;
        }
        if (const std::optional<int> number = parse_number(line, lowest, highest)) {
            return number;
        }
        out << "A number from " << lowest << " to " << highest << ", please.\n";
    }
}

}  // namespace

bool AskForOptions(Qor::Options& options, std::istream& in, std::ostream& out) {
    Qor::Options answers = options;
    out << TEXT_OPTIONS_TITLE << '\n';
    for (const OptionControl& control : kOptionControls) {
        if (control.field != nullptr) {
            const std::optional<int> flag =
                ask(std::string(control.text) + ", 1 or 0", answers.*control.field, 0, 1, in, out);
            if (!flag) {
                return false;
            }
            answers.*control.field = *flag == 1;
            continue;
        }
        const std::optional<int> position =
            ask(std::string(control.text) + ", position " + std::to_string(kLowestRadiusPosition) +
                    " to " + std::to_string(kHighestRadiusPosition),
                kMiddleRadiusPosition, kLowestRadiusPosition, kHighestRadiusPosition, in, out);
        if (!position) {
            return false;
        }
        options.CurveRadiusMultiplier = RadiusMultiplierAt(*position);
        answers.CurveRadiusMultiplier = options.CurveRadiusMultiplier;
        out << "  = " << RadiusLabel(options.CurveRadiusMultiplier) << '\n';
    }
    options = answers;
    return true;
}

namespace Qor {

bool Options::ShowDialog() {
    if (!AskForOptions(*this, std::cin, std::cout)) {
        return false;
    }
    Save();
    return true;
}

}  // namespace Qor
