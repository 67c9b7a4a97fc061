#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "standins/host/memory/splines.h"
#include "tests/support/exported_meshes.h"
#include "tests/support/exported_scene.h"

namespace {

using namespace memhost;
using Floats = std::vector<float>;
using Splines = std::vector<Spline3D>;

constexpr wchar_t kHairAttribute[] = L"velmora_hair_and_fur_data";

std::string matt(const std::string& color) {
    return "material \"curve\" {\nsurface \"qor_diffuse\" {\n\"diffuse\" " + color +
           ",\n}\nflags 4096\n}\n}\n";
}

// A bend, whose outermost handles are not written, and a closed triangle, whose handles all are.
const Spline3D kBend({{{9, 9, 9}, {0, 0, 0}, {0, 1, 0}}, {{3, 1, 0}, {3, 4, 0}, {9, 9, 9}}}, false);
const Spline3D kTriangle({{{1, 0, 1}, {0, 0, 0}, {1, 0, 0}},
                          {{3, 0, 0}, {4, 0, 0}, {4, 1, 0}},
                          {{4, 3, 0}, {4, 3, 1}, {2, 2, 2}}},
                         true);
const Floats kBendPoints = {0, 0, 0, 0, 1, 0, 3, 1, 0, 3, 4, 0};
const Floats kTrianglePoints = {0, 0, 0, 1, 0, 0, 3, 0, 0, 4, 0, 0, 4, 1, 0,
                                4, 3, 0, 4, 3, 1, 2, 2, 2, 1, 0, 1, 0, 0, 0};

const std::string kMixed =
    "material \"curve\" {\n#define shader 1 vertex_color {\n}\n"
    "#define shader 2 qor_curve_randomize {\n\"map\" ! 1,\n\"hue\" 0.02,\n\"value\" 0.3,\n}\n"
    "#define shader 3 qor_diffuse {\n\"diffuse\" ! 2,\n}\nsurface 3\nflags 4096\n}\n}\n";

struct Case {
    const char* name;
    Splines splines;
    float multiplier;
    float blue;  // of the tip of hair, whose root is green; below 0 for other curves
    std::string radius;
    Floats points;
    std::vector<std::int32_t> counts;
    std::string material;

