#include "tools/vsqinfo/checks/spelling_check.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "tools/vsqinfo/vsq_tokens.h"

namespace vsqinfo {
namespace {

// Shorter keywords are too close to too many names.
constexpr std::string_view kKeywords[] = {
    "flags",    "transform", "surface",   "shadow",   "volume",    "reflection",
    "scale",    "rotate",    "translate", "instance", "attribute", "progress",
    "icon",     "version",   "render",    "group",    "object",    "geometry",
    "material", "matrix",    "animation", "camera",   "load",      "options",
    "image",    "output",    "light",     "accel",    "frame",     "motion",
};

bool is_keyword(std::string_view word) {
    return std::find(std::begin(kKeywords), std::end(kKeywords), word) != std::end(kKeywords);
}

// Whether one change turns `word` into `keyword`. At the first difference, a letter can be wrong,
// missing, too much, or swapped with the next one; the rest has to be equal.
bool is_misspelling(std::string_view word, std::string_view keyword) {
    const auto differ = std::mismatch(word.begin(), word.end(), keyword.begin(), keyword.end());
    const std::string_view rest =
        word.substr(static_cast<std::size_t>(differ.first - word.begin()));
    const std::string_view wanted =
        keyword.substr(static_cast<std::size_t>(differ.second - keyword.begin()));
    if (rest.empty() || wanted.empty()) {
        return rest.size() + wanted.size() == 1;
    }
    const bool swapped = rest.size() >= 2 && wanted.size() >= 2 && rest[0] == wanted[1] &&
                         rest[1] == wanted[0] && rest.substr(2) == wanted.substr(2);
    return swapped || rest.substr(1) == wanted.substr(1) || rest.substr(1) == wanted ||
           rest == wanted.substr(1);
}

// The form of parameters in a block, if the block around it takes quoted ones or not.
bool takes_quoted(std::string_view keyword, bool around) {
    for (const std::string_view quoted :
         {"shader", "geometry", "animation", "output", "accel", "load"}) {
        if (keyword == quoted) {
            return true;
        }
    }
    for (const std::string_view plain : {"group", "object", "camera", "options", "image"}) {
        if (keyword == plain) {
            return false;
        }
    }
    return around;
}

std::size_t digits_at(std::string_view word, std::size_t start) {
    const std::size_t end = word.find_first_not_of("0123456789", start);
    return (end == std::string_view::npos ? word.size() : end) - start;
}

}  // namespace

bool is_writers_form(std::string_view word) {
    if (word.substr(0, 1) == "-") {
        word.remove_prefix(1);
    }
    if (word == "nan" || word == "inf") {
        return true;
    }
    const std::size_t whole = digits_at(word, 0);
    if (whole == 0 || (whole > 1 && word[0] == '0')) {
        return false;
    }
    if (whole == word.size()) {
        return true;
    }
    const bool has_fraction = word[whole] == '.';
    const std::size_t decimals = has_fraction ? digits_at(word, whole + 1) : 0;
    const std::size_t end = whole + (has_fraction ? 1 + decimals : 0);
    if (end == word.size() && decimals == 16) {
        return true;
    }
    // "%g" leaves out zeros at the end and gives six digits, without those before the first that
    // counts.
    if (has_fraction && (decimals == 0 || word[end - 1] == '0')) {
        return false;
    }
    constexpr std::size_t kDigits = 6;
    if (end == word.size()) {
        if (word[0] != '0') {
            return whole + decimals <= kDigits;
        }
        const std::size_t zeros = word.find_first_not_of('0', whole + 1) - whole - 1;
        return zeros < 4 && decimals - zeros <= kDigits;
    }
    const std::string_view exponent = word.substr(end);
    const std::size_t digits = exponent.size() - std::min<std::size_t>(exponent.size(), 2);
    const bool is_signed = exponent.size() > 1 && (exponent[1] == '+' || exponent[1] == '-');
    if (exponent[0] != 'e' || !is_signed || digits < 2 || (digits > 2 && exponent[2] == '0')) {
        return false;
    }
    const bool is_large = exponent.substr(2) >= (exponent[1] == '+' ? "06" : "05");
    return whole == 1 && word[0] != '0' && decimals < kDigits && (digits > 2 || is_large);
}

std::string_view likely_keyword(std::string_view word) {
    if (is_keyword(word)) {
        return {};
    }
    for (const std::string_view keyword : kKeywords) {
        if (is_misspelling(word, keyword)) {
            return keyword;
        }
    }
    return {};
}

void SpellingCheck::block_begins(const VsqBlock& block) {
    takes_quoted_.push_back(
        takes_quoted(block.keyword, !takes_quoted_.empty() && takes_quoted_.back()));
}

void SpellingCheck::block_ends() {
    takes_quoted_.pop_back();
    if (takes_quoted_.empty()) {
        return;
    }
    // The writer keeps one form at a time, and these blocks leave theirs behind when they close.
    for (const std::string_view keyword : {"camera", "options", "image"}) {
        if (path().is_in(keyword)) {
            takes_quoted_.back() = true;
        }
    }
    if (path().is_in("output")) {
        takes_quoted_.back() = false;
    }
}

void SpellingCheck::statement(const VsqStatement& statement) {
    const bool is_message = statement.word == "#print" || statement.word == "#error";
    if (is_message && statement.text.find('\n') != std::string_view::npos) {
        found(Check::kMessageLineFeed, statement.place,
              std::string(statement.word) + " " + shown(statement.text));
    }
}

void SpellingCheck::parameter(const VsqParameter& parameter) {
    if (!parameter.is_quoted) {
        check_plain_name(parameter.name, parameter.place);
    }
    // These two forms are the same everywhere.
    if (parameter.form != ValueForm::kShader && parameter.form != ValueForm::kData) {
        check_form(parameter.name, parameter.is_quoted, parameter.place);
    }
}

bool SpellingCheck::array_begins(const VsqArray& array) {
    // An array that is written element by element is quoted everywhere.
    if (!array.is_quoted) {
        check_plain_name(array.name, array.place);
        check_form(array.name, false, array.place);
    }
    return false;
}

void SpellingCheck::check_plain_name(std::string_view name, FilePlace place) {
    const auto is_ascii = [](char byte) { return byte > 0x1f && byte < 0x7f; };
    if (!std::all_of(name.begin(), name.end(), is_ascii)) {
        found(Check::kNotAscii, place, shown(name) + " in " + path().shown());
    }
    const std::string_view word = name.substr(0, name.find(' '));
    if (const std::string_view keyword = likely_keyword(word); !keyword.empty()) {
        found(Check::kStatementMisspelt, place,
              shown(word) + " in " + path().shown() + " may be " + shown(keyword));
    }
}

void SpellingCheck::check_form(std::string_view name, bool is_quoted, FilePlace place) {
    if (!takes_quoted_.empty() && takes_quoted_.back() != is_quoted) {
        found(Check::kParameterForm, place,
              shown(name) + " is " + (is_quoted ? "quoted in a " : "plain in a ") +
                  std::string(path().innermost()->keyword));
    }
}

void SpellingCheck::name(std::string_view bytes, bool is_hex, FilePlace place) {
    const auto needs_hex = [](char byte) {
        return byte == '"' || byte == '\r' || byte == '\n' || byte == '\0' ||
               static_cast<unsigned char>(byte) >= 0x80;
    };
    // Of a name as long as the limit, the part that needs it may not have been kept.
    if (is_hex && bytes.size() < VsqTokens::kKeptText &&
        std::none_of(bytes.begin(), bytes.end(), needs_hex)) {
        found(Check::kHexName, place, shown(bytes) + " could be in quotes");
    }
}

void SpellingCheck::number(std::string_view word, FilePlace place) {
    if (!is_writers_form(word)) {
        found(Check::kNumberForm, place, shown(word));
    }
}

}  // namespace vsqinfo
