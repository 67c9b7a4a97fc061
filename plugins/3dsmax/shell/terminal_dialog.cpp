#include "plugins/3dsmax/shell/terminal_dialog.h"

#include <istream>
#include <optional>
#include <ostream>
#include <string>

#include "plugins/3dsmax/shell/options_controls.h"
#include "plugins/3dsmax/shell/radius_scale.h"

namespace {

// No value unless `text` is a whole number from `lowest` to `highest`.
std::optional<int> parse_number(const std::string& text, int lowest, int highest) {
    if (text.empty() || text.size() > 9 ||
        text.find_first_not_of("0123456789") != std::string::npos) {
        return std::nullopt;
    }
    const int number = std::stoi(text);
    return number >= lowest && number <= highest ? std::optional<int>(number) : std::nullopt;
}

// Asks until the answer is valid. An empty one means `shown`. No value at the end of the input.
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

// The next two functions store the answer. They return false at the end of the input.

bool ask_flag(const std::string& text, bool& flag, std::istream& in, std::ostream& out) {
    const std::optional<int> answer = ask(text + ", 1 or 0", flag, 0, 1, in, out);
    if (answer) {
        flag = *answer == 1;
    }
    return answer.has_value();
}

bool ask_radius(const std::string& text, float& multiplier, std::istream& in, std::ostream& out) {
    const std::optional<int> position =
        ask(text + ", position " + std::to_string(kLowestRadiusPosition) + " to " +
                std::to_string(kHighestRadiusPosition),
            kMiddleRadiusPosition, kLowestRadiusPosition, kHighestRadiusPosition, in, out);
    if (position) {
        multiplier = RadiusMultiplierAt(*position);
        out << "  = " << RadiusLabel(multiplier) << '\n';
    }
    return position.has_value();
}

}  // namespace

bool AskForOptions(Qor::Options& options, std::istream& in, std::ostream& out) {
    Qor::Options answers = options;
    out << TEXT_OPTIONS_TITLE << '\n';
    for (const OptionControl& control : kOptionControls) {
        const bool answered =
            control.field != nullptr
                ? ask_flag(control.text, answers.*control.field, in, out)
                : ask_radius(control.text, options.CurveRadiusMultiplier, in, out);
        if (!answered) {
            return false;
        }
    }
    answers.CurveRadiusMultiplier = options.CurveRadiusMultiplier;
    options = answers;
    return true;
}
