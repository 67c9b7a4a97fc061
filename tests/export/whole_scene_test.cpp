#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

#include "standins/host/memory/image_file.h"
#include "standins/host/memory/splines.h"
#include "tests/support/exported_libraries.h"
#include "tests/support/exported_meshes.h"
#include "tests/support/exported_scene.h"

// Whole scenes in which everything changes with time, compared with scenes that stand still.

namespace {

using namespace memhost;
using testing::HasSubstr;
using testing::Not;

constexpr int kFrame = 160;  // ticks at 30 frames a second
constexpr int kFirst = 2;    // of the range; the passes are at other frames than 0 and this one
constexpr int kLast = 6;
const Class_ID kBone(0x28bf6e8d, 0x2ecca840);

// What a changing object takes for the time: the time itself, or always the same tick.
using Clock = std::function<TimeValue(TimeValue)>;
const Clock running = [](TimeValue t) { return t; };
Clock stopped_at(int frame) {
    return [frame](TimeValue) { return frame * kFrame; };
}

float number_at(TimeValue t) {
    return 0.25f + static_cast<float>(t) / 4096.0f;
}
TimedNumber number(const Clock& clock) {
    return [clock](TimeValue t) { return number_at(clock(t)); };
}
TimedColor color(const Clock& clock) {
    return [clock](TimeValue t) { return Color(number_at(clock(t)), 0.5f, 0.25f); };
}

// A mesh whose vertices move at every tick, with two material ids.
DeformingMesh waving(const Clock& clock) {
    return DeformingMesh(box_mesh(1, 2, 3).map_positions(1))
        .moves([clock](TimeValue t, const Mesh& rest, Mesh& now) {
            for (int v = 0; v < now.numVerts; ++v) {
                now.verts[v] = rest.verts[v] * (1.0f + number_at(clock(t)) * static_cast<float>(v));
            }
        });
}

// A camera that is the one of its last evaluation.
class EvaluatedCamera final : public CameraObject, public TimedObject {
public:
    Object* evaluate(TimeValue t) override {
        evaluated_ = t;
        return this;
    }
    RefResult EvalCameraState(TimeValue t, Interval&, CameraState* state) override {
        state->fov = number_at(t) + static_cast<float>(evaluated_) / kFrame;
        return REF_SUCCEED;
    }

private:
    TimeValue evaluated_ = -1;
};

// Gives each class of material a node with a waving mesh.
void add_materials(SceneBuilder& scene, const Clock& clock, const Clock& shape_clock) {
    auto& drawn = scene.make<ProceduralMap>(solid({255, 0, 0, 255}));
    auto& standard = scene.make<StandardMaterial>(L"Standard");
    standard.diffuse(color(clock)).specular(color(clock)).shininess(number(clock));
    auto& block = scene.make<BlockMaterial>(L"Block", Class_ID(0x37BF3F2F, 0x7034695C));
    block.block(1).color(1, L"color", color(clock));
    auto& named = scene.make<BlockMaterial>(L"Named", Class_ID(0x3F2C5FAA, 0x750008BC));
    named.block(0).map(0, L"texmap_bump", &drawn);
    for (const ParamID id : {1, 2, 3, 4}) {
        named.block(0).number(id, L"other", 1);
    }
    named.block(0).number(5, L"amount", number(clock));
    auto& both = scene.make<MultiMaterial>(L"Both", std::vector<Mtl*>{&standard, &block, &named});
    const auto turn = [shape_clock](TimeValue t) {
        return rotation_x(30) * translation(static_cast<float>(shape_clock(t)), 1, 2);
    };
    scene.node(L"Wave")
        .motion(turn)
        .offset(rotation_x(90) * translation(3, 4, 5))
        .deforming(waving(shape_clock))
        .material(both);
}

void build(SceneBuilder& scene, const Clock& clock) {
    scene.animation_frames(kFirst, kLast);
    add_materials(scene, clock, clock);
    const auto growing = [clock](TimeValue t) {
        return std::vector<Spline3D>{polyline({{0, 0, 0}, {0, 0, 9000 * number_at(clock(t))}})};
    };
    auto grass = std::make_shared<SplineObject>(std::vector<Spline3D>());
    grass->renderable().thickness(number(clock)).grows(growing);
    scene.node(L"Grass").object(grass);
    scene.node(L"Hair")
        .make_object<SplineObject>(std::vector<Spline3D>())
        .grows(growing)
        .attribute(L"velmora_hair_and_fur_data")
        .number(0, L"velmora_start_radius", number(clock))
        .number(1, L"velmora_end_radius", number(clock))
        .color(3, L"velmora_root_color", {0, 1, 0})
        .color(4, L"velmora_tip_color", color(clock))
        .number(5, L"velmora_hue", number(clock))
        .number(6, L"velmora_value", number(clock));
    scene.node(L"Lamp").make_object<OmniLight>().intensity(
        [clock](TimeValue t) { return 1000 * number_at(clock(t)); });
    scene.node(L"Tube")
        .make_object<PhotometricLight>(LightscapeLight::POINT_TYPE)
        .kelvin([clock](TimeValue t) { return 9000 * number_at(clock(t)); });
    scene.node(L"Eye").camera().fov([clock](TimeValue t) { return number_at(clock(t)); });
}

Qor::Options still_options(SceneBuilder& scene) {
    Qor::Options options(&scene.host());
    options.GeneralCurves = true;
    options.Deformable = options.TransformAnimations = options.CameraAnimations = false;
    return options;
}

// The contents of the root group.
std::string nodes_of(const std::string& text) {
    return text.substr(text.find("\ngroup \"object\" {\n"));
}

std::string still(const Clock& clock, int frame) {
    SceneBuilder scene;
    build(scene, clock);
    scene.time(frame * kFrame);
    return nodes_of(exported(scene, still_options(scene)));
}

std::string run(SceneBuilder& scene, bool update, bool animation, const std::string& file) {
    const TemporaryFolder folder;
    auto options = std::make_shared<Qor::Options>(&scene.host());
    options->GeneralCurves = true;
    SceneExporter exporter(&scene.host(), scene.host().GetRootNode(), options, {});
    exporter.Run(folder / "s.vsq", update, true, animation);
    return nodes_of(file_contents(folder / file));
}

TEST(WholeScene, IsReadAtTheTimeOfThePass) {
    const ExportedLibraries installation;
    for (const int frame : {kFirst + 1, kLast}) {
        EXPECT_EQ(still(running, frame), still(stopped_at(frame), frame)) << frame;
    }
    EXPECT_NE(still(running, kLast), still(stopped_at(kFirst), kLast));
    EXPECT_NE(still(running, kLast), still(stopped_at(0), kLast));
}

TEST(WholeScene, PicturesAreThoseOfTheTimeOfThePass) {
    const TemporaryFolder folder;
    write_png((folder.path() / "late.png").wstring(), Image(1, 1));
    SceneBuilder scene;
    auto& late = scene.bitmap(folder / "late.png").shown_from(kFirst * kFrame);
    scene.node(L"Wall")
        .mesh(grid_mesh(1, 1, 1))
        .material(scene.make<StandardMaterial>(L"Late").map(kDiffuseSlot, &late));
    EXPECT_THAT(exported(scene), Not(HasSubstr("late.png")));
    scene.time(kFirst * kFrame);
    EXPECT_THAT(exported(scene), HasSubstr("late.png"));
}

// The light converter of a frame must know nothing of the frame before: here a sky that only later
// cameras could show.
TEST(WholeScene, FramesOfAnAnimationAreStills) {
    const ExportedLibraries installation;
    const TemporaryFolder folder;
    write_png((folder.path() / "sky.png").wstring(), Image(1, 1));
    const auto build_with_sky = [&folder](SceneBuilder& scene) {
        build(scene, running);
        scene.node(L"Sky").make_object<SkyLight>().map(&scene.bitmap(folder / "sky.png"));
        scene.node(L"Late").camera();
    };
    for (const int frame : {kFirst, kFirst + 1, kFirst + 3}) {
        SceneBuilder scene;
        SceneBuilder alone;
        build_with_sky(scene);
        build_with_sky(alone);
        alone.time(frame * kFrame);
        EXPECT_EQ(run(scene, false, true, "s000" + std::to_string(frame - kFirst) + ".vsq"),
                  nodes_of(exported(alone, still_options(alone))))
            << frame;
    }
}

// A library's frame has the shape of the still at that time, in the space of its node. Its material
// is that of the first frame.
TEST(WholeScene, LibraryFramesAreStills) {
    const ExportedLibraries libraries;
    std::string texts[2];
    for (std::string& text : texts) {
        SceneBuilder scene;
        scene.animation_frames(kFirst, kLast);
        add_materials(scene, &text == texts ? running : stopped_at(kFirst), running);
        text = std::regex_replace(exported(scene), std::regex("_1.qorT"), ".qorT");
    }
    EXPECT_EQ(texts[0], texts[1]);
    for (int frame = kFirst; frame <= kLast; ++frame) {
        SceneBuilder alone;
        alone.animation_frames(kFirst, kLast);
        add_materials(alone, stopped_at(kFirst), stopped_at(frame));
        std::string shapes = exported(alone, still_options(alone));
        for (const std::string& path : libraries.paths()) {
            const LibraryArrays library(path);
            const auto& ranges = library.frames.at(static_cast<size_t>(frame - kFirst)).ranges;
            const auto numbers = [](const auto& vectors, std::uint32_t first, std::uint32_t count) {
                const float* begin = vectors.at(first).data();
                return std::vector<float>(begin, begin + 3 * count);
            };
            EXPECT_THAT(shapes,
                        HasSubstr(array_text("vertices", 'c',
                                             numbers(library.vertices, ranges[2], ranges[3]))));
            EXPECT_THAT(shapes,
                        HasSubstr(array_text("normals", 'c',
                                             numbers(library.normals, ranges[4], ranges[5]))));
        }
    }
}

TEST(WholeScene, ObjectsThatAreNoDeformingMeshes) {
    const struct {
        Class_ID class_id;
        bool deforms, bones;
        size_t libraries, objects;
    } cases[] = {
        {Class_ID(0x10, 0), true, false, 1, 1},
        {Class_ID(0x10, 0), false, false, 0, 1},
        {kBone, true, true, 1, 1},
        {kBone, true, false, 0, 0},
    };
    for (const auto& one : cases) {
        const ExportedLibraries libraries;
        SceneBuilder scene;
        scene.animation_frames(0, 2);
        scene.node(L"Leaf")
            .make_object<DeformingConvertible>(waving(running), one.class_id)
            .set_deformable(one.deforms);
        Qor::Options options(&scene.host());
        options.Bones = one.bones;
        const std::string text = exported(scene, options);
        EXPECT_EQ(libraries.names().size(), one.libraries);
        EXPECT_EQ(text.find("object \"Leaf\"") != std::string::npos, one.objects == 1);
    }
}

// The object is evaluated at the range's start, its lens at the time of the pass.
TEST(WholeScene, CamerasAreEvaluatedAtTheStartOfTheRange) {
    SceneBuilder scene;
    scene.animation_frames(kFirst, kLast).time(kLast * kFrame);
    scene.node(L"Eye").make_object<EvaluatedCamera>();
    const float fov = (number_at(kLast * kFrame) + kFirst) * 180.0f / 3.1415927f;
    std::ostringstream line;
    line << "\nfov " << fov << "\n";
    EXPECT_THAT(exported(scene), HasSubstr(line.str()));
}

TEST(WholeScene, CamerasComeInTheOrderOfTheirNodes) {
    SceneBuilder scene;
    const auto parent = scene.node(L"Parent");
    parent.child(L"First").camera();
    parent.child(L"Second").camera();
    scene.node(L"Third").camera();
    const std::string text = exported(scene);
    EXPECT_LT(text.find("camera \"First\""), text.find("camera \"Second\""));
    EXPECT_LT(text.find("camera \"Second\""), text.find("camera \"Third\""));
    EXPECT_NE(text.find("camera \"Third\""), std::string::npos);
}

// A parent keeps its track whichever of its children has content.
TEST(WholeScene, AMovingParentHasATrackForAnyChild) {
    for (const int child_with_content : {0, 1, 2}) {
        SceneBuilder scene;
        scene.animation_frames(0, 2);
        const auto arm = scene.node(L"Arm").motion(
            [](TimeValue t) { return translation(static_cast<float>(t), 0, 0); });
        for (int i = 0; i < 3; ++i) {
            const auto child = arm.child(L"Child");
            if (i == child_with_content) {
                child.mesh(box_mesh(1, 1, 1));
            }
        }
        EXPECT_THAT(exported(scene), HasSubstr("\"Arm3ds_animation\"")) << child_with_content;
    }
}

// An update has the groups of all nodes, but the objects only of changed ones. Cameras always come.
TEST(WholeScene, AnUpdateSendsOnlyWhatChanged) {
    const ExportedLibraries installation;
    SceneBuilder scene;
    build(scene, running);
    const std::string text = run(scene, true, false, "s.vsq");
    for (const char* object :
         {"object \"Wave", "object \"Grass", "object \"Lamp", "object \"Tube"}) {
        EXPECT_THAT(text, Not(HasSubstr(object)));
    }
    for (const char* kept : {"group \"Wave\"", "object \"Hair", "camera \"Eye\""}) {
        EXPECT_THAT(text, HasSubstr(kept));
    }
}

}  // namespace
