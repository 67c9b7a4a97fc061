#include "tools/vsqpicture/picture_session.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "tools/vsqinfo/display_text.h"
#include "tools/vsqinfo/input_file.h"
#include "tools/vsqpicture/id_picture.h"

namespace vsqpicture {
namespace {

constexpr int kLine = 14;  // pixels of a line of text

const Camera* camera_of(const PictureScene& scene, const std::string& name) {
    if (name.empty()) {
        return scene.cameras.empty() ? nullptr : &scene.cameras.front();
    }
    std::string known;
    for (const Camera& camera : scene.cameras) {
        const std::string shown = vsqinfo::display_text(camera.name);
        if (camera.name == name || shown == name) {
            return &camera;
        }
        known += (known.empty() ? "" : ", ") + shown;
    }
    throw std::runtime_error("the scene has no camera '" + name +
                             "' (it has: " + (known.empty() ? "none" : known) + ")");
}

CameraView view_of(PictureScene& scene, const RayScene& rays, const PictureRequest& request,
                   float aspect) {
    if (!request.view.empty()) {
        return CameraView::named(request.view, rays, aspect);
    }
    const Camera* const camera = camera_of(scene, request.camera);
    if (!camera) {
        return CameraView::framing(request.box.value_or(rays.box()), aspect);
    }
    if (!camera->is_perspective) {
        scene.note("cameras without perspective; they are drawn with it");
    }
    return CameraView::of(*camera, scene.world_matrices(request.frame), request.frame);
}

// The sky of the camera, or of the first one. The renderer's own sky, which every exported camera
// names, gives light only where nothing else does.
Sky sky_of(PictureScene& scene, const RayScene& rays, const PictureRequest& request) {
    constexpr const char* kStockSky = "startup.hdr";
    const Camera* const camera = camera_of(scene, request.camera);
    if (camera && !camera->sky.empty() && camera->sky != kStockSky) {
        // Beside lamps, a white sky gives the ground 100 lux; without them it is shown as it is.
        constexpr float kBesideLamps = 100 / 3.14159265f;
        try {
            return Sky::of_file(camera->sky, rays.has_lights() ? kBesideLamps : 1);
        } catch (const std::runtime_error& error) {
            scene.note(std::string("sky ") + error.what());
        }
    }
    return rays.has_lights() ? Sky() : Sky::even();
}

Image one_view(PictureScene& scene, const RayScene& rays, const PictureRequest& request) {
    const PictureOptions& options = request.options;
    const float aspect = static_cast<float>(options.width) / static_cast<float>(options.height);
    const CameraView view = view_of(scene, rays, request, aspect);
    return request.ids ? draw_ids(rays, view, options.width, options.height)
                       : draw_picture(rays, sky_of(scene, rays, request), view, options,
                                      scene.units_per_metre);
}

void fill_white(Image& image) {
    std::fill(image.pixels.begin(), image.pixels.end(), std::uint8_t{255});
}

// Four views with a line above each, and the scene's name and counts on top.
Image all_views(PictureScene& scene, const RayScene& rays, const std::string& title,
                const PictureRequest& request) {
    const struct {
        const char* name;
        const char* axes;
    } views[] = {{"front", "front: x to the right, z up"},
                 {"right", "right: y to the right, z up"},
                 {"top", "top: x to the right, y up"},
                 {"iso", "from above, front and right"}};
    std::uint64_t triangles = 0, segments = 0;
    for (const DrawnObject& object : rays.objects()) {
        triangles += object.triangles;
        segments += object.segments;
    }
    PictureRequest part = request;
    part.options.width = std::max(16, request.options.width / 2);
    part.options.height = std::max(16, request.options.height / 2);
    Image sheet(2 * part.options.width, 2 * (part.options.height + kLine) + kLine);
    fill_white(sheet);
    const Vec3 size = rays.box().is_empty() ? Vec3() : rays.box().maximum - rays.box().minimum;
    char extent[96];
    std::snprintf(extent, sizeof extent, "%g x %g x %g units", static_cast<double>(size.x),
                  static_cast<double>(size.y), static_cast<double>(size.z));
    write_text(sheet, 3, 3,
               title + ": " + std::to_string(rays.objects().size()) + " objects, " +
                   std::to_string(triangles) + " triangles, " + std::to_string(segments) +
                   " curve segments, " + extent,
               false);
    for (int i = 0; i < 4; ++i) {
        part.view = views[i].name;
        const int left = i % 2 * part.options.width;
        const int top = kLine + i / 2 * (part.options.height + kLine);
        write_text(sheet, left + 3, top + 3, views[i].axes, false);
        paste(sheet, one_view(scene, rays, part), left, top + kLine);
    }
    return sheet;
}

}  // namespace

Picture draw(PictureScene& scene, const std::string& title, const PictureRequest& request) {
    // Notes of an earlier picture aren't of this one, but those of reading are.
    const std::map<std::string, std::size_t> of_reading = scene.undrawn;
    const RayScene rays(scene, request.frame);
    Picture picture;
    picture.image = request.view == "all" ? all_views(scene, rays, title, request)
                                          : one_view(scene, rays, request);
    picture.box = rays.box();
    if (rays.box().is_empty()) {
        scene.note("anything: the scene has no surfaces");
    }
    if (request.ids) {
        picture.ids = ids_json(rays, picture.image);
    }
    for (const auto& [what, count] : scene.undrawn) {
        picture.notes.push_back(what + (count > 1 ? " (" + std::to_string(count) + " times)" : ""));
    }
    scene.undrawn = of_reading;
    return picture;
}

Image contact_sheet(const std::vector<std::string>& files) {
    std::vector<Image> pictures;
    int width = 1, height = 1;
    for (const std::string& file : files) {
        std::ifstream stream = vsqinfo::open_input_file(file);
        pictures.push_back(decoded_image({std::istreambuf_iterator<char>(stream), {}}));
        width = std::max(width, pictures.back().width);
        height = std::max(height, pictures.back().height);
    }
    const int count = static_cast<int>(pictures.size());
    const int columns = std::max(
        1, static_cast<int>(std::lround(std::sqrt(static_cast<double>(count * height) / width))));
    const int rows = (count + columns - 1) / columns;
    Image sheet(columns * width, std::max(1, rows) * (height + kLine));
    fill_white(sheet);
    for (int i = 0; i < count; ++i) {
        const int left = i % columns * width;
        const int top = i / columns * (height + kLine);
        paste(sheet, pictures[static_cast<std::size_t>(i)], left, top);
        write_text(
            sheet, left + 3, top + height + 3,
            std::filesystem::u8path(files[static_cast<std::size_t>(i)]).filename().u8string(),
            false);
    }
    return sheet;
}

}  // namespace vsqpicture
