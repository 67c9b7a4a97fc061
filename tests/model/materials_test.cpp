#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "model/area_light_material.h"
#include "model/curve_material.h"
#include "model/diffuse.h"
#include "tests/support/emitted_calls.h"

namespace qor {
namespace {

std::string text_of(LightNode& node) {
    return emitted_text([&node](qorSceneapi_oo& scene) { node.emit(scene); });
}

TEST(Materials, AreWrittenInFullUntilTheyAreDefined) {
    Diffuse material("wood");
    const std::string block =
        "material \"wood\" {\n"
        "surface \"qor_diffuse\" {\n\"diffuse\" 0.75 0.5 0.5,\n}\n"
        "flags 4096\n}\n";
    EXPECT_EQ(text_of(material), block);
    EXPECT_EQ(text_of(material), block);
    EXPECT_FALSE(material.is_defined());

    EXPECT_EQ(emitted_text([&](qorSceneapi_oo& scene) { material.define(scene); }),
              "\n#define " + block);
    EXPECT_TRUE(material.is_defined());
    EXPECT_EQ(text_of(material), "material \"wood\"\n");
}

TEST(Diffuse, ClampsColoursToTheUnitRange) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float above_one = std::nextafter(1.0f, 2.0f);
    const float below_one = std::nextafter(1.0f, 0.0f);
    Diffuse material("m");
    material.set_color(2, -1, 0.5f);
    EXPECT_EQ(material.get_color().r, 1);
    EXPECT_EQ(material.get_color().g, 0);
    EXPECT_EQ(material.get_color().b, 0.5f);
    material.set_color(above_one, below_one, nan);
    EXPECT_EQ(material.get_color().r, 1);
    EXPECT_EQ(material.get_color().g, below_one);
    EXPECT_TRUE(std::isnan(material.get_color().b));
}

TEST(Diffuse, NestsTheShaderOfVertexColours) {
    Diffuse material("m");
    material.set_use_vertex_color(true);
    material.set_color(1, 0.5f, 0.25f);

    // The outer shader is pushed but never popped, which must not affect a later material.
    Diffuse next("next");
    EXPECT_EQ(emitted_text([&](qorSceneapi_oo& scene) {
                  material.emit(scene);
                  next.emit(scene);
              }),
              "material \"m\" {\n"
              "surface \"qor_diffuse\" {\n\"diffuse\" 1 0.5 0.25,\n"
              "\"diffuse\" ! \"vertex_color\" {\n\"default_color\" 0.8 0.8 0.8,\n},\n}\n"
              "flags 4096\n}\n" +
                  text_of(next));
}

TEST(CurveMaterial, RandomizesItsColourOrTheVertexColours) {
    CurveMaterial material("curve");
    const std::string before =
        "material \"curve\" {\n"
        "#define shader 1 vertex_color {\n}\n"
        "#define shader 2 qor_curve_randomize {\n";
    const std::string after =
        "}\n"
        "#define shader 3 qor_diffuse {\n\"diffuse\" ! 2,\n}\n"
        "surface 3\n"
        "flags 4096\n}\n";
    EXPECT_EQ(text_of(material),
              before + "\"map\" 0.75 0.5 0.5,\n\"hue\" 0.1,\n\"value\" 0.1,\n" + after);

    material.set_color(2, -1, 0.5f);
    material.set_hue(0.25f);
    material.set_value(0.5f);
    EXPECT_EQ(text_of(material),
              before + "\"map\" 2 -1 0.5,\n\"hue\" 0.25,\n\"value\" 0.5,\n" + after);

    material.set_use_vertex_color(true);
    EXPECT_EQ(text_of(material), before + "\"map\" ! 1,\n\"hue\" 0.25,\n\"value\" 0.5,\n" + after);
}

TEST(AreaLightMaterial, WritesItsPowerInEitherUnit) {
    AreaLightMaterial material("lamp 7");
    const auto block = [](const std::string& parameters) {
        return "material \"lamp 7\" {\nsurface \"qor_mesh_light\" {\n" + parameters +
               "}\nflags 4096\n}\n";
    };
    EXPECT_EQ(text_of(material), block("\"color\" 1 1 1,\n\"lumen\" off,\n\"power\" 100,\n"));
    material.set_color(2, -1, 0.5f);
    material.set_lumen(800);
    EXPECT_EQ(text_of(material), block("\"color\" 2 -1 0.5,\n\"lumen\" on,\n\"power\" 800,\n"));
    material.set_watt(60);
    EXPECT_EQ(text_of(material), block("\"color\" 2 -1 0.5,\n\"lumen\" off,\n\"power\" 60,\n"));
}

}  // namespace
}  // namespace qor
