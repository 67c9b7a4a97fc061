#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <sstream>

#include "model/black_body.h"
#include "model/euler_matrix.h"
#include "plugins/3dsmax/export/light_converter.h"
#include "standins/host/memory/image_file.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/emitted_calls.h"

namespace {

using namespace memhost;
using Light = LightscapeLight;

class LightExport : public testing::Test {
protected:
    std::string converted(TimeValue time = 0) {
        return emitted_calls(
            [&](qor::qorSceneapi_oo& out) { converter.Convert(&node.node(), out, time); });
    }
    PhotometricLight& photometric(Light::LightTypes type) {
        return node.make_object<PhotometricLight>(type);
    }

    SceneBuilder scene;
    NodeBuilder node = scene.node(L"L");
    std::shared_ptr<Qor::Options> options = std::make_shared<Qor::Options>(&scene.host());
    LightConverter converter{options, &scene.host()};
};

std::string text(const qorColor& color) {
    return RecordingApi::value_text(parameter_code::kColor, &color);
}

std::string object(const std::string& head, const std::string& shape, const std::string& name,
                   const std::string& shader, const std::string& parameters,
                   const std::string& flags = "") {
    return "begin_object L\n" + head + "begin_geometry triangles\nvertices [" + shape +
           "]\ntriangles [0,1,2]\nend_geometry\nbegin_material " + name + "\nbegin_shader - " +
           shader + "\n" + parameters + "end_shader\ncurrent_shader\nassign_shader 0 " + shader +
           "\n" + flags + "end_material\nend_object\n";
}

// The triangle of a light without extent.
const std::string kCarrier = "0 0 0,0.001 0.001 0.001,0.002 0.002 0.002";

// Each light takes a number, even if it writes nothing.
TEST_F(LightExport, NumbersMaterialsAndWritesOmniLights) {
    const std::shared_ptr<Object> left_out[] = {
        std::make_shared<SpotLight>(),
        std::make_shared<StandardLight>(Class_ID(OMNI_LIGHT_CLASS_ID, 0), 1),
        std::make_shared<PlainObject>(LIGHT_CLASS_ID), nullptr};
    for (const auto& object : left_out) {
        node.object(object);
        EXPECT_EQ(converted(), "");
    }

    const std::pair<float, const char*> powers[] = {
        {2.9f, "2"},           {-2.9f, "-2"},          {2147483520.0f, "2147483520"},
        {3e9f, "-2147483648"}, {-3e9f, "-2147483648"}, {NAN, "-2147483648"},
    };
    int number = 4;
    for (const auto& [intensity, power] : powers) {
        node.make_object<OmniLight>()
            .intensity([value = intensity](TimeValue t) { return t == 160 ? value : 1; })
            .color({1, 0.5f, 0});
        const std::string parameters =
            std::string("lumen off\npower ") + power + "\ncolor 0.003921569 0.0019607844 0\n";
        EXPECT_EQ(converted(160), object("", kCarrier, "L" + std::to_string(number++),
                                         "qor_point_light", parameters));
    }
}

// The intensity is read at time 0, and the colour at the time of the frame.
TEST_F(LightExport, WritesPhotometricPointsWithAWebOnlyIfItsFileIsFound) {
    const TemporaryFolder folder;
    std::ofstream(folder.path() / "lamp.IeS") << "x";
    std::ofstream(folder.path() / "lamp.txt") << "x";
    scene.asset_folder(MaxSDK::AssetManagement::kPhotometricAsset, folder.path().u8string());
    const auto turn = [](qor::qorSceneapi_oo& out) {
        out.transform(qor::EulerMatrix(100, 20, 30));  // the web's rotation, and 90 more about x
    };
    const std::string turned = emitted_calls(turn);
    const std::string file = "file \"" + folder.path().u8string() + "\\lamp.IeS\"\n";
    const std::string plain =
        "lumen on\npower 800\ncolor " + text(qor::BlackbodyColor(3000)) + "\n";
    const struct {
        const char* file;  // null for a web without a parameter block
        Light::DistTypes distribution;
        bool found;
    } cases[] = {
        {"lamp.IeS", Light::WEB_DIST, true},  {"lamp.IeS", Light::SPOTLIGHT_DIST, false},
        {"none.IES", Light::WEB_DIST, false}, {"lamp.txt", Light::WEB_DIST, false},
        {"es", Light::WEB_DIST, false},       {nullptr, Light::WEB_DIST, false},
    };
    int number = 0;
    for (const auto& one : cases) {
        PhotometricLight& light =
            photometric(number % 2 ? Light::POINT_TYPE : Light::TARGET_POINT_TYPE);
        light.lumens([](TimeValue t) { return 800.9f + t; });
        light.kelvin([](TimeValue t) { return t == 160 ? 3000.0f : 6500.0f; });
        if (one.file != nullptr) {
            light.web_file(std::string(one.file), {10, 20, 30});
        }
        light.distribution(one.distribution);
        const std::string name = "L" + std::to_string(number++);
        EXPECT_EQ(converted(160), one.found ? object(turned, kCarrier, name, "qor_ies_light", file)
                                            : object("", kCarrier, name, "qor_point_light", plain));
    }
}

// The rest of the line that starts with `name`.
std::string line(const std::string& calls, const std::string& name) {
    const size_t before = calls.find("\n" + name + " ");
    const size_t start = before + name.size() + 2;
    return before == std::string::npos ? "" : calls.substr(start, calls.find('\n', start) - start);
}

TEST_F(LightExport, WritesAWholeShape) {
    photometric(Light::AREA_TYPE).shape({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}).kelvin(3000);
    const std::string parameters =
        "color " + text(qor::BlackbodyColor(3000)) + "\nlumen on\npower 1000\n";
    EXPECT_EQ(converted(), object("set_flags 0\n", "1 2 3,4 5 6,7 8 9", "L0", "qor_mesh_light",
                                  parameters, "set_flags 4096\n"));
}

// A shape without triangles writes only an error, and no block. The cylinder of six points is
// closed: each edge occurs once in either direction, except at the first triangle of each cap.
TEST_F(LightExport, BuildsTrianglesFromThePointsOfShapes) {
    const std::string ring4 = "[0,0,1,2,3,2,0,2,3,3,1,0,1,2,0,2,1,";
    const std::pair<Light::LightTypes, std::vector<std::string>> kinds[] = {
        {Light::AREA_TYPE, {"", "", "", "[0,1,2]", "[0,1,2,0,2,3]", ""}},
        {Light::CYLINDER_TYPE,
         {"", "", "", "", ring4 + "3]", ring4 + "4]",
          "[0,0,1,0,1,2,3,4,3,3,5,4,0,3,4,4,1,0,1,4,5,5,2,1,2,3,0,3,2,5]"}},
    };
    for (const auto& [type, triangles] : kinds) {
        for (size_t count = 0; count < triangles.size(); ++count) {
            photometric(type).shape(std::vector<Point3>(count));
            const std::string calls = converted();
            EXPECT_EQ(line(calls, "triangles"), triangles[count]) << type << " of " << count;
            EXPECT_EQ(calls == "print_error No triangles defined\n", triangles[count].empty());
        }
    }
}

std::vector<float> numbers(std::string line) {
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '[' || c == ',' || c == ']'; }, ' ');
    std::istringstream stream(line);
    return {std::istream_iterator<float>(stream), {}};
}

