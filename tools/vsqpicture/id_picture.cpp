#include "tools/vsqpicture/id_picture.h"

#include <cstdio>
#include <map>
#include <nlohmann/json.hpp>
#include <unordered_map>
#include <utility>

namespace vsqpicture {

std::uint32_t id_colour(std::size_t object) {
    // An odd factor gives each number below 2^24 another one, and neighbours differ clearly.
    constexpr std::uint32_t kFactor = 0x9e3779b1u;
    return (static_cast<std::uint32_t>(object) + 1) * kFactor & 0xffffffu;
}

Image draw_ids(const RayScene& scene, const CameraView& view, int width, int height) {
    Image image(width, height);
    const float aspect = static_cast<float>(width) / static_cast<float>(height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const float u = (static_cast<float>(x) + 0.5f) / static_cast<float>(width);
            const float v = (static_cast<float>(y) + 0.5f) / static_cast<float>(height);
            std::uint8_t* const pixel = image.at(x, y);
            pixel[3] = 255;
            if (const auto hit = scene.trace(view.ray(u, v, aspect), view.near(), view.far())) {
                const std::uint32_t colour = id_colour(hit->object);
                pixel[0] = static_cast<std::uint8_t>(colour >> 16);
                pixel[1] = static_cast<std::uint8_t>(colour >> 8);
                pixel[2] = static_cast<std::uint8_t>(colour);
            }
        }
    }
    return image;
}

std::string ids_json(const RayScene& scene, const Image& image) {
    std::unordered_map<std::uint32_t, std::uint64_t> pixels;
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            const std::uint8_t* const p = image.at(x, y);
            ++pixels[std::uint32_t{p[0]} << 16 | std::uint32_t{p[1]} << 8 | p[2]];
        }
    }
    std::map<std::pair<std::string, std::string>, int> seen;
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (std::size_t i = 0; i < scene.objects().size(); ++i) {
        const DrawnObject& object = scene.objects()[i];
        const std::uint32_t colour = id_colour(i);
        char text[16];
        std::snprintf(text, sizeof text, "#%06x", static_cast<unsigned>(colour));
        nlohmann::ordered_json entry = {{"colour", text},
                                        {"path", object.path},
                                        {"name", object.name},
                                        {"pixels", pixels[colour]}};
        if (const int number = seen[{object.path, object.name}]++; number != 0) {
            entry["number"] = number + 1;
        }
        list.push_back(entry);
    }
    return list.dump(1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

}  // namespace vsqpicture
