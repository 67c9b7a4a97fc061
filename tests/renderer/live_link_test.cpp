#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <numeric>

#include "importers/sceneapi/dev/live_library.h"
#include "importers/sceneapi/dev/parameter_codes.h"
#include "importers/sceneapi/dev/renderer_instance.h"
#include "importers/sceneapi/dev/scene_tree_search.h"
#include "platform/dynamic_library.h"
#include "tests/support/velmora_process.h"
#include "tests/support/written_scene.h"

// Tests the live library, loaded at run time, with a running renderer.

namespace {

class LiveLink : public testing::Test {
protected:
    LiveLink() : library_(platform::DynamicLibrary::open(VELMORA_LIBRARY)), root_(new_root()) {}

    std::unique_ptr<live_library::Root> new_root() {
        void* const initialize = library_.value().find(live_library::kInitialize);
        return std::unique_ptr<live_library::Root>(
            reinterpret_cast<live_library::Initialize*>(initialize)());
    }

    qorScene_api& scene() { return *root_->get_scene_api(11, 11); }
    live_library::QueryApi& query() { return *root_->get_query_api(11, 11); }

    RendererFolder folder_;
    std::optional<platform::DynamicLibrary> library_;
    std::unique_ptr<live_library::Root> root_;
};

void set_array(qorScene_api& api, std::int32_t code, const void* data, std::uint32_t count) {
    const qorArray array = {data, count};
    api.set_parameter("array", parameter_code::kArray | code, &array);
}

// Makes every call, with every form of a parameter, and with difficult values: null, empty and
// large ones, and sizes that aren't a multiple of a word.
void make_every_call(qorScene_api& api) {
    const qorMatrix matrix = {{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 0.1}}};
    const unsigned char bytes[] = {0, 255, 7};
    api.set_output_mode(1);
    api.print_message("a remark");
    api.print_error(nullptr);
    api.set_version(0xffffffffu);
    api.write_text("%s %d %.2f\n", "text", -3, 0.5);
    api.begin_load("module"), api.end_load();
    api.begin_options();
    EXPECT_TRUE(api.render());
    api.end_options();
    api.begin_camera(nullptr), api.end_camera();
    api.begin_camera(""), api.end_camera();
    api.begin_image(), api.end_image();
    api.begin_output("name", "kind", "type"), api.end_output();
    api.begin_light("light"), api.end_light();
    api.begin_accel("accel"), api.end_accel();
    api.begin_matrix("matrix"), api.end_matrix();
    EXPECT_TRUE(api.begin_group("object", true));
    api.begin_group("defined", false);
    api.set_flags(0x8400), api.set_id(4000000000u);
    api.transform(matrix), api.set_transform(matrix);
    api.scale(1, 2, 0.3), api.rotate(-1, 2, 3), api.translate(1e9, 2, 3);
    api.end_group();
    api.begin_animation("kind", "name");
    EXPECT_EQ(api.end_animation(), 0);
    api.set_attribute("key", "va\"lue");
    api.set_progress("progress", 0.25f);
    api.set_option_flag(true), api.reserved_hook();
    api.set_icon(bytes, sizeof bytes);
    api.set_binary_parameter("binary", bytes, 0);

    api.begin_object("object", false);
    api.begin_geometry("triangles");
    const std::int32_t ints[] = {1, 0, -3, 4};
    const float floats[] = {0.1f, 2, 3, 4};
    const char* const texts[] = {"one", nullptr, "t\xc3\xb6n"};
    using namespace parameter_code;
    const std::pair<const void*, std::vector<std::int32_t>> numbers[] = {
        {&matrix, {kDouble, kVector, kMatrix}},
        {ints, {kInt, kBool, kInt2, kInt3, kInt4, kIntToo}},
        {floats, {kColor, kFloat4, kFloat, kFloat2, kFloat4Too}},
    };
    for (const auto& [values, codes] : numbers) {
        for (const std::int32_t code : codes) {
            api.set_parameter("numbers", code, values);
            set_array(api, code, values, 1);
        }
    }
    for (const std::int32_t code : {8, kSubshader, 0x2000, 77}) {
        api.set_parameter("nothing", code, nullptr);
    }
    api.set_parameter("text", kText, "a text");
    api.set_parameter("text", kTextPointer, &texts[2]);
    set_array(api, kText, texts, 3);
    set_array(api, kInt, nullptr, 0);
    std::vector<std::int32_t> many(3000001);
    std::iota(many.begin(), many.end(), 0);
    set_array(api, kInt, many.data(), static_cast<std::uint32_t>(many.size()));
    api.begin_array("elements");
    api.add_array_element(kColor, floats);
    api.add_array_element(kText, "element");
    api.add_array_element(kTextPointer, &texts[0]);
    api.end_array(), api.end_geometry();

    api.begin_material("material", true);
    EXPECT_EQ(api.current_shader(), nullptr);
    EXPECT_TRUE(api.begin_shader_id("type", 5));
    api.set_parameter_id("other", 6);
    api.end_shader();
    api.begin_shader("named", "type"), api.end_shader();
    api.begin_shader(nullptr, "outer");
    api.push_shader();
    api.begin_shader(nullptr, "inner");
    set_array(api, kFloat, floats, 4);
    api.end_shader();
    const qorShaderHandle inner = api.current_shader();
    api.pop_shader();
    EXPECT_TRUE(api.set_parameter_shader("nested", inner));
    EXPECT_FALSE(api.set_parameter_shader("none", nullptr));
    api.end_shader();
    const qorShaderHandle outer = api.current_shader();
    api.assign_shader(shader_kind::kSurface, outer);
    api.assign_shader(shader_kind::kShadow, nullptr);
    api.assign_shader_id(9, 5);
    api.set_parameter("shader", kShader, &inner);
    api.end_material();
    api.use_material("material");
    api.end_object(), api.end_group();
}

