#include "tools/vsqexport/import/camera_import.h"

#include <cmath>
#include <memory>

#include "standins/host/memory/cameras.h"
#include "tools/vsqexport/import/aim.h"
#include "tools/vsqexport/import/left_out.h"
#include "tools/vsqexport/import/model_reader.h"

namespace vsqexport {
namespace {

constexpr double kPi = 3.14159265358979323846;

// These readers leave assimp's default direction, the positive z axis of the node, but the cameras
// of their files look along the negative one.
constexpr const char* kReadersWithoutDirection[] = {"ASE Importer", "LightWave Scene Importer",
                                                    "Open Game Engine Exchange"};

bool gives_direction(const std::string& reader) {
    for (const char* other : kReadersWithoutDirection) {
        if (reader == other) {
            return false;
        }
    }
    return true;
}

double degrees_from(double radians) {
    return radians * 180.0 / kPi;
}

// The angle from side to side of a lens with that angle from bottom to top. A camera without an
// aspect takes that of the picture; a square one shows what the file says in both directions.
double across(double bottom_to_top, double aspect) {
    return 2 * std::atan(std::tan(bottom_to_top / 2) * (aspect > 0 ? aspect : 1.0));
}

// The whole angle from side to side, in radians. Assimp documents its value as half the angle, but
// its readers pass on the value of the file, which is the whole angle.
float horizontal_angle(const aiCamera& camera, const std::string& reader, const ColladaLens* lens) {
    const double angle = camera.mHorizontalFOV;
    const double aspect = camera.mAspect;
    double degrees = degrees_from(angle);
    if (reader == kGltf2Reader) {
        // The file has the angle from bottom to top, which this reader multiplies by the aspect.
        degrees = degrees_from(across(aspect > 0 ? angle / aspect : angle, aspect));
    }
    if (reader == k3dsReader) {
        // This reader takes the lens's focal length, in millimetres, for the angle.
        degrees = 2400.0 / degrees;
    }
    if (lens && lens->x_angle) {
        degrees = *lens->x_angle;
    } else if (lens && lens->y_angle) {
        degrees = degrees_from(across(*lens->y_angle * kPi / 180.0, lens->aspect.value_or(0)));
    }
    constexpr double kUsual = 45;
    const bool is_sensible = degrees >= 1.0 && degrees <= 179.0;
    return static_cast<float>((is_sensible ? degrees : kUsual) * kPi / 180.0);
}

std::shared_ptr<Object> make_camera(const aiCamera& source, const std::string& reader,
                                    const ColladaLens* lens) {
    auto camera = std::make_shared<memhost::MemoryCamera>();
    camera->fov(horizontal_angle(source, reader, lens));
    camera->orthographic(source.mOrthographicWidth > 0 || (lens && lens->is_orthographic));

    const aiCamera unset;
    const auto near_plane = static_cast<float>(lens ? lens->near_plane.value_or(0)
                                                    : static_cast<double>(source.mClipPlaneNear));
    const auto far_plane = static_cast<float>(lens ? lens->far_plane.value_or(0)
                                                   : static_cast<double>(source.mClipPlaneFar));
    const bool has_planes =
        lens || near_plane != unset.mClipPlaneNear || far_plane != unset.mClipPlaneFar;
    if (has_planes && near_plane > 0 && far_plane > near_plane && std::isfinite(far_plane)) {
        camera->planes(near_plane, far_plane).manual_clip();
    }
    return camera;
}

}  // namespace

void import_cameras(const aiScene& model, const std::vector<ColladaLens>& lenses,
                    const NodeIndex& nodes, HeldObjects& held, ImportWarnings& warnings) {
    const std::string reader = reader_of(model);
    const bool has_lenses = lenses.size() == model.mNumCameras;
    LeftOut left_out("camera", "import-camera");
    for (unsigned i = 0; i < model.mNumCameras; ++i) {
        const aiCamera& source = *model.mCameras[i];
        const std::string name = source.mName.C_Str();
        const aiNode* node = nodes.find(source.mName);
        if (!node) {
            left_out.add(name, "no node has that name");
            continue;
        }
        HeldObject camera = {name, make_camera(source, reader, has_lenses ? &lenses[i] : nullptr),
                             Matrix3()};
        camera.node_from_object.SetRow(3, place_in_node(*node, source.mPosition));
        if (gives_direction(reader) &&
            !set_direction(source.mLookAt, source.mUp, camera.node_from_object)) {
            left_out.add(name, "it has no direction");
            continue;
        }
        held[node].push_back(std::move(camera));
    }
    left_out.warn(warnings);
}

}  // namespace vsqexport
