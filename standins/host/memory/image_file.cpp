#include "standins/host/memory/image_file.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>

// Other libraries in the process may contain stb as well.
#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#define STBI_NO_STDIO
#include <stb/stb_image.h>
#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>

#include "standins/host/memory/host_text.h"

namespace memhost {
namespace {

namespace fs = std::filesystem;

fs::path file_path(const std::wstring& path) {
    return fs::u8path(utf8_from_units(path));
}

// Only regular files are opened: reading a folder would fail, and reading a pipe would wait.
std::ifstream open_image(const std::wstring& path) {
    std::error_code error;
    const fs::path file = file_path(path);
    return fs::is_regular_file(file, error) ? std::ifstream(file, std::ios::binary)
                                            : std::ifstream();
}

// Lets stb read from a file stream.
const stbi_io_callbacks kStream = {
    [](void* user, char* data, int size) {
        std::ifstream& file = *static_cast<std::ifstream*>(user);
        file.read(data, size);
        return static_cast<int>(file.gcount());
    },
    [](void* user, int count) { static_cast<std::ifstream*>(user)->seekg(count, std::ios::cur); },
    [](void* user) { return static_cast<int>(static_cast<std::ifstream*>(user)->peek() == EOF); },
};

constexpr int kSignatureLength = 4;

// Formats that the host can read but stb can't: DDS, TIFF in either byte order, OpenEXR.
constexpr std::string_view kOtherSignatures[] = {
    "DDS ",
    {"II*\0", kSignatureLength},
    {"MM\0*", kSignatureLength},
    {"v/1\x01", kSignatureLength},
};

bool is_other_image(std::string_view head) {
    for (const std::string_view signature : kOtherSignatures) {
        if (head == signature) {
            return true;
        }
    }
    return false;
}

void append_bytes(void* context, void* data, int size) {
    static_cast<std::string*>(context)->append(static_cast<const char*>(data),
                                               static_cast<std::size_t>(size));
}

}  // namespace

std::optional<ImageSize> read_image_size(const std::wstring& path) {
    std::ifstream file = open_image(path);
    char head[kSignatureLength] = {};
    if (!file.read(head, kSignatureLength)) {
        return std::nullopt;
    }
    if (is_other_image({head, kSignatureLength})) {
        return ImageSize();
    }
    file.seekg(0);
    ImageSize size;
    int channels = 0;
    if (!stbi_info_from_callbacks(&kStream, &file, &size.width, &size.height, &channels)) {
        return std::nullopt;
    }
    return size;
}

std::optional<ImageSize> image_size(const std::vector<unsigned char>& bytes) {
    const char* const head = reinterpret_cast<const char*>(bytes.data());
    if (bytes.size() >= kSignatureLength && is_other_image({head, kSignatureLength})) {
        return ImageSize();
    }
    ImageSize size;
    int channels = 0;
    if (!stbi_info_from_memory(bytes.data(), static_cast<int>(bytes.size()), &size.width,
                               &size.height, &channels)) {
        return std::nullopt;
    }
    return size;
}

std::optional<Image> decode_image(const std::vector<unsigned char>& bytes) {
    static_assert(sizeof(Pixel) == 4, "decoded pixels are copied byte by byte");
    int width = 0;
    int height = 0;
    int channels = 0;
    stbi_uc* decoded = stbi_load_from_memory(bytes.data(), static_cast<int>(bytes.size()), &width,
                                             &height, &channels, STBI_rgb_alpha);
    if (!decoded) {
        return std::nullopt;
    }
    Image image(width, height);
    std::memcpy(image.pixels.data(), decoded, image.pixels.size() * sizeof(Pixel));
    stbi_image_free(decoded);
    return image;
}

std::optional<Image> read_image(const std::wstring& path) {
    std::ifstream file = open_image(path);
    const std::vector<unsigned char> bytes{std::istreambuf_iterator<char>(file), {}};
    return decode_image(bytes);
}

std::string png_bytes(const Image& image) {
    std::string bytes;
    const bool is_encoded = stbi_write_png_to_func(append_bytes, &bytes, image.width, image.height,
                                                   STBI_rgb_alpha, image.pixels.data(), 0) != 0;
    return is_encoded ? bytes : std::string();
}

bool write_png(const std::wstring& path, const Image& image) {
    const std::string bytes = png_bytes(image);
    if (bytes.empty()) {
        return false;
    }
    std::ofstream file(file_path(path), std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return !file.fail();
}

}  // namespace memhost
