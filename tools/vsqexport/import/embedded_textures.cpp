#include "tools/vsqexport/import/embedded_textures.h"

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <random>
#include <string_view>
#include <system_error>

#include "standins/host/memory/image_file.h"
#include "tools/vsqexport/import/texture_image.h"

namespace vsqexport {
namespace {

namespace fs = std::filesystem;

// Letters, digits and a few signs that mean nothing to any system.
std::string plain(const std::string& name) {
    constexpr std::size_t kLongest = 40;
    std::string text;
    for (const char c : name.substr(0, kLongest)) {
        const auto letter = static_cast<unsigned char>(c);
        text += letter < 0x80 && (std::isalnum(letter) || letter == '-') ? c : '_';
    }
    return text.empty() ? "model" : text;
}

std::string hash_of(const std::string& bytes) {
    std::uint64_t hash = 0xCBF29CE484222325u;  // FNV-1a
    for (const char byte : bytes) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3u;
    }
    char text[17];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash));
    return text;
}

// Readers choose how to decode an image by its extension, so this is what the bytes are, not what
// the model calls them.
const char* extension_of(std::string_view bytes) {
    constexpr struct {
        std::string_view start;
        const char* extension;
    } kKinds[] = {
        {"\x89PNG", ".png"},    {"\xFF\xD8\xFF", ".jpg"}, {"GIF8", ".gif"}, {"BM", ".bmp"},
        {"DDS ", ".dds"},       {"8BPS", ".psd"},         {"#?", ".hdr"},   {{"II*\0", 4}, ".tif"},
        {{"MM\0*", 4}, ".tif"}, {"v/1\x01", ".exr"},
    };
    for (const auto& kind : kKinds) {
        if (bytes.substr(0, kind.start.size()) == kind.start) {
            return kind.extension;
        }
    }
    return ".tga";  // the only one without a signature
}

bool holds(const fs::path& path, const std::string& bytes) {
    std::error_code error;
    if (fs::file_size(path, error) != bytes.size() || error) {
        return false;
    }
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {}) == bytes;
}

// Other exports may write or read the same file now, so it appears whole or not at all.
bool write_whole(const fs::path& path, const std::string& bytes) {
    fs::path unfinished = path;
    unfinished += "." + std::to_string(std::random_device()()) + ".part";
    std::ofstream file(unfinished, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    std::error_code error;
    if (!file.fail()) {
        fs::rename(unfinished, path, error);
        if (!error) {
            return true;
        }
    }
    fs::remove(unfinished, error);
    return false;
}

}  // namespace

EmbeddedTextures::EmbeddedTextures(fs::path folder, const std::string& model_name_utf8)
    : folder_(std::move(folder)), prefix_(plain(model_name_utf8)) {}

std::optional<fs::path> EmbeddedTextures::write(const aiTexture& texture) {
    const std::string bytes = texture.mHeight > 0 ? memhost::png_bytes(raw_image(texture))
                                                  : std::string(file_bytes(texture));
    return write(bytes, extension_of(bytes));
}

std::optional<fs::path> EmbeddedTextures::write(const std::string& bytes,
                                                const std::string& extension) {
    if (folder_.empty() || bytes.empty()) {
        return std::nullopt;
    }
    const std::string name = prefix_ + "-" + hash_of(bytes);
    for (int number = 1;; ++number) {
        const std::string mark = number == 1 ? "" : "-" + std::to_string(number);
        const fs::path path = folder_ / fs::u8path(name + mark + extension);
        std::error_code error;
        if (!fs::exists(path, error)) {
            return write_whole(path, bytes) ? std::optional<fs::path>(path) : std::nullopt;
        }
        if (holds(path, bytes)) {
            return path;
        }
    }
}

}  // namespace vsqexport
