#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <string_view>
#include <vector>

class ShaderBuffer;

/// Null counts as an empty text.
inline std::string_view text_or_empty(const char* text) {
    return text != nullptr ? text : "";
}

/// Writes the text of a scene file. It offers the few kinds of writes that all statements consist
/// of, handles indentation and the form of names, and writes either to the stream or to a shader's
/// buffer.
///
/// Text for the stream is buffered. The buffer is written when it is full, before a large block of
/// bytes, and when the output ends; a separate write for each statement would take several times as
/// long. If the stream is null, everything is dropped.
class SceneTextOutput {
public:
    /// The longest text of one indented write, including its indentation. A longer text is cut.
    static constexpr size_t kLongestText = 0x100000 - 2;

    /// Borrows `stream`, which may be null.
    explicit SceneTextOutput(std::FILE* stream);

    SceneTextOutput(const SceneTextOutput&) = delete;
    SceneTextOutput& operator=(const SceneTextOutput&) = delete;

    /// Writes the buffered text.
    ~SceneTextOutput();

    /// Writes the joined parts at the start of a line. Indentation is added at the beginning and
    /// after each line feed that is followed by more text.
    void write_indented(std::initializer_list<std::string_view> parts);
    void write_indented(std::string_view text) {
        if (indented_) {
            write_indented({text});
        } else {
            append_text(text.substr(0, kLongestText));
        }
    }

    /// Writes inside a line, without indentation and without a limit.
    void write_raw(std::string_view text) { append_text(text); }

    /// Writes the bytes unchanged, and without buffering if there are many.
    void write_bytes(const void* bytes, size_t size);

    /// Writes a name that may start a line. It is written in double quotes. If it contains a double
    /// quote, a line end, or anything outside 7-bit ASCII, it is written as "xX" and two
    /// hexadecimal digits per byte instead.
    void write_quoted_name(const char* name);

    /// Writes a name in the same form, but inside a line.
    void write_bare_name(const char* name);

    /// Writes "bX" and two hexadecimal digits per byte.
    void write_hexadecimal_data(const unsigned char* data, size_t size);

    /// Copies the text of a finished shader.
    void write_shader(const ShaderBuffer& shader);

    void flush();

    /// Ends the output as if a write had failed with that `errno`: everything later is dropped.
    void fail(int error);

    /// The `errno` of the first failure, or 0.
    int write_error() const { return write_error_; }

    void set_indented(bool on) { indented_ = on; }
    int indent() const { return indent_; }
    void set_indent(int level) { indent_ = level; }
    void raise_indent() { ++indent_; }
    void lower_indent() { --indent_; }

    /// Directs later writes to a shader's buffer, or to the stream if `shader` is null.
    void set_target(ShaderBuffer* shader) { target_ = shader; }

private:
    void append_text(std::string_view text) {
        if (target_ == nullptr && text.size() <= line_buffer_.size() - gathered_) {
            std::memcpy(line_buffer_.data() + gathered_, text.data(), text.size());
            gathered_ += text.size();
        } else {
            append_elsewhere(text);
        }
    }
    void append_elsewhere(std::string_view text);
    void append_hexadecimal(char mark, const unsigned char* data, size_t size);
    void append_spaces(size_t& left);
    void send(const void* bytes, size_t size);

    std::FILE* stream_;
    ShaderBuffer* target_ = nullptr;
    int indent_ = 0;
    bool indented_ = false;
    int write_error_ = 0;  // once set, it stays, and nothing more is written
    std::vector<char> line_buffer_;
    size_t gathered_ = 0;  // bytes in `line_buffer_`
};