TEST_F(LightExport, WritesSpheresWithNormals) {
    photometric(Light::SPHERE_TYPE).radius(2);
    const std::string calls = converted();
    const auto vertices = numbers(line(calls, "vertices"));
    const auto normals = numbers(line(calls, "normals"));
    ASSERT_EQ(vertices.size(), 2700u);
    ASSERT_EQ(normals.size(), 2700u);
    for (size_t i = 0; i < 2700; ++i) {
        EXPECT_NEAR(vertices[i], 2 * normals[i], 3e-6) << i;
        const float* normal = &normals[i - i % 3];
        EXPECT_NEAR(std::hypot(normal[0], normal[1], normal[2]), 1, 3e-6) << i;
    }
    EXPECT_EQ(normals[1], -1);                                      // the first pole
    EXPECT_NEAR(normals[3 * 30], std::sin(3.14159265 / 29), 1e-6);  // the second ring starts at +x
    EXPECT_GT(normals[3 * 31 + 2], 0);                              // and turns towards +z
    const std::string triangles = line(calls, "triangles");
    const std::string last = ",868,869,899,868,899,898]";
    EXPECT_EQ(numbers(triangles).size(), 3u * 1682);
    EXPECT_EQ(triangles.find("[0,1,31,0,31,30,1,2,32,"), 0u);
    EXPECT_EQ(triangles.rfind(last), triangles.size() - last.size());
}

// Only polygons multiply the diffuse output by four. Lights as cold as these have no colour.
TEST_F(LightExport, WritesThePowerOfTheSupportedTypes) {
    std::map<int, std::string> powers = {{0x214, "100"}, {0x215, "100"},    {0x218, "401"},
                                         {0x219, "401"}, {0x21D, "100.25"}, {0x21F, "100.25"}};
    for (const bool wanted : {true, false}) {
        options->PhotometricLights = wanted;
        for (int type = 0x213; type <= 0x220; ++type) {
            photometric(static_cast<Light::LightTypes>(type))
                .distribution(Light::DIFFUSE_DIST)
                .lumens(100.25f)
                .kelvin(type % 2 ? 0.0f : -5000.0f);
            EXPECT_EQ(line(converted(), "power"), wanted ? powers[type] : "") << type;
        }
    }
}

// Only a picture sets the environment; a sky light with anything else keeps the previous one.
TEST_F(LightExport, KeepsThePictureOfASkyLight) {
    const TemporaryFolder folder;
    auto& drawn = scene.make<ProceduralMap>(solid({1, 2, 3, 255}));
    BitmapMap& day = scene.bitmap(folder / "day.png");
    BitmapMap& night = scene.bitmap(folder / "night.png");
    write_png(day.GetMapName(), Image(1, 1));
    write_png(night.GetMapName(), Image(1, 1));
    const auto sky = [&](const std::vector<Texmap*>& maps) {
        auto& light = node.make_object<SkyLight>().reference(drawn);
        for (Texmap* map : maps) {
            light.map(map);
        }
        EXPECT_EQ(converted(), "");
        return converter.environment();
    };
    EXPECT_EQ(sky({}), "");
    EXPECT_EQ(sky({&scene.bitmap(folder / "missing.png")}), "");
    options->SkyLights = false;
    EXPECT_EQ(sky({&day}), "");
    options->SkyLights = true;
    EXPECT_EQ(sky({&night, &day}), folder / "day.png");
    EXPECT_EQ(sky({nullptr}), folder / "day.png");
    EXPECT_EQ(sky({&drawn}), folder / "day.png");
}

}  // namespace
