#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <string_view>
#include <vector>

class ShaderBuffer;

/// Null stands for no text.
inline std::string_view text_or_empty(const char* text) {
    return text != nullptr ? text : "";
}

/// Where the text of a scene file goes: the few kinds of writes that all of its statements are made
/// of, with indentation, names and the choice between the stream and a shader's buffer.
///
/// Text for the stream gathers in one buffer, which is sent when it is full, when bytes go past it
/// and when the output ends; a write of its own for each statement costs several times as much. A
/// null stream drops everything.
class SceneTextOutput {
public:
    /// The longest text of one indented write, its indentation included; what is longer is cut.
    static constexpr size_t kLongestText = 0x100000 - 2;

    /// Borrows `stream`, which may be null.
    explicit SceneTextOutput(std::FILE* stream);

    SceneTextOutput(const SceneTextOutput&) = delete;
    SceneTextOutput& operator=(const SceneTextOutput&) = delete;

    /// Sends what has gathered.
    ~SceneTextOutput();

    /// Writes the joined parts at the start of a line: with the indentation in front and behind
    /// each line feed that has something behind it.
    void write_indented(std::initializer_list<std::string_view> parts);
    void write_indented(std::string_view text) { write_indented({text}); }

    /// Writes inside a line: no indentation, no limit.
    void write_raw(std::string_view text);

    /// As it is, and past the buffer if it is large.
    void write_bytes(const void* bytes, size_t size);

    /// A name where a line may begin with it: in double quotes, or as "xX" and two hexadecimal
    /// digits a byte if it holds a double quote, a line end, or anything outside 7-bit ASCII.
    void write_quoted_name(const char* name);

    /// The same inside a line.
    void write_bare_name(const char* name);

    /// "bX" and two hexadecimal digits a byte.
    void write_hexadecimal_data(const unsigned char* data, size_t size);

    /// The text of a finished shader.
    void write_shader(const ShaderBuffer& shader);

    void flush();

    /// Ends the output as a write that failed with that `errno` does: what comes later is dropped.
    void fail(int error);

    /// The `errno` of the first failure, or 0.
    int write_error() const { return write_error_; }

    void set_indented(bool on) { indented_ = on; }
    int indent() const { return indent_; }
    void set_indent(int level) { indent_ = level; }
    void raise_indent() { ++indent_; }
    void lower_indent() { --indent_; }

    /// Where the writes go from now on: to a shader's buffer, or with null to the stream.
    void set_target(ShaderBuffer* shader) { target_ = shader; }

private:
    void append_text(std::string_view text);
    void append_hexadecimal(char mark, const unsigned char* data, size_t size);
    void append_spaces(size_t& left);
    void send(const void* bytes, size_t size);

    std::FILE* stream_;
    ShaderBuffer* target_ = nullptr;
    int indent_ = 0;
    bool indented_ = false;
    int write_error_ = 0;  // once set it stays, and nothing more is sent
    std::vector<char> line_buffer_;
    size_t gathered_ = 0;  // bytes of `line_buffer_` that wait
};