    // Hair has the thickness 2 at the root and 0 at the tip. Here it has at most one strand.
    std::string block() const {
        Floats radii(points.size() / 3, 1);
        Floats colors(points.size(), 0.8f);
        for (size_t i = 0; i < radii.size() && blue >= 0; ++i) {
            const float t = static_cast<float>(i) / 3.0f;
            radii[i] = 2.0f + t * -2.0f;
            colors[3 * i] = 0;
            colors[3 * i + 1] = 1;
            colors[3 * i + 2] = t * blue;
        }
        return "object \"Node\" {\ngeometry \"qor_curves\" {\n\"radius\" " + radius +
               ",\n\"order\" 4,\n\"fitToCubic\" off,\n" + array_text("p", 'c', points) +
               array_text("nvertices", 'i', counts) +
               (points.empty() ? ""
                               : array_text("pr", 'f', radii) + array_text("pcol", 'c', colors)) +
               "}\n" + material;
    }
};

// The object's offset has no effect, and the node's place goes only into the node's matrix.
TEST(CurvesExport, WritesOneObjectByteForByte) {
    Floats both = kTrianglePoints;
    both.insert(both.end(), kBendPoints.begin(), kBendPoints.end());
    const Spline3D none({}, true);
    const Spline3D knot = polyline({{7, 7, 7}});
    const std::string grey = matt("0.8 0.8 0.8");
    const std::string green = matt("0 1 0");
    const Case cases[] = {
        {"open", {kBend}, 1, -1, "0.5", kBendPoints, {4}, grey},
        {"the multiplier", {kBend}, 3, -1, "1.5", kBendPoints, {4}, grey},
        {"closed", {kTriangle}, 1, -1, "0.5", kTrianglePoints, {10}, grey},
        {"several", {none, kTriangle, knot, kBend}, 1, -1, "0.5", both, {10, 4}, grey},
        {"without segments", {none, knot}, 1, -1, "0.5", {}, {}, grey},
        // The extent is the diagonal of a rectangle of 3 by 4.
        {"hair", {kBend}, 2, 0, "0.001", kBendPoints, {4}, green},
        {"hair of two colours", {kBend}, 1, 0.75f, "0.0005", kBendPoints, {4}, kMixed},
        {"hair without strands, whose extent is NaN", {}, 1, 0, "-1", {}, {}, green},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.name);
        SceneBuilder scene;
        auto object = std::make_shared<SplineObject>(one.splines);
        object->thickness(0.5f).renderable(one.blue < 0);
        if (one.blue >= 0) {
            object->attribute(L"another").number(0, L"velmora_start_radius", 9);
            object->attribute(kHairAttribute)
                .number(0, L"velmora_start_radius", 2)
                .number(1, L"velmora_end_radius", 0)
                .color(3, L"velmora_root_color", {0, 1, 0})
                .color(4, L"velmora_tip_color", {0, 1, one.blue})
                .number(5, L"velmora_hue", 20)
                .number(6, L"velmora_value", 30);
        }
        scene.node(L"Node").at(1, 2, 3).offset(scaling(2, 2, 2)).object(object);
        Qor::Options options(&scene.host());
        options.GeneralCurves = true;
        options.CurveRadiusMultiplier = one.multiplier;
        const std::string text = exported(scene, options);
        EXPECT_NE(text.find("\ngroup \"Node\" {\n" + one.block() +
                            "transform 1 0 0 0 0 1 0 0 0 0 1 0 1 2 3 1\n"),
                  std::string::npos);
    }
}

class MeasuredShape final : public ConvertibleShape {
public:
    using ConvertibleShape::ConvertibleShape;
    void GetWorldBoundBox(TimeValue t, INode* node, ViewExp* view, Box3& box) override {
        ++measured;
        ConvertibleShape::GetWorldBoundBox(t, node, view, box);
    }
    int measured = 0;
};

// Curves that are left out still count for the size of the scene. The shapes that the host has
// converted are freed in every case.
TEST(CurvesExport, WritesOnlyWantedCurves) {
    const struct {
        const char* name;
        bool hair, renderable, general_curves, update, changed;
        bool written;
    } cases[] = {
        {"plain", false, true, true, false, false, true},
        {"plain, not rendered", false, false, true, false, false, false},
        {"plain, not wanted", false, true, false, false, false, false},
        {"plain, unchanged", false, true, true, true, false, false},
        {"plain, changed", false, true, true, true, true, true},
        {"hair", true, false, false, false, false, true},
        {"hair, unchanged", true, false, false, true, false, true},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        SceneBuilder scene;
        auto object = std::make_shared<MeasuredShape>(Splines{kBend}, Class_ID(0x1065, 0));
        object->splines().renderable(one.renderable);
        if (one.hair) {
            object->splines().attribute(kHairAttribute);
        }
        INode* node = &scene.node(L"Node").object(object).node();
        const auto options = std::make_shared<Qor::Options>(&scene.host());
        options->GeneralCurves = one.general_curves;
        const std::set<INode*> changed = one.changed ? std::set<INode*>{node} : std::set<INode*>();
        const TemporaryFolder folder;
        SceneExporter(&scene.host(), scene.host().GetRootNode(), options, changed)
            .Run(folder / "scene.vsq", one.update, true, false);
        const std::string text = file_contents(folder / "scene.vsq");
        EXPECT_EQ(text.find("qor_curves") != std::string::npos, one.written);
        EXPECT_EQ(object->measured, 1);
        EXPECT_EQ(ConvertibleShape::live_conversions(), 0);
    }
}

}  // namespace
