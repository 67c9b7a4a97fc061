#include "tools/vsqexport/import/gltf_curves.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include <nlohmann/json.hpp>

namespace vsqexport {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

std::string content_of(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::uint32_t number_at(const std::string& bytes, std::size_t place) {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;) {
        number = number << 8 | static_cast<unsigned char>(bytes[place + i]);
    }
    return number;
}

// The two parts of a binary file; of a text file only the first.
struct Chunks {
    std::string json;
    std::string binary;
};

Chunks chunks_of(std::string file) {
    constexpr std::size_t kHeader = 12;
    constexpr std::size_t kChunkHeader = 8;
    if (file.compare(0, 4, "glTF") != 0) {
        return {std::move(file), ""};
    }
    Chunks chunks;
    std::size_t place = kHeader;
    for (std::string* const chunk : {&chunks.json, &chunks.binary}) {
        if (place + kChunkHeader > file.size()) {
            break;
        }
        *chunk = file.substr(place + kChunkHeader, number_at(file, place));
        place += kChunkHeader + chunk->size();
    }
    return chunks;
}

std::string base64_decoded(std::string_view text) {
    constexpr std::string_view kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    std::uint32_t bits = 0;
    int count = 0;
    for (const char c : text) {
        const std::size_t digit = kDigits.find(c);
        if (digit == std::string_view::npos) {
            continue;
        }
        bits = bits << 6 | static_cast<std::uint32_t>(digit);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>(bits >> count & 0xFF);
        }
    }
    return bytes;
}

// Reads numbers of a file. Throws `Json::exception` or `std::exception` for whatever isn't there.
class GltfNumbers {
public:
    GltfNumbers(const Json& root, const fs::path& folder, std::string binary)
        : root_(root), folder_(folder), binary_(std::move(binary)) {}

    // The numbers of an accessor of floats, one after the other; nothing for another kind.
    std::optional<std::vector<double>> floats(const Json& number) {
        constexpr int kFloat = 5126;
        const Json& accessor = root_.at("accessors").at(number.get<std::size_t>());
        if (accessor.at("componentType") != kFloat || accessor.contains("sparse")) {
            return std::nullopt;
        }
        const std::size_t components = components_of(accessor.at("type").get<std::string>());
        const Json& view = root_.at("bufferViews").at(accessor.at("bufferView").get<std::size_t>());
        const std::string& bytes = buffer(view.at("buffer").get<std::size_t>());
        const std::size_t stride = view.value("byteStride", components * sizeof(float));
        const std::size_t start =
            view.value("byteOffset", std::size_t{0}) + accessor.value("byteOffset", std::size_t{0});
        const auto count = accessor.at("count").get<std::size_t>();
        std::vector<double> numbers;
        for (std::size_t i = 0; i < count; ++i) {
            for (std::size_t c = 0; c < components; ++c) {
                const std::size_t place = start + i * stride + c * sizeof(float);
                if (place > bytes.size() || bytes.size() - place < sizeof(float)) {
                    return std::nullopt;
                }
                float value = 0;
                std::memcpy(&value, bytes.data() + place, sizeof value);
                numbers.push_back(value);
            }
        }
        return numbers;
    }

private:
    static std::size_t components_of(const std::string& type) {
        return type == "VEC3" ? 3 : type == "VEC4" ? 4 : 1;
    }

    const std::string& buffer(std::size_t number) {
        const auto known = buffers_.find(number);
        if (known != buffers_.end()) {
            return known->second;
        }
        const std::string uri = root_.at("buffers").at(number).value("uri", "");
        std::string bytes;
        if (uri.empty()) {
            bytes = binary_;
        } else if (uri.compare(0, 5, "data:") == 0) {
            bytes = base64_decoded(std::string_view(uri).substr(uri.find(',') + 1));
        } else {
            bytes = content_of(folder_ / fs::u8path(uri));
        }
        return buffers_.emplace(number, std::move(bytes)).first->second;
    }

    const Json& root_;
    fs::path folder_;
    std::string binary_;
    std::map<std::size_t, std::string> buffers_;
};

// A key of a cubic curve has three values: the slope before it, its own, and the slope behind it.
std::vector<KeySlopes> slopes_of(const std::vector<double>& numbers, std::size_t components) {
    std::vector<KeySlopes> slopes(numbers.size() / (3 * components));
    for (std::size_t i = 0; i < slopes.size(); ++i) {
        for (std::size_t c = 0; c < components; ++c) {
            slopes[i].in[c] = numbers[i * 3 * components + c];
            slopes[i].out[c] = numbers[(i * 3 + 2) * components + c];
        }
    }
    return slopes;
}

std::string node_name(const Json& root, std::size_t number) {
    const std::string name = root.at("nodes").at(number).value("name", "");
    return name.empty() ? "nodes[" + std::to_string(number) + "]" : name;
}

void read_animation(const Json& root, unsigned number, GltfNumbers& numbers, GltfCurves& curves) {
    const Json& animation = root.at("animations").at(number);
    for (const Json& channel : animation.at("channels")) {
        const Json& target = channel.at("target");
        const Json& sampler = animation.at("samplers").at(channel.at("sampler").get<std::size_t>());
        const std::string kind = sampler.value("interpolation", "LINEAR");
        if (kind == "LINEAR" || !target.contains("node")) {
            continue;
        }
        const auto path = target.at("path").get<std::string>();
        GltfCurve curve;
        if (kind == "STEP") {
            curve.interpolation = Interpolation::kStep;
        } else if (kind == "CUBICSPLINE" && path == "weights") {
            curve.interpolation = Interpolation::kCubic;
        } else if (kind == "CUBICSPLINE") {
            if (const auto values = numbers.floats(sampler.at("output"))) {
                curve = {Interpolation::kCubic, slopes_of(*values, path == "rotation" ? 4 : 3)};
            }
        }
        curves.emplace(
            std::make_tuple(number, node_name(root, target.at("node").get<std::size_t>()), path),
            std::move(curve));
    }
}

}  // namespace

GltfCurves read_gltf_curves(const fs::path& path) {
    GltfCurves curves;
    Chunks chunks = chunks_of(content_of(path));
    const Json root = Json::parse(chunks.json, nullptr, false);
    if (!root.is_object() || !root.contains("animations")) {
        return curves;
    }
    GltfNumbers numbers(root, path.parent_path(), std::move(chunks.binary));
    for (unsigned i = 0; i < root["animations"].size(); ++i) {
        try {
            read_animation(root, i, numbers, curves);
        } catch (const Json::exception&) {
            continue;  // what assimp made of a faulty animation counts
        }
    }
    return curves;
}

}  // namespace vsqexport
