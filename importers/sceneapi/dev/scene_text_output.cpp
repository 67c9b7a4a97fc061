#include "importers/sceneapi/dev/scene_text_output.h"

#include <algorithm>
#include <cerrno>

#include "importers/sceneapi/dev/shader_buffer.h"

namespace {

constexpr size_t kLineBufferSize = 0x100000;

// Larger blocks of bytes are written to the stream without buffering.
constexpr size_t kGatheredBytes = 0x10000;

struct PlainLetters {
    bool is_plain[256];  // by byte
};

constexpr PlainLetters find_plain_letters() {
    PlainLetters letters{};
    for (int i = 0; i < 0x80; ++i) {
        letters.is_plain[i] = i != '"' && i != '\r' && i != '\n';
    }
    return letters;
}

constexpr PlainLetters kLetters = find_plain_letters();

bool can_stand_in_quotes(std::string_view name) {
    return std::all_of(name.begin(), name.end(), [](char letter) {
        return kLetters.is_plain[static_cast<unsigned char>(letter)];
    });
}

}  // namespace

SceneTextOutput::SceneTextOutput(std::FILE* stream)
    : stream_(stream), line_buffer_(kLineBufferSize) {}

SceneTextOutput::~SceneTextOutput() {
    flush();
}

void SceneTextOutput::write_indented(std::initializer_list<std::string_view> parts) {
    size_t left = kLongestText;
    bool at_line_start = true;
    for (std::string_view part : parts) {
        if (!indented_) {
            part = part.substr(0, left);
            append_text(part);
            left -= part.size();
            continue;
        }
        while (!part.empty() && left > 0) {
            if (at_line_start) {
                append_spaces(left);
            }
            const size_t line_feed = part.find('\n');
            const size_t line_size =
                line_feed == std::string_view::npos ? part.size() : line_feed + 1;
            const std::string_view line = part.substr(0, std::min(line_size, left));
            append_text(line);
            left -= line.size();
            at_line_start = line_feed != std::string_view::npos;
            part.remove_prefix(line_size);
        }
    }
    // An empty text still starts a line.
    if (indented_ && left == kLongestText) {
        append_spaces(left);
    }
}

void SceneTextOutput::write_bytes(const void* bytes, size_t size) {
    if (target_ != nullptr) {
        target_->append_bytes(bytes, size);
    } else if (size <= kGatheredBytes) {
        append_text({static_cast<const char*>(bytes), size});
    } else {
        flush();
        send(bytes, size);
    }
}

void SceneTextOutput::write_quoted_name(const char* name) {
    const std::string_view text = text_or_empty(name);
    if (can_stand_in_quotes(text)) {
        if (indented_ || text.size() > kLongestText - 2) {
            write_indented({"\"", text, "\""});
            return;
        }
        append_text("\"");
        append_text(text);
        append_text("\"");
    } else {
        append_hexadecimal('x', reinterpret_cast<const unsigned char*>(text.data()), text.size());
    }
}

void SceneTextOutput::write_bare_name(const char* name) {
    const int level = indent_;
    indent_ = 0;
    write_quoted_name(name);
    indent_ = level;
}

void SceneTextOutput::write_hexadecimal_data(const unsigned char* data, size_t size) {
    append_hexadecimal('b', data, size);
}

void SceneTextOutput::write_shader(const ShaderBuffer& shader) {
    const std::string_view contents = shader.contents();
    if (shader.holds_bytes()) {
        write_bytes(contents.data(), contents.size());
    } else {
        write_indented(contents);
    }
}

void SceneTextOutput::flush() {
    send(line_buffer_.data(), gathered_);
    gathered_ = 0;
}

// To a shader, or to a buffer that is too full.
void SceneTextOutput::append_elsewhere(std::string_view text) {
    if (target_ != nullptr) {
        target_->append_text(text);
        return;
    }
    flush();
    if (text.size() > line_buffer_.size()) {
        send(text.data(), text.size());
    } else {
        append_text(text);
    }
}

void SceneTextOutput::append_hexadecimal(char mark, const unsigned char* data, size_t size) {
    constexpr char kDigits[] = "0123456789abcdef";
    char text[512] = {mark, 'X'};
    size_t used = 2;
    for (size_t i = 0; i < size; ++i) {
        if (used == sizeof text) {
            write_bytes(text, used);
            used = 0;
        }
        text[used++] = kDigits[data[i] >> 4];
        text[used++] = kDigits[data[i] & 0xf];
    }
    write_bytes(text, used);
}

void SceneTextOutput::append_spaces(size_t& left) {
    constexpr std::string_view kSpaces = "                                ";
    size_t wanted = std::min(static_cast<size_t>(std::max(indent_, 0)), left);
    left -= wanted;
    while (wanted > 0) {
        const size_t run = std::min(wanted, kSpaces.size());
        append_text(kSpaces.substr(0, run));
        wanted -= run;
    }
}

void SceneTextOutput::send(const void* bytes, size_t size) {
    // After a failed write the output is useless, so nothing more is written.
    if (stream_ == nullptr || size == 0 || write_error_ != 0) {
        return;
    }
    errno = 0;
    if (std::fwrite(bytes, 1, size, stream_) != size) {
        fail(errno != 0 ? errno : EIO);
    }
}

void SceneTextOutput::fail(int error) {
    if (write_error_ == 0) {
        write_error_ = error;
    }
}
