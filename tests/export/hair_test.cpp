#include "plugins/3dsmax/export/hair_scripts.h"

#include <sstream>
#include <stdexcept>

#include <gtest/gtest.h>

#include "tests/support/exported_scene.h"
#include "tools/vsqinfo/vsq_reader.h"

namespace {

using memhost::HairModifier;
using memhost::SceneBuilder;

constexpr const wchar_t* kHairScriptLines[] = {
    L"velmora_hair_and_fur_data = attributes velmora_hair_and_fur_data",
    L"(",
    L"\tparameters data",
    L"\t(",
    L"\t\tvelmora_start_radius  type:#float  default:1 ",
    L"\t  velmora_end_radius    type:#float  default:1 ",
    L"\t\tvelmora_delete  type:#boolean  default:True",
    L"    velmora_root_color type:#color",
    L"    velmora_tip_color type:#color",
    L"    velmora_hue type:#float default:10 ",
    L"    velmora_value type:#float default:50 ",
    L"\t)",
    L")",
    L" ",
    L" for OBJ in Geometry where OBJ.modifiers[#Hair_and_Fur]!=undefined do ",
    L" (",
    L"  if OBJ != undefined do (",
    L"    root = OBJ.modifiers[#Hair_and_Fur].HairRootThickness ",
    L"    tip = OBJ.modifiers[#Hair_and_Fur].HairTipThickness \t",
    L"    name = OBJ.name",
    L"    tc = OBJ.modifiers[#Hair_and_Fur].MaterialTipColor ",
    L"    rc = OBJ.modifiers[#Hair_and_Fur].MaterialRootColor ",
    L"    hv = OBJ.modifiers[#Hair_and_Fur].MaterialHueVariation  ",
    L"    vv = OBJ.modifiers[#Hair_and_Fur].MaterialValueVariation  ",
    L"    obj = OBJ.modifiers[#Hair_and_Fur].ConvertHairsToSplines instance:OBJ",
    L"    obj.name = name",
    L"    custAttributes.add obj velmora_hair_and_fur_data",
    L"    obj.velmora_start_radius = root   ",
    L"\t  obj.velmora_end_radius = tip",
    L"    obj.velmora_root_color = rc",
    L"    obj.velmora_tip_color =  tc",
    L"    obj.velmora_hue =  hv",
    L"    obj.velmora_value =  vv",
    L"   )",
    L" )",
};

constexpr wchar_t kHairCleanupScript[] =
    L"for OBJ in Shapes where isProperty OBJ.baseObject #velmora_delete == true do ( if OBJ != "
    L"undefined do delete OBJ )";

TEST(HairScripts, AreTheseTextsToTheBlank) {
    std::wstring script;
    for (const wchar_t* line : kHairScriptLines) {
        script += std::wstring(line) + L"\n";
    }
    EXPECT_EQ(HairScript, script);
    EXPECT_EQ(HairCleanupScript, std::wstring(kHairCleanupScript));
}

// Two nodes with hair, one of them without a name, and one without hair.
struct HairyScene : SceneBuilder {
    HairyScene() {
        HairModifier hair;
        hair.strands = 5;
        node(L"Head").at(0, 0, 9).mesh(memhost::box_mesh(1, 1, 1)).hair(hair);
        node(L"").mesh(memhost::box_mesh(1, 1, 1)).hair(hair);
        node(L"Bald").mesh(memhost::box_mesh(1, 1, 1));
    }

    std::wstring names() {
        std::wstring all;
        for (const auto& node : host().nodes()) {
            all += node->name() + L"|";
        }
        return all;
    }
};

vsqinfo::VsqSummary read_back(const std::string& text) {
    std::istringstream stream(text);
    return vsqinfo::read_vsq(stream);
}

// How a pass ends, and what has become of the scene by then.
TEST(Hair, IsInTheSceneForAsLongAsAPassTakes) {
    using Prepare = void (*)(SceneBuilder&);
    const Prepare nothing = [](SceneBuilder&) {};
    const Prepare cancel = [](SceneBuilder& scene) { scene.host().cancel_at_poll(2); };
    const Prepare fail = [](SceneBuilder& scene) { scene.host().scripts().set_failing(); };
    const Prepare spoil = [](SceneBuilder& scene) {
        auto& bad = scene.make<memhost::StandardMaterial>(L"m").diffuse(
            [](TimeValue) -> Color { throw std::runtime_error("no colour"); });
        scene.node(L"Bad").mesh(memhost::box_mesh(1, 1, 1)).material(bad);
    };
    const struct {
        const char* name;
        bool wanted;
        Prepare prepare;
        std::uint64_t curves;
        std::wstring added_in_pass;
        bool throws;
    } cases[] = {
        {"whole", true, nothing, 10, L"Head||", false},
        {"not wanted", false, nothing, 0, L"", false},
        {"cancelled", true, cancel, 0, L"Head||", false},
        {"scripts fail", true, fail, 0, L"", false},
        // What is left then, the user sees and deletes.
        {"the pass fails", true, spoil, 0, L"Head||", true},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        HairyScene scene;
        one.prepare(scene);
        const std::wstring names_before = scene.names();
        memhost::ScriptRunner& scripts = scene.host().scripts();
        scene.host().on_progress([&](int, const std::wstring&) {
            EXPECT_EQ(scripts.calls().size(), one.wanted ? 1u : 0u);
            EXPECT_EQ(scene.names(), names_before + one.added_in_pass);
        });

        Qor::Options options(&scene.host());
        options.HairAndFur = one.wanted;
        if (one.throws) {
            EXPECT_THROW(exported(scene, options), std::runtime_error);
        } else {
            EXPECT_EQ(read_back(exported(scene, options)).curves, one.curves);
        }
        EXPECT_EQ(scene.names(), names_before + (one.throws ? one.added_in_pass : L""));
        ASSERT_EQ(scripts.calls().size(), one.throws ? 1u : one.wanted ? 2u : 0u);
        for (size_t i = 0; i < scripts.calls().size(); ++i) {
            const memhost::ScriptRunner::Call& call = scripts.calls()[i];
            EXPECT_EQ(call.script, i == 0 ? HairScript : HairCleanupScript);
            EXPECT_EQ(call.source, MAXScript::ScriptSource::NonEmbedded);
            EXPECT_FALSE(call.quiet_errors);
            EXPECT_TRUE(call.log_quiet_errors);
        }
    }
}

// The strands come out where the mesh stands, and below no node that would move them again.
TEST(Hair, StandsUnderTheNameOfItsMeshInWorldSpace) {
    SceneBuilder scene;
    HairModifier hair;
    hair.strands = 1;
    hair.segments = 1;
    hair.length = 2;
    hair.droop = 0;
    scene.node(L"Outer").at(4, 5, 6).child(L"Head").mesh(memhost::grid_mesh(1, 1, 1)).hair(hair);
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
