#include <gtest/gtest.h>

#include <regex>

#include "importers/sceneapi/dev/build_time.h"
#include "importers/sceneapi/dev/default_rt_module.h"
#include "importers/sceneapi/dev/pass_through_factory.h"
#include "tests/support/emitted_calls.h"
#include "tests/support/thrown_text.h"

namespace qor {
namespace {

TEST(SceneWrapper, KnowsItsBuildTime) {
    const std::regex form(
        "[A-Z][a-z]{2} [A-Z][a-z]{2} [ 1-3][0-9] [0-2][0-9]:[0-5][0-9]:[0-5][0-9] [0-9]{4}");
    EXPECT_TRUE(std::regex_match(build_time(), form)) << build_time();
}

// A link without a renderer has no API.
TEST(SceneWrapper, HasNoApiIfItsFactoryHasNone) {
    PassThroughFactory factory(nullptr);
    qorSceneapi_oo scene(factory);
    EXPECT_EQ(scene.get_api(), nullptr);
}

TEST(SceneWrapper, IgnoresAllCallsWithoutAFactory) {
    qorSceneapi_oo scene;
    EXPECT_FALSE(scene.begin_group("g"));
    EXPECT_FALSE(scene.set_parameter("n", 1));
    scene.print_error("e");
    EXPECT_EQ(scene.next_id(), 1);
}

TEST(SceneWrapper, TypesChooseTheCodes) {
    EXPECT_EQ(emitted_text([](qorSceneapi_oo& scene) {
                  scene.set_parameter("text", std::string("t"));
                  scene.set_parameter("color", qorColor{1, 2, 3});
                  scene.set_parameter("vector", qorVector{1, 2, 3});
                  scene.set_parameter("double", 0.5);
                  scene.set_parameter("float", 0.5f);
                  scene.set_parameter("int", -7);
                  scene.set_parameter("yes", true);
                  scene.set_parameter("no", false);
                  scene.set_array("matrices", std::vector<qorMatrix>(1));
                  scene.set_array("ints", std::vector<int>{1, -2});
                  scene.set_array("floats", std::vector<float>{0.5f});
                  scene.set_array("doubles", std::vector<double>{0.5});
                  // The last two floats don't make an element.
                  scene.set_vec3_array("points", {1, 2, 3, 4, 5});
                  scene.transform({}, false);
                  scene.transform({}, true);
                  scene.progress("p", 0.5f);
              }),
              "\"text\" \"t\",\n\"color\" 1 2 3,\n\"vector\" 1 2 3,\n"
              "\"double\" 0.5000000000000000,\n\"float\" 0.5,\n\"int\" -7,\n\"yes\" on,\n"
              "\"no\" off,\n\"matrices\" [ 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 \n] ,\n"
              "\"ints\" [ 1,-2 ] ,\n\"floats\" [ 0.5 ] ,\n"
              "\"doubles\" [ 0.5000000000000000 ] ,\n\"points\" [ 1 2 3 ] ,\n"
              "transform 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0\n"
              "set transform 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0\nprogress \"p\" 0.500\n\n");
}

template <typename Value, typename = void>
constexpr bool kCanBeSet = false;
template <typename Value>
constexpr bool kCanBeSet<Value, std::void_t<decltype(std::declval<qorSceneapi_oo&>().set_parameter(
                                    "name", std::declval<Value>()))>> = true;

// Without the refusal, a pointer would be written as a bool.
TEST(SceneWrapper, RefusesLiteralTexts) {
    static_assert(kCanBeSet<bool> && kCanBeSet<const char*>);
    static_assert(!kCanBeSet<const wchar_t*> && !kCanBeSet<wchar_t*> && !kCanBeSet<const int*>);
    qorSceneapi_oo scene;
    const auto set_literal = [&scene] { scene.set_parameter("name", "literal"); };
    EXPECT_EQ(thrown_text<std::invalid_argument>(set_literal), "const char * are deprecated");
}

TEST(SceneWrapper, NumbersShadersAndObjectsFromOne) {
    EXPECT_EQ(emitted_text([](qorSceneapi_oo& scene) {
                  EXPECT_EQ(scene.next_id(), 1);
                  EXPECT_EQ(scene.next_id(), 2);
                  EXPECT_EQ(scene.begin_shader("a"), 1);
                  scene.end_shader();
                  EXPECT_EQ(scene.begin_shader("b"), 2);
                  scene.end_shader();
                  scene.set_api(scene.get_api());  // restarts both counts
                  EXPECT_EQ(scene.next_id(), 1);
                  EXPECT_EQ(scene.begin_shader("c"), 1);
                  scene.end_shader();
              }),
              "id 1\nid 2\n#define shader 1 a {\n}\n#define shader 2 b {\n}\n"
              "id 1\n#define shader 1 c {\n}\n");
}

// Tests of the export compare the other options.
TEST(DefaultRTModule, NamesItsCameraBeforeTheLastOption) {
    DefaultRTModule module;
    module.set_import_use_camera("c");
    EXPECT_NE(emitted_text([&module](qorSceneapi_oo& scene) {
                  scene.emit(module);
              }).find("\n\"import_use_camera\" \"c\",\n\"ext\" on,\n}\n"),
              std::string::npos);
}

}  // namespace
}  // namespace qor
