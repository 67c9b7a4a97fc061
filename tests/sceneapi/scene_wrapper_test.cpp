#include <gtest/gtest.h>

#include <regex>
#include <stdexcept>

#include "importers/sceneapi/dev/build_time.h"
#include "importers/sceneapi/dev/default_rt_module.h"
#include "importers/sceneapi/dev/pass_through_factory.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "tests/support/recording_api.h"

namespace qor {
namespace {

using Calls = std::vector<std::string>;

constexpr qorMatrix kIdentity = {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};

Calls calls_of(const std::function<void(qorSceneapi_oo&)>& use) {
    RecordingApi recorded;
    PassThroughFactory factory(&recorded);
    qorSceneapi_oo scene(factory);
    recorded.calls.clear();
    use(scene);
    return recorded.calls;
}

class HeaderFactory final : public LightFactory {
public:
    explicit HeaderFactory(qorScene_api* api) : api_(api) {}
    qorScene_api* get_api() override { return api_; }
    void write_header(qorSceneapi_oo& scene) override { scene.get_api()->write_text("header"); }
    void close() override {}

private:
    qorScene_api* api_;
};

TEST(SceneWrapper, OpensTheStreamWithHeaderBannerAndVersion) {
    RecordingApi recorded;
    HeaderFactory factory(&recorded);
    const qorSceneapi_oo scene(factory);
    EXPECT_EQ(recorded.calls, (Calls{"write_text header",
                                     "print_message Velmora SceneApi oo 11.2.0  (built " +
                                         std::string(build_time()) + ")",
                                     "set_version 9"}));
    EXPECT_TRUE(
        std::regex_match(build_time(), std::regex("[A-Z][a-z]{2} [A-Z][a-z]{2} [ 1-3][0-9] "
                                                  "[0-2][0-9]:[0-5][0-9]:[0-5][0-9] [0-9]{4}")))
        << build_time();
}

// A link that found no renderer has no API to offer.
TEST(SceneWrapper, WithoutAnApiNothingIsWritten) {
    HeaderFactory factory(nullptr);
    qorSceneapi_oo scene(factory);
    EXPECT_EQ(scene.get_api(), nullptr);
}

TEST(SceneWrapper, BuiltOfNothingSwallowsEverything) {
    qorSceneapi_oo scene;
    EXPECT_FALSE(scene.begin_group("g"));
    EXPECT_FALSE(scene.set_parameter("n", 1));
    scene.print_error("e");
    EXPECT_EQ(scene.next_id(), 1);
}

TEST(SceneWrapper, TypesChooseTheCodes) {
    EXPECT_EQ(calls_of([](qorSceneapi_oo& scene) {
                  scene.set_parameter("text", std::string("t"));
                  scene.set_parameter("color", qorColor{1, 2, 3});
                  scene.set_parameter("vector", qorVector{1, 2, 3});
                  scene.set_parameter("double", 0.5);
                  scene.set_parameter("float", 0.5f);
                  scene.set_parameter("int", -7);
                  scene.set_parameter("yes", true);
                  scene.set_parameter("no", false);
                  scene.set_array("matrices", std::vector<qorMatrix>(2));
                  scene.set_array("ints", std::vector<int>{1, -2});
                  scene.set_array("floats", std::vector<float>{0.5f});
                  scene.set_array("doubles", std::vector<double>{});
                  // Two floats too many for the elements.
                  scene.set_vec3_array("points", {1, 2, 3, 4, 5});
              }),
              (Calls{"text \"t\"", "color 1.000000 2.000000 3.000000",
                     "vector 1.000000 2.000000 3.000000 (vector)", "double 0.500000 (double)",
                     "float 0.500000", "int -7", "yes on", "no off", "matrices code 32777 x2",
                     "ints 1 -2", "floats 0.500000", "doubles ",
                     "points 1.000000 2.000000 3.000000 (vec3 x1)"}));
}

TEST(SceneWrapper, RefusesLiteralTexts) {
    qorSceneapi_oo scene;
    try {
        scene.set_parameter("name", "literal");
        FAIL() << "a literal went through";
    } catch (const std::invalid_argument& error) {
        EXPECT_STREQ(error.what(), "const char * are deprecated");
    }
}

TEST(SceneWrapper, NumbersShadersAndObjectsFromOne) {
    EXPECT_EQ(calls_of([](qorSceneapi_oo& scene) {
                  EXPECT_EQ(scene.next_id(), 1);
                  EXPECT_EQ(scene.next_id(), 2);
                  EXPECT_EQ(scene.begin_shader("a"), 1);
                  scene.end_shader();
                  EXPECT_EQ(scene.begin_shader("b"), 2);
                  scene.set_api(scene.get_api());  // starts both anew
                  EXPECT_EQ(scene.next_id(), 1);
                  EXPECT_EQ(scene.begin_shader("c"), 1);
              }),
              (Calls{"set_id 1", "set_id 2", "begin_shader_id a 1", "end_shader",
                     "begin_shader_id b 2", "set_id 1", "begin_shader_id c 1"}));
}

TEST(SceneWrapper, TransformsAreMultipliedUnlessToldOtherwise) {
    const std::string identity = " 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1";
    EXPECT_EQ(calls_of([](qorSceneapi_oo& scene) {
                  scene.transform(kIdentity);
                  scene.transform(kIdentity, false);
                  scene.transform(kIdentity, true);
                  scene.progress("p", 0.5f);
                  scene.begin_group("g");
                  scene.set_flags(3);
                  scene.end_group();
              }),
              (Calls{"transform" + identity, "transform" + identity, "set_transform" + identity,
                     "set_progress p 0.500000", "begin_group g", "set_flags 3", "end_group"}));
}

TEST(DefaultRTModule, WritesItsOptionsInOrder) {
    const Calls defaults = {"begin_load qorrtopt.so",
                            "import_mode on",
                            "import_merge_groups on",
                            "import_merge_objects on",
                            "import_up_vector 0",
                            "meter_scale 1.000000",
                            "import_keep_original off",
                            "import_center_geometry on",
                            "import_snap_to_ground off",
                            "import_adjust_camera on",
                            "import_adjust_environment on",
                            "ext on",
                            "end_load"};
    EXPECT_EQ(calls_of([](qorSceneapi_oo& scene) {
                  DefaultRTModule module;
                  scene.emit(module);
              }),
              defaults);

    const Calls all_set = {"begin_load qorrtopt.so",
                           "import_mode off",
                           "import_merge_groups off",
                           "import_merge_objects off",
                           "import_up_vector 2",
                           "meter_scale 100.000000",
                           "import_keep_original on",
                           "import_center_geometry off",
                           "import_snap_to_ground on",
                           "import_adjust_camera off",
                           "import_adjust_environment off",
                           "import_use_camera \"c\"",
                           "ext off",
                           "end_load"};
    EXPECT_EQ(calls_of([](qorSceneapi_oo& scene) {
                  DefaultRTModule module;
                  module.set_import_mode(false);
                  module.set_import_merge_groups(false);
                  module.set_import_merge_objects(false);
                  module.set_import_up_vector(2);
                  module.set_meter_scale(100);
                  module.set_import_keep_original(true);
                  module.set_import_center_geometry(false);
                  module.set_import_snap_to_ground(true);
                  module.set_import_adjust_camera(false);
                  module.set_import_adjust_environment(false);
                  module.set_import_use_camera("c");
                  module.set_ext(false);
                  scene.emit(module);
              }),
              all_set);
}

}  // namespace
}  // namespace qor
