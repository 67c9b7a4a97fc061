#include <optional>
#include <string>
#include <vector>

#include "importers/sceneapi/dev/parameter_codes.h"
#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "model/euler_matrix.h"
#include "platform/wide_text.h"
#include "plugins/3dsmax/export/asset_files.h"
#include "plugins/3dsmax/export/light_converter.h"
#include "plugins/3dsmax/export/light_lumens.h"
#include "plugins/3dsmax/export/light_notes.h"
#include "plugins/3dsmax/export/param_value.h"
#include "plugins/3dsmax/export/truncated_int.h"

namespace {

// Parameters of the block `PB_WEB`; the rotations are in degrees.
constexpr ParamID kWebFile = 0;
constexpr ParamID kWebRotationX = 1;
constexpr ParamID kWebRotationY = 2;
constexpr ParamID kWebRotationZ = 3;

// Added to a web's own rotation about x, in degrees.
constexpr double kQuarterTurn = 90.0;

// A measured distribution of light and its rotation.
struct Web {
    std::string file;
    qorMatrix rotation;
};

bool ends_in_ies(const std::wstring& file) {
    constexpr wchar_t kEnding[] = {L'i', L'e', L's'};
    constexpr size_t kLength = 3;
    if (file.size() < kLength) {
        return false;
    }
    const wchar_t* unit = &file[file.size() - kLength];
    for (const wchar_t small_letter : kEnding) {
        if ((*unit++ | 0x20) != small_letter) {  // to lower case
            return false;
        }
    }
    return true;
}

// No value unless the light has a web and the host finds its file.
std::optional<Web> find_web(LightscapeLight& light, Interface* host, const NodeNotes& notes) {
    if (light.GetDistribution() != LightscapeLight::WEB_DIST) {
        return std::nullopt;
    }
    IParamBlock2* const params = light.GetParamBlockByID(LightscapeLight::PB_WEB);
    if (params == nullptr) {
        notes.add(Note::kLightWebMissing, "the light has no parameters of a web");
        return std::nullopt;
    }
    const MCHAR* const name =
        ParamValue<const MCHAR*>(*params, kWebFile, kFixedTime).value_or(nullptr);
    if (name == nullptr || !ends_in_ies(name)) {
        if (notes) {
            notes.add(Note::kLightWebNotIes, {}, platform::utf8_from_wide(name ? name : L""));
        }
        return std::nullopt;
    }
    const std::wstring file = FindAssetFile(host, MaxSDK::AssetManagement::kPhotometricAsset, name);
    if (file.empty()) {
        if (notes) {
            notes.add(Note::kLightWebMissing, {}, platform::utf8_from_wide(name));
        }
        return std::nullopt;
    }
    const MSTR host_text(file.c_str());
    const auto narrow = host_text.ToCStr();
    const auto degrees = [params](ParamID id) {
        return static_cast<double>(ParamValue<float>(*params, id, kFixedTime).value_or(0.0f));
    };
    return Web{narrow.data(), qor::EulerMatrix(degrees(kWebRotationX) + kQuarterTurn,
                                               degrees(kWebRotationY), degrees(kWebRotationZ))};
}

// The renderer's lights are surfaces, so a triangle without area carries the light's shader, which
// `write_shader` writes. `rotation` can be null.
template <typename WriteShader>
void write_carrier(qor::qorSceneapi_oo& scene, const std::string& name, const std::string& material,
                   const qorMatrix* rotation, WriteShader write_shader) {
    qorScene_api& api = *scene.get_api();
    api.begin_object(name.c_str(), true);
    if (rotation != nullptr) {
        api.transform(*rotation);
    }
    std::vector<float> vertices;
    for (int i = 0; i < 3; ++i) {
        vertices.insert(vertices.end(), 3, static_cast<float>(i * 0.001));
    }
    api.begin_geometry("triangles");
    scene.set_vec3_array("vertices", vertices);
    scene.set_array("triangles", std::vector<int>{0, 1, 2});
    api.end_geometry();
    api.begin_material(material.c_str(), true);
    write_shader();
    const qorShaderHandle shader = api.current_shader();
    api.assign_shader(shader_kind::kSurface, shader);
    api.end_material();
    api.end_object();
}

void write_point_shader(qor::qorSceneapi_oo& scene, bool in_lumen, float power,
                        const Point3& color) {
    qorScene_api& api = *scene.get_api();
    api.begin_shader(nullptr, "qor_point_light");
    scene.set_parameter("lumen", in_lumen);
    scene.set_parameter("power", TruncateToInt(power));
    scene.set_parameter("color", qorColor{color.x, color.y, color.z});
    api.end_shader();
}

void write_ies_shader(qor::qorSceneapi_oo& scene, const std::string& file) {
    qorScene_api& api = *scene.get_api();
    api.begin_shader(nullptr, "qor_ies_light");
    scene.set_parameter("file", file);
    api.end_shader();
}

}  // namespace

void LightConverter::ConvertOmniLight(GenLight& light, const Job& job) {
    const float power = light.GetIntensity(job.time);
    NotePower(job.notes, power);
    const Point3 rgb = light.GetRGBColor(kFixedTime);
    const Point3 color(rgb.x / 255.0f, rgb.y / 255.0f, rgb.z / 255.0f);
    write_carrier(job.scene, job.name, job.material_name, nullptr,
                  [&] { write_point_shader(job.scene, false, power, color); });
}

void LightConverter::ConvertPointLight(LightscapeLight& light, const Job& job) {
    const std::optional<Web> web = find_web(light, host_, job.notes);
    const qorMatrix* const rotation = web ? &web->rotation : nullptr;
    write_carrier(job.scene, job.name, job.material_name, rotation, [&] {
        if (web) {
            write_ies_shader(job.scene, web->file);
        } else {
            const float power = LightLumens(light, kFixedTime);
            NotePower(job.notes, power);
            write_point_shader(job.scene, true, power, KelvinToColor(light, job.time));
        }
    });
}
