#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "standins/host/import/model_import.h"
#include "standins/host/memory/host_text.h"
#include "tests/import/exported_tracks.h"
#include "tests/support/exported_scene.h"

using namespace memhost;

namespace {

const std::string kModels = VSQ_TEST_MODELS "/";

#define SKIP_WITHOUT_MODELS()                                              \
    if (!std::filesystem::is_directory(VSQ_TEST_MODELS)) {                 \
        GTEST_SKIP() << "assimp-testmodels is not at " << VSQ_TEST_MODELS; \
    }

MemoryNode* find_node(SceneBuilder& scene, const std::string& name) {
    for (const auto& node : scene.host().nodes()) {
        if (utf8_from_units(node->GetName()) == name) {
            return node.get();
        }
    }
    return nullptr;
}

Point3 unit(const Point3& v) {
    const float length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    return {v.x / length, v.y / length, v.z / length};
}

void expect_near(const Point3& given, const Point3& wanted, float tolerance, const char* what) {
    EXPECT_NEAR(given.x, wanted.x, tolerance) << what;
    EXPECT_NEAR(given.y, wanted.y, tolerance) << what;
    EXPECT_NEAR(given.z, wanted.z, tolerance) << what;
}

struct Lens {
    float fov_degrees;
    float near_plane;  // 0: it doesn't clip
};

// `seen` is a point in the middle of what the camera looks at.
void expect_camera(const std::string& file, const std::string& name, const Point3& place,
                   const Point3& seen, const Point3& up, const Lens& lens) {
    SCOPED_TRACE(file);
    SceneBuilder scene;
    import_model(kModels + file, scene);
    MemoryNode* node = find_node(scene, name);
    ASSERT_NE(node, nullptr);
    auto* camera = dynamic_cast<CameraObject*>(node->EvalWorldState(0).obj);
    ASSERT_NE(camera, nullptr);
    CameraState state;
    Interval valid = FOREVER;
    camera->EvalCameraState(0, valid, &state);
    EXPECT_NEAR(state.fov * 57.29578f, lens.fov_degrees, 1e-2f);
    EXPECT_EQ(state.manualClip ? state.hither : 0, lens.near_plane);

    // As it is written: a matrix, or the first of a track.
    const std::string text = exported(scene);
    const size_t block = text.find("camera \"" + name + "\" {");
    ASSERT_NE(block, std::string::npos);
    size_t at = std::min(text.find("\ntransform ", block), text.find("\"matrices\" [ ", block));
    const ExportedTrack::Matrix m = read_matrix(text, at);
    const auto row = [&m](size_t i) {
        return Point3(static_cast<float>(m[4 * i]), static_cast<float>(m[4 * i + 1]),
                      static_cast<float>(m[4 * i + 2]));
    };
    expect_near(row(3), place, 1e-3f, "place");
    expect_near(unit(row(2)), unit(place - seen), 1e-3f, "direction");
    expect_near(unit(row(1)), up, 1e-3f, "up");
}

// Places, targets and angles as the files have them, turned to Z up.
TEST(ModelCamera, StandsLooksAndOpensAsInTheFile) {
    SKIP_WITHOUT_MODELS();
    expect_camera("3DS/CameraRollAnim.3ds", "Camera01", {-153.0771f, 3.272f, 22.7776f},
                  {-37.228f, -0.2205f, 22.7776f}, {0, 0.0009f, 1}, {45, 0});
    expect_camera("Collada/cameras.dae", "Camera", {10, 0, 0}, {}, {0, 1, 0}, {49.13434f, 0.1f});
    expect_camera("glTF2/cameras/Cameras.gltf", "nodes[1]", {0.5f, -3, 0.5f}, {0.5f, 0, 0.5f},
                  {0, 0, 1}, {40.107f, 0.01f});
    expect_camera("FBX/spider.fbx", "Camera", {748.113f, -650.764f, 534.367f},
                  {93.251f, -40.098f, 89.122f}, {-0.3174f, 0.3125f, 0.8953f}, {49.134f, 10});
    expect_camera("NFF/NFF/WithCamera.nff", "<NFF_Camera>", {0, -10, 3}, {}, {0, 0.2873f, 0.9578f},
                  {60, 0});
    expect_camera("LWS/move_x.lws", "Camera_(30000000)", {-0.1f, -6.384f, 0.95f}, {-0.1f, 0, 0.95f},
                  {0, 0, 1}, {45, 0});
    expect_camera("OpenGEX/camera.ogex", "Camera", {7.4811f, -5.3437f, -6.5076f},
                  {0.9325f, -0.8912f, -0.4010f}, {-0.3174f, -0.8953f, 0.3125f}, {49.134f, 0.1f});
}

// The host wrote these scenes in two formats; the readers of both have to arrive at the same
// motion, also of what hangs on a camera. Between their keys the 3DS files leave the ease out.
TEST(ModelCamera, MovesInA3dsFileAsInTheAseFileOfTheSameScene) {
    SKIP_WITHOUT_MODELS();
    struct Moving {
        const char* scene;
        const char* node;
        std::vector<int> frames;
    };
    const Moving cases[] = {{"CameraRollAnim", "Camera01", {0, 120}},
                            {"TargetCameraAnim", "Camera01", {0, 30, 90}},
                            {"CameraRollAnimWithChildObject", "Camera01", {0, 120}},
                            {"CameraRollAnimWithChildObject", "Box02", {0, 120}}};
    for (const Moving& moving : cases) {
        SceneBuilder ase;
        SceneBuilder max_3ds;
        import_model(kModels + "ASE/" + moving.scene + ".ase", ase);
        import_model(kModels + "3DS/" + moving.scene + ".3ds", max_3ds);
        EXPECT_EQ(max_3ds.host().GetAnimRange().End(), ase.host().GetAnimRange().End());
        for (const int frame : moving.frames) {
            const Matrix3 wanted = find_node(ase, moving.node)->GetNodeTM(frame * 160);
            const Matrix3 given = find_node(max_3ds, moving.node)->GetNodeTM(frame * 160);
            for (int row = 0; row < 4; ++row) {
                SCOPED_TRACE(std::to_string(frame) + " row " + std::to_string(row));
                expect_near(given.GetRow(row), wanted.GetRow(row), row < 3 ? 2e-3f : 0.06f,
                            moving.scene);
            }
        }
    }
}

void expect_omni(const std::string& file, const std::string& name, const Point3& place,
                 float intensity, const Point3& color) {
    SCOPED_TRACE(file);
    SceneBuilder scene;
    import_model(kModels + file, scene);
    MemoryNode* node = find_node(scene, name);
    ASSERT_NE(node, nullptr);
    auto* light = dynamic_cast<GenLight*>(node->EvalWorldState(0).obj);
    ASSERT_NE(light, nullptr);
    EXPECT_EQ(light->Type(), OMNI_LIGHT);
    EXPECT_EQ(light->GetIntensity(0), intensity);
    expect_near(light->GetRGBColor(0), color, 1e-4f, "colour");
    expect_near(node->GetNodeTM(0).GetTrans(), place, 1e-3f, "place");
}

TEST(ModelLight, IsAnOmniLightWithItsColourAndIntensity) {
    SKIP_WITHOUT_MODELS();
    expect_omni("ASE/anim2.ASE", "Sky01", {-38.5409f, -85.6864f, 74.871f}, 1, {0.95f, 0.95f, 1});
    expect_omni("BLEND/box.blend", "Light", {4.0762f, 1.0055f, 5.9039f}, 1000, {1, 1, 1});
    expect_omni("LWS/move_x_oldformat_56.lws", "Light_(20000000)", {-2, -2, 2}, 1, {1, 1, 1});
    expect_omni("NFF/NFF/ManyEarthsNotJustOne.nff", "<NFF_Light1>", {1, -4, -4}, 1, {1, 1, 1});
}

TEST(ModelLight, OfAnotherKindIsLeftOutWithALineForEachKind) {
    SKIP_WITHOUT_MODELS();
    using testing::HasSubstr;
    SceneBuilder scene;
    EXPECT_THAT(import_model(kModels + "Collada/lights.dae", scene),
                testing::UnorderedElementsAre(HasSubstr("\"Spot\" is left out: it is a spot"),
                                              HasSubstr("\"Sun\" is left out: it is directional"),
                                              HasSubstr("\"Hemi\" is left out: it is ambient")));
}

// FBX cameras look along x, so the node is turned; what hangs on it has to stay.
TEST(ModelCamera, LeavesItsChildrenInTheirPlaces) {
    const TemporaryFolder folder;
    const std::string path = folder / "child.fbx";
    std::ofstream(std::filesystem::u8path(path)) << R"(; FBX 7.4.0 project file
FBXHeaderExtension:  { FBXVersion: 7400 }
Objects:  {
    NodeAttribute: 11, "NodeAttribute::Cam", "Camera" { TypeFlags: "Camera" }
    Model: 12, "Model::Cam", "Camera" {
        Properties70:  { P: "Lcl Translation", "Lcl Translation", "", "A",1,2,3 } }
    Model: 13, "Model::Child", "Null" {
        Properties70:  { P: "Lcl Translation", "Lcl Translation", "", "A",4,5,6 } }
}
Connections:  { C: "OO",12,0
    C: "OO",11,12
    C: "OO",13,12 }
)";
    SceneBuilder scene;
    import_model(path, scene);
    MemoryNode* camera = find_node(scene, "Cam");
    MemoryNode* child = find_node(scene, "Child");
    ASSERT_TRUE(camera && child);
    expect_near(camera->GetNodeTM(0).GetRow(2), {-1, 0, 0}, 1e-6f, "direction");
    expect_near(child->GetNodeTM(0).GetTrans(), {5, -9, 7}, 1e-5f, "place");
    expect_near(child->GetNodeTM(0).GetRow(0), {1, 0, 0}, 1e-6f, "turn");
}

}  // namespace
