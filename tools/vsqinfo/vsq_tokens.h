#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "tools/vsqinfo/byte_source.h"

namespace vsqinfo {

/// What a word that stands for a value says.
enum class ValueWord {
    kNone,       ///< it is no value
    kSwitch,     ///< "on" or "off"
    kFinite,     ///< a number
    kNotFinite,  ///< an infinity or no number, in the spelling of any C library
};

ValueWord classify_value(std::string_view word);

/// The number that `word` holds, which `classify_value` has found to be one.
double number_value(std::string_view word);

/// A word of the file in quotes and fit for a terminal, cut to a length that a reason can hold.
std::string shown(std::string_view word);

/// The words, names and numbers of a scene file, read one by one off its bytes.
///
/// Texts of any length are checked to their end, but only their first `kKeptText` bytes are kept.
/// All operations throw `MalformedFile` with the offset of the byte that doesn't fit.
class VsqTokens {
public:
    static constexpr std::size_t kKeptText = 4096;

    explicit VsqTokens(ByteSource& source) : source_(source) {}

    /// Throws, for the byte at `offset` or the next one.
    [[noreturn]] void fail(std::uint64_t offset, const std::string& reason) const;
    [[noreturn]] void fail(const std::string& reason) const { fail(source_.offset(), reason); }
    /// "<wanted> is expected, not '}'", or "..., but the file ends".
    [[noreturn]] void fail_expected(const std::string& wanted);

    /// Takes the blanks ahead and gives their number.
    std::size_t skip_blanks();
    /// Takes blanks and line feeds; true if the last one taken is a blank.
    bool skip_space();

    void expect(char wanted);
    void expect_line_end();
    /// Takes all of `text`; on a mismatch fails with the part that is not there.
    void expect_text(std::string_view text);

    /// Is the next thing a name: in double quotes, or in the hexadecimal form behind "xX"?
    bool at_name();
    /// A name, decoded to its bytes.
    void read_name(std::string& name);

    bool at_hex_data();
    /// Data behind "bX"; gives the number of bytes.
    std::uint64_t read_hex_data();

    /// A run of bytes without blank, comma, quote, bracket, brace and control character. It is
    /// valid until the next word is read, and is never empty.
    std::string_view read_word();
    std::int64_t read_integer();

    /// The text of "#print" and "#error", from its opening quote to the line end behind the
    /// closing one. The text stands there unchanged, so quotes within it don't close it: the
    /// first one in front of a line feed does.
    void read_message(std::string& text);

    /// The rest of the line, without its line feed.
    void read_line(std::string& text);

private:
    /// Pairs of lower-case hexadecimal digits; the decoded bytes go to `bytes` unless it is null.
    std::uint64_t read_hex_pairs(std::string* bytes);

    ByteSource& source_;
    std::string word_;
};

}  // namespace vsqinfo
