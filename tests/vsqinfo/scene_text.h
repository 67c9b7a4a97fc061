#pragma once

#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/qort_bytes.h"
#include "tools/vsqinfo/vsq_reader.h"

/// The texts of small scene files, built without the product's writer.
namespace scene_text {

inline const std::string kHeader =
    "//---quoria:dal:7---\n//---import:dal:1---\n//---id:1---\n"
    "// This is a Velmora scene file\n\n";
inline const std::string kStart = kHeader + "version 9\n\n";

/// A whole file with `content` in its root group.
inline std::string in_root(const std::string& content) {
    return kStart + "\ngroup \"object\" {\n" + content + "}\n";
}

inline std::string in_object(const std::string& content) {
    return in_root("object \"o\" {\n" + content + "}\n");
}

/// The body of a binary array with its head. `words` are the bits of the numbers; with the tag 'r',
/// two words make one number.
inline std::string body(char tag, const std::vector<std::uint32_t>& words) {
    const std::size_t count = tag == 'r' ? words.size() / 2 : words.size();
    return "\1\2\3" + std::string(1, tag) + qort_bytes::words({static_cast<std::uint32_t>(count)}) +
           qort_bytes::words(words);
}

/// A quoted parameter that is a binary array.
inline std::string binary(const std::string& name, char tag,
                          const std::vector<std::uint32_t>& words) {
    return "\"" + name + "\" [ " + body(tag, words) + "] ,\n";
}

inline vsqinfo::VsqSummary read(const std::string& file, vsqinfo::VsqListener* listener = nullptr) {
    std::istringstream stream(file);
    return vsqinfo::read_vsq(stream, listener);
}

/// A whole file with `content` in its root group, about which the checks find nothing to say.
inline std::string in_sound_root(const std::string& content) {
    return kHeader + "#print \"a writer\"\nversion 9\n\ngroup \"object\" {\n" + content + "}\n";
}

/// The error with which the reader refuses a file; nothing if it accepts it.
inline std::optional<vsqinfo::MalformedFile> refusal(const std::string& file) {
    try {
        read(file);
        return std::nullopt;
    } catch (const vsqinfo::MalformedFile& error) {
        return error;
    }
}

}  // namespace scene_text
