#include "plugins/3dsmax/export/hair_scripts.h"

#include <functional>
#include <sstream>
#include <stdexcept>

#include <gtest/gtest.h>

#include "tests/support/exported_scene.h"
#include "tools/vsqinfo/vsq_reader.h"

namespace {

using namespace memhost;

// Compares the FNV-1a hashes of the texts, in which every blank counts.
TEST(HairScripts, HaveTheirExactTexts) {
    const std::pair<std::wstring, std::uint64_t> scripts[] = {
        {HairScript(), 0x497d7af220ea8853}, {HairCleanupScript, 0xfd9bcf2d62b80885}};
    for (const auto& [script, wanted] : scripts) {
        std::uint64_t sum = 0xcbf29ce484222325;
        for (const wchar_t letter : script) {
            sum = (sum ^ static_cast<std::uint64_t>(letter)) * 0x100000001b3;
        }
        EXPECT_EQ(sum, wanted);
    }
}

std::wstring names_in(SceneBuilder& scene) {
    std::wstring all;
    for (const auto& node : scene.host().nodes()) {
        all += node->name() + L"|";
    }
    return all;
}

// The cases are the ways in which a pass can end. It removes its temporary nodes unless it fails.
TEST(Hair, IsInTheSceneOnlyDuringAPass) {
    const auto cancel = [](SceneBuilder& scene) { scene.host().cancel_at_poll(2); };
    const auto fail = [](SceneBuilder& scene) { scene.host().scripts().set_failing(); };
    const auto spoil = [](SceneBuilder& scene) {
        auto& bad = scene.make<StandardMaterial>(L"m").diffuse(
            [](TimeValue) -> Color { throw std::runtime_error("no colour"); });
        scene.node(L"Bad").mesh(box_mesh(1, 1, 1)).material(bad);
    };
    const struct {
        const char* name;
        bool wanted;
        std::function<void(SceneBuilder&)> prepare;
        std::uint64_t curves;
        std::wstring added;
        bool throws;
    } cases[] = {
        {"whole", true, [](auto&) {}, 10, L"Head||", false},
        {"not wanted", false, [](auto&) {}, 0, L"", false},
        {"cancelled", true, cancel, 0, L"Head||", false},
        {"scripts fail", true, fail, 0, L"", false},
        // Here the temporary nodes stay, and the user has to delete them.
        {"the pass fails", true, spoil, 0, L"Head||", true},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        SceneBuilder scene;
        HairModifier hair;
        hair.strands = 5;
        scene.node(L"Head").at(0, 0, 9).mesh(box_mesh(1, 1, 1)).hair(hair);
        scene.node(L"").mesh(box_mesh(1, 1, 1)).hair(hair);
        scene.node(L"Bald").mesh(box_mesh(1, 1, 1));
        one.prepare(scene);
        const std::wstring names_before = names_in(scene);
        ScriptRunner& scripts = scene.host().scripts();
        scene.host().on_progress([&](int, const std::wstring&) {
            EXPECT_EQ(scripts.calls().size(), one.wanted ? 1u : 0u);
            EXPECT_EQ(names_in(scene), names_before + one.added);
        });

        Qor::Options options(&scene.host());
        options.HairAndFur = one.wanted;
        if (one.throws) {
            EXPECT_THROW(exported(scene, options), std::runtime_error);
        } else {
            std::istringstream text(exported(scene, options));
            EXPECT_EQ(vsqinfo::read_vsq(text).curves, one.curves);
        }
        EXPECT_EQ(names_in(scene), names_before + (one.throws ? one.added : L""));
        std::vector<std::wstring> run;
        for (const ScriptRunner::Call& call : scripts.calls()) {
            run.push_back(call.script);
            EXPECT_EQ(call.source, MAXScript::ScriptSource::NonEmbedded);
            EXPECT_TRUE(!call.quiet_errors && call.log_quiet_errors);
        }
        std::vector<std::wstring> wanted = {HairScript(), HairCleanupScript};
        wanted.resize(one.throws ? 1u : one.wanted ? 2u : 0u);
        EXPECT_EQ(run, wanted);
    }
}

// The strands are in world space, so no parent node may move them again.
TEST(Hair, HasTheNameOfItsMeshAndIsInWorldSpace) {
    SceneBuilder scene;
    HairModifier hair;
    hair.strands = 1;
    hair.segments = 1;
    hair.length = 2;
    hair.droop = 0;
    scene.node(L"Outer").at(4, 5, 6).child(L"Head").mesh(grid_mesh(1, 1, 1)).hair(hair);
    const float strand[] = {4, 5, 6, 4, 5, 6 + 2.0f / 3, 4, 5, 8 - 2.0f / 3, 4, 5, 8};
    const std::string text = exported(scene);
    const size_t start =
        text.rfind("\ngroup \"Head\" {\nobject \"Head\" {\ngeometry \"qor_curves\"");
    ASSERT_NE(start, std::string::npos);
    EXPECT_NE(text.find({reinterpret_cast<const char*>(strand), sizeof strand}, start),
              std::string::npos);
    EXPECT_NE(text.find("transform 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1\n", start), std::string::npos);
}

}  // namespace
