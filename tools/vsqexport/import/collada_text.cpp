#include "tools/vsqexport/import/collada_text.h"

#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <string_view>

namespace vsqexport {
namespace {

struct Element {
    std::string_view attributes;  // from the name to the end of the start tag
    std::string_view content;     // empty for an element without an end tag
};

// The first element of that name at or behind `from`, which is then set to the end of its start
// tag. Nothing if there is no such element.
std::optional<Element> element(std::string_view text, const std::string& name, std::size_t& from) {
    const std::string start = "<" + name;
    constexpr std::string_view kEndsOfNames = " >/\t\r\n";
    std::size_t tag = text.find(start, from);
    while (tag != std::string_view::npos && tag + start.size() < text.size() &&
           kEndsOfNames.find(text[tag + start.size()]) == std::string_view::npos) {
        tag = text.find(start, tag + 1);  // the beginning of a longer name
    }
    const std::size_t open = tag == std::string_view::npos ? tag : text.find('>', tag);
    if (open == std::string_view::npos) {
        return std::nullopt;
    }
    from = open;
    Element found = {text.substr(tag, open - tag), ""};
    const std::size_t end = text.find("</" + name + ">", open);
    if (text[open - 1] != '/' && end != std::string_view::npos) {
        found.content = text.substr(open + 1, end - open - 1);
    }
    return found;
}

std::string attribute(const Element& element, const std::string& name) {
    for (const char quote : {'"', '\''}) {
        const std::string start = " " + name + "=" + quote;
        const std::size_t place = element.attributes.find(start);
        if (place != std::string_view::npos) {
            const std::string_view value = element.attributes.substr(place + start.size());
            return std::string(value.substr(0, value.find(quote)));
        }
    }
    return "";
}

std::optional<double> number(std::string_view text, const std::string& name) {
    std::size_t from = 0;
    const auto found = element(text, name, from);
    if (!found) {
        return std::nullopt;
    }
    const std::string digits(found->content);
    char* end = nullptr;
    const double value = std::strtod(digits.c_str(), &end);
    return end != digits.c_str() ? std::optional<double>(value) : std::nullopt;
}

ColladaLens lens_in(std::string_view camera) {
    ColladaLens lens;
    lens.is_orthographic = camera.find("<orthographic") != std::string_view::npos;
    lens.x_angle = number(camera, "xfov");
    lens.y_angle = number(camera, "yfov");
    lens.aspect = number(camera, "aspect_ratio");
    lens.near_plane = number(camera, "znear");
    lens.far_plane = number(camera, "zfar");
    return lens;
}

}  // namespace

ColladaText read_collada_text(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(file), {});

    ColladaText read;
    read.frame_rate = number(text, "frame_rate");
    std::map<std::string, ColladaLens> lenses;  // by the id
    std::size_t from = 0;
    while (const auto camera = element(text, "camera", from)) {
        lenses["#" + attribute(*camera, "id")] = lens_in(camera->content);
    }
    from = 0;
    while (const auto shown = element(text, "instance_camera", from)) {
        const auto lens = lenses.find(attribute(*shown, "url"));
        if (lens != lenses.end()) {
            read.lenses.push_back(lens->second);
        }
    }
    return read;
}

}  // namespace vsqexport