TEST_F(LiveLink, EveryCallArrivesAsTheFileWriterWritesIt) {
    VelmoraProcess renderer(VELMORA_PROGRAM);
    EXPECT_FALSE(scene().begin_group("too early", true));
    scene().set_id(7);
    ASSERT_TRUE(scene().connect("localhost", renderer.port(), 4));
    make_every_call(scene());
    EXPECT_TRUE(scene().disconnect());

    EXPECT_EQ(renderer.newest_scene().number, 1u);
    const std::string expected = written_by([](qorScene_api_file& file) {
        file.set_id(7);
        make_every_call(file);
    });
    const std::string received = file_contents(renderer.newest_scene().file);
    if (received != expected) {
        const auto parting =
            std::mismatch(received.begin(), received.end(), expected.begin(), expected.end());
        const auto at = static_cast<size_t>(parting.first - received.begin());
        ADD_FAILURE() << at << ": " << testing::PrintToString(received.substr(at, 40)) << " for "
                      << testing::PrintToString(expected.substr(at, 40));
    }
    EXPECT_FALSE(scene().disconnect());
}

TEST_F(LiveLink, ARendererReportsItsVersionAndScene) {
    VelmoraProcess renderer(VELMORA_PROGRAM, "VELMORA_VERSION", "12.3");
    const auto instances = qor::ReadInstances(query().instances_xml(), 1, 20);
    ASSERT_EQ(instances.size(), 1u);
    EXPECT_EQ(instances[0].version_major, 12);
    EXPECT_EQ(instances[0].version_minor, 3);
    EXPECT_EQ(instances[0].process_id, renderer.id());
    EXPECT_FALSE(query().connect(renderer.id() + 1));

    const auto tree = [&] {
        EXPECT_TRUE(query().connect(renderer.id()));
        const std::string xml = query().scene_xml();
        query().disconnect();
        return xml;
    };
    EXPECT_TRUE(qor::SearchSceneTree(tree().c_str(), "", 12).is_empty);

    const struct {
        const char* group;
        std::uint32_t root_flags;
        bool old_group_stays;
    } kScenes[] = {
        {"a<\"&\n>", 0x8400, true},
        {"added", 0x8000, true},
        {"new", 0x8400, false},
    };
    for (const auto& sent : kScenes) {
        ASSERT_TRUE(scene().connect("127.0.0.1", instances[0].livelink_port, 1));
        scene().begin_group("object", true);
        scene().set_flags(sent.root_flags);
        scene().begin_group(sent.group, true);
        scene().end_group();
        scene().end_group();
        EXPECT_TRUE(scene().disconnect());
        const auto findings = qor::SearchSceneTree(tree().c_str(), sent.group, 12);
        EXPECT_TRUE(findings.holds_scene) << tree();
        EXPECT_FALSE(findings.is_empty);
        EXPECT_EQ(qor::SearchSceneTree(tree().c_str(), kScenes[0].group, 12).holds_scene,
                  sent.old_group_stays);
    }
}

// After a renderer has died or hung at any point, all calls of the scene fail.
TEST_F(LiveLink, GivesUpARendererThatFails) {
    const struct {
        const char* fault;
        const char* limit_ms;  // must allow for a slow greeting on a busy machine
        bool connects, dies;
    } kFaults[] = {
        {"die-after=0", "2000", false, true},
        {"hang-after=0", "300", false, false},
        {"die-after=1000000", "2000", true, true},
        {"hang-after=1000000", "2000", true, false},
    };
    for (const auto& [fault, limit_ms, connects, dies] : kFaults) {
        SCOPED_TRACE(fault);
        const EnvironmentVariable limit("VELMORA_LINK_TIMEOUT_MS", limit_ms);
        VelmoraProcess renderer(VELMORA_PROGRAM, "VELMORA_FAULT", fault);
        EXPECT_EQ(scene().connect("localhost", renderer.port(), 4), connects);
        const std::vector<float> large(20000000);
        set_array(scene(), parameter_code::kFloat, large.data(), 20000000);
        for (int call = 0; call < 100000; ++call) {
            scene().begin_group("name", true);
        }
        EXPECT_FALSE(scene().disconnect());
        EXPECT_FALSE(scene().begin_group("name", true));
        EXPECT_EQ(scene().current_shader(), nullptr);
        if (dies) {
            EXPECT_TRUE(renderer.wait_for_end());
        }
        EXPECT_EQ(renderer.announced().has_value(), !dies);
    }
}

// If a host dies in the middle of a scene, the part that has arrived is kept but isn't announced.
TEST_F(LiveLink, KeepsThePartOfAnUnfinishedScene) {
    VelmoraProcess renderer(VELMORA_PROGRAM);
    ASSERT_TRUE(scene().connect("localhost", renderer.port(), 4));
    scene().begin_group("half", false);
    const std::vector<float> large(1000000);
    set_array(scene(), parameter_code::kFloat, large.data(), 1000000);
    ASSERT_TRUE(comes_to_hold([this] { return !std::filesystem::is_empty(folder_.scenes()); }));
    root_ = new_root();
    EXPECT_TRUE(comes_to_hold([&] {
        return query().connect(renderer.id()) && query().scene_xml() != nullptr &&
               std::string(query().scene_xml()).find("half") != std::string::npos;
    }));
    EXPECT_EQ(renderer.newest_scene().number, 0u);
    for (const auto& file : std::filesystem::directory_iterator(folder_.scenes())) {
        EXPECT_EQ(file.path().extension(), ".part");
        EXPECT_GE(file.file_size(), large.size());
    }
}

}  // namespace
