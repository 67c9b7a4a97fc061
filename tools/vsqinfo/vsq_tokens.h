#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "tools/vsqinfo/byte_source.h"
#include "tools/vsqinfo/vsq_listener.h"

namespace vsqinfo {

/// The kind of value that a word is.
enum class ValueWord {
    kNone,       ///< not a value
    kSwitch,     ///< "on" or "off"
    kFinite,     ///< a finite number
    kNotFinite,  ///< infinity or NaN, in the spelling of any C library
};

ValueWord classify_value(std::string_view word);

/// The number in `word`, for which `classify_value` must have returned `kFinite` or `kNotFinite`.
double number_value(std::string_view word);

/// A word of the file for the text of a failure: in quotes, safe to print, and of limited length.
std::string shown(std::string_view word);

/// Reads the words, names and numbers of a scene file one by one.
///
/// Texts of any length are checked to their end, but only their first `kKeptText` bytes are kept.
/// All operations throw `MalformedFile` with the offset of the byte that doesn't fit.
class VsqTokens {
public:
    static constexpr std::size_t kKeptText = 4096;

    /// Both are borrowed. `listener` is told every name.
    VsqTokens(ByteSource& source, VsqListener& listener) : source_(source), listener_(listener) {}

    /// Throws with `place`, or with the place of the next byte.
    [[noreturn]] void fail(FilePlace place, const std::string& reason,
                           Check check = Check::kMalformed) const;
    [[noreturn]] void fail(const std::string& reason) { fail(source_.place(), reason, at_end()); }
    /// "<wanted> is expected, not '}'", or "..., but the file ends".
    [[noreturn]] void fail_expected(const std::string& wanted);

    /// Takes all blanks and returns their number.
    std::size_t skip_blanks();
    /// Takes all blanks and line feeds; true if the last one is a blank.
    bool skip_space();

    void expect(char wanted);
    void expect_line_end();
    /// Takes all of `text`; fails at the first byte that differs.
    void expect_text(std::string_view text);

    /// True if a name is next: in double quotes, or in hexadecimal digits after "xX".
    bool at_name();
    /// Reads a name and decodes it to its bytes.
    void read_name(std::string& name);

    bool at_hex_data();
    /// Reads the data after "bX" and returns the number of bytes.
    std::uint64_t read_hex_data();

    /// Reads bytes up to a blank, comma, quote, bracket, brace or control character. The result is
    /// never empty, and is valid until the next word is read.
    std::string_view read_word();
    std::int64_t read_integer();

    /// Reads the text of "#print" and "#error", from its opening quote to the line feed after the
    /// closing one. Quotes inside the text aren't escaped, so only a quote before a line feed
    /// closes it.
    void read_message(std::string& text);

    /// Reads the rest of the line; `text` doesn't get the line feed.
    void read_line(std::string& text);

private:
    /// Reads pairs of lower-case hexadecimal digits and returns their number. The decoded bytes go
    /// to `bytes` unless it is null.
    std::uint64_t read_hex_pairs(std::string* bytes);

    /// The check that a failure at the next byte belongs to.
    Check at_end() {
        return source_.peek() == ByteSource::kEnd ? Check::kCutShort : Check::kMalformed;
    }

    ByteSource& source_;
    VsqListener& listener_;
    std::string word_;
};

}  // namespace vsqinfo
