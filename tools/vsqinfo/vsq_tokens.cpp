#include "tools/vsqinfo/vsq_tokens.h"

#include <charconv>
#include <cstdio>
#include <limits>

#include "tools/vsqinfo/display_text.h"
#include "tools/vsqinfo/malformed_file.h"

namespace vsqinfo {
namespace {

// More than any number in "%16.16f" and any parameter's name needs.
constexpr std::size_t kLongestWord = 4096;

bool is_digit(int byte) {
    return byte >= '0' && byte <= '9';
}

// The digit's value, or -1. Scene files have no upper-case digits.
int hex_digit(int byte) {
    if (is_digit(byte)) {
        return byte - '0';
    }
    return byte >= 'a' && byte <= 'f' ? byte - 'a' + 10 : -1;
}

bool ends_word(int byte) {
    switch (byte) {
        case ',':
        case '"':
        case '[':
        case ']':
        case '{':
        case '}':
            return true;
        default:
            return byte <= ' ';  // blank, control characters, end of file
    }
}

std::string byte_text(int byte) {
    if (byte == '\n') {
        return "a line feed";
    }
    char text[16];
    std::snprintf(text, sizeof text, byte > ' ' && byte < 0x7f ? "'%c'" : "byte 0x%02x", byte);
    return text;
}

void keep(std::string& text, int byte) {
    if (text.size() < VsqTokens::kKeptText) {
        text += static_cast<char>(byte);
    }
}

std::size_t count_digits(std::string_view word, std::size_t start) {
    std::size_t end = start;
    while (end < word.size() && is_digit(word[end])) {
        ++end;
    }
    return end - start;
}

// digits [. digits] [e sign digits]
bool is_finite_number(std::string_view word) {
    std::size_t end = count_digits(word, 0);
    if (end == 0) {
        return false;
    }
    if (end < word.size() && word[end] == '.') {
        const std::size_t fraction = count_digits(word, end + 1);
        if (fraction == 0) {
            return false;
        }
        end += 1 + fraction;
    }
    if (end < word.size() && word[end] == 'e') {
        ++end;
        if (end < word.size() && (word[end] == '+' || word[end] == '-')) {
            ++end;
        }
        const std::size_t exponent = count_digits(word, end);
        if (exponent == 0) {
            return false;
        }
        end += exponent;
    }
    return end == word.size();
}

std::string_view without_sign(std::string_view word) {
    return word.substr(word.substr(0, 1) == "-" ? 1 : 0);
}

}  // namespace

ValueWord classify_value(std::string_view word) {
    if (word == "on" || word == "off") {
        return ValueWord::kSwitch;
    }
    const std::string_view magnitude = without_sign(word);
    if (is_finite_number(magnitude)) {
        return ValueWord::kFinite;
    }
    for (const char* spelling : {"nan", "inf", "nan(ind)", "nan(snan)"}) {
        if (magnitude == spelling) {
            return ValueWord::kNotFinite;
        }
    }
    // The C library of older Windows compilers writes 1.#INF, 1.#QNAN000, ...
    return magnitude.substr(0, 3) == "1.#" ? ValueWord::kNotFinite : ValueWord::kNone;
}

double number_value(std::string_view word) {
    if (classify_value(word) == ValueWord::kNotFinite) {
        const std::string_view magnitude = without_sign(word);
        if (magnitude != "inf" && magnitude.substr(0, 6) != "1.#INF") {
            return std::numeric_limits<double>::quiet_NaN();
        }
        const double infinity = std::numeric_limits<double>::infinity();
        return word[0] == '-' ? -infinity : infinity;
    }
    double value = 0;
    std::from_chars(word.data(), word.data() + word.size(), value);
    return value;
}

std::string shown(std::string_view word) {
    constexpr std::size_t kLongest = 40;
    const std::string text = display_text(std::string(word.substr(0, kLongest)));
    return "\"" + text + (word.size() > kLongest ? "...\"" : "\"");
}

void VsqTokens::fail(FilePlace place, const std::string& reason, Check check) const {
    throw MalformedFile(place, reason, check);
}

void VsqTokens::fail_expected(const std::string& wanted) {
    const int next = source_.peek();
    fail(wanted + " is expected, " +
         (next == ByteSource::kEnd ? "but the file ends" : "not " + byte_text(next)));
}

std::size_t VsqTokens::skip_blanks() {
    std::size_t count = 0;
    for (; source_.peek() == ' '; source_.drop()) {
        ++count;
    }
    return count;
}

bool VsqTokens::skip_space() {
    bool blank = false;
    for (int next = source_.peek(); next == ' ' || next == '\n'; next = source_.peek()) {
        blank = next == ' ';
        source_.drop();
    }
    return blank;
}

void VsqTokens::expect(char wanted) {
    if (source_.peek() != wanted) {
        fail_expected(byte_text(wanted));
    }
    source_.drop();
}

void VsqTokens::expect_line_end() {
    expect('\n');
}

void VsqTokens::expect_text(std::string_view text) {
    for (const char wanted : text) {
        expect(wanted);
    }
}

bool VsqTokens::at_name() {
    const int next = source_.peek();
    return next == '"' || (next == 'x' && source_.peek_second() == 'X');
}

void VsqTokens::read_name(std::string& name) {
    name.clear();
    const FilePlace start = source_.place();
    if (!at_name()) {
        fail_expected("a name");
    }

    if (source_.peek() == 'x') {
        source_.drop();
        source_.drop();
        if (read_hex_pairs(&name) == 0) {
            fail(start, "a name has no hexadecimal digits");
        }
        listener_.name(name, true, start);
        return;
    }

    source_.drop();
    for (int next = source_.peek(); next != '"'; next = source_.peek()) {
        if (next == ByteSource::kEnd) {
            fail("the file ends inside a name that begins at offset " +
                 std::to_string(start.offset));
        }
        if (next == '\n') {
            fail("a name that begins at offset " + std::to_string(start.offset) +
                 " is not closed on its line");
        }
        if (next == 0 || next == '\r' || next >= 0x80) {
            fail(byte_text(next) + " inside a quoted name");
        }
        keep(name, next);
        source_.drop();
    }
    source_.drop();
    listener_.name(name, false, start);
}

bool VsqTokens::at_hex_data() {
    return source_.peek() == 'b' && source_.peek_second() == 'X';
}

std::uint64_t VsqTokens::read_hex_data() {
    expect_text("bX");
    return read_hex_pairs(nullptr);
}

std::uint64_t VsqTokens::read_hex_pairs(std::string* bytes) {
    std::uint64_t count = 0;
    for (;;) {
        const int high = hex_digit(source_.peek());
        if (high < 0) {
            break;
        }
        source_.drop();
        const int low = hex_digit(source_.peek());
        if (low < 0) {
            fail_expected("the second hexadecimal digit of a byte");
        }
        source_.drop();
        if (bytes) {
            keep(*bytes, high * 16 + low);
        }
        ++count;
    }
    if (!ends_word(source_.peek())) {
        fail_expected("a hexadecimal digit");
    }
    return count;
}

std::string_view VsqTokens::read_word() {
    word_.clear();
    for (int next = source_.peek(); !ends_word(next); next = source_.peek()) {
        if (word_.size() == kLongestWord) {
            fail("a word of more than " + std::to_string(kLongestWord) + " bytes");
        }
        word_ += static_cast<char>(next);
        source_.drop();
    }
    if (word_.empty()) {
        fail_expected("a word");
    }
    return word_;
}

std::int64_t VsqTokens::read_integer() {
    const FilePlace start = source_.place();
    const std::string_view word = read_word();
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size()) {
        fail(start, "an integer is expected");
    }
    return value;
}

void VsqTokens::read_message(std::string& text) {
    text.clear();
    const FilePlace start = source_.place();
    expect('"');
    for (;;) {
        const int next = source_.peek();
        if (next == ByteSource::kEnd) {
            fail("the file ends inside a message that begins at offset " +
                 std::to_string(start.offset));
        }
        if (next == '"' && source_.peek_second() == '\n') {
            break;
        }
        keep(text, next);
        source_.drop();
    }
    expect('"');
    expect_line_end();
}

void VsqTokens::read_line(std::string& text) {
    text.clear();
    for (int next = source_.peek(); next != '\n'; next = source_.peek()) {
        if (next == ByteSource::kEnd) {
            fail("the file ends inside a line");
        }
        keep(text, next);
        source_.drop();
    }
    source_.drop();
}

}  // namespace vsqinfo
