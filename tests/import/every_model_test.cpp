#include "tests/import/imported_model.h"
#include "tests/support/exported_libraries.h"
#include "tests/support/exported_scene.h"
#include "tools/vsqinfo/checks/file_report.h"
#include "tools/vsqinfo/qort_reader.h"
#include "tools/vsqinfo/vsq_reader.h"

namespace {

namespace fs = std::filesystem;

// The triangles that the scene's file must hold: one for each face and for each point light, and
// two for each area light. Other lights don't reach the renderer.
std::uint64_t triangles_of(memhost::SceneBuilder& scene) {
    std::uint64_t triangles = 0;
    for (const auto& node : scene.host().nodes()) {
        Object* object = node->EvalWorldState(0).obj;
        if (auto* mesh = dynamic_cast<TriObject*>(object)) {
            triangles += static_cast<std::uint64_t>(mesh->GetMesh().numFaces);
        } else if (auto* light = dynamic_cast<GenLight*>(object)) {
            triangles += light->Type() == OMNI_LIGHT ? 1 : 0;
            triangles += light->Type() == LightscapeLight::AREA_TYPE ? 2 : 0;
        }
    }
    return triangles;
}

// Many of these files are broken on purpose. The others must become scenes that lack nothing.
TEST(EveryModel, BecomesAWholeSceneOrIsRefusedInOneLine) {
    SKIP_WITHOUT_MODELS();
    const TemporaryFolder folder;
    const std::string target = folder / "scene.vsq";
    int exported = 0;
    for (const auto& entry : fs::recursive_directory_iterator(fs::u8path(VSQ_TEST_MODELS))) {
        if (!entry.is_regular_file()) {
            continue;
        }
        const std::string path = entry.path().u8string();
        SCOPED_TRACE(path);
        bool is_readable = false;
        try {
            ImportedModel scene(path);
            is_readable = true;
            const ExportedLibraries libraries;
            SceneExporter exporter(&scene.host(), scene.host().GetRootNode(),
                                   std::make_shared<Qor::Options>(&scene.host()), {});
            exporter.Run(target, false, true, false);
            const vsqinfo::VsqSummary summary = vsqinfo::read_vsq_file(target);
            std::uint64_t triangles = summary.triangles;
            for (const std::string& library : libraries.paths()) {
                triangles += vsqinfo::read_qort_file(library).triangles;
            }
            EXPECT_EQ(summary.groups, scene.host().nodes().size() - 1 + libraries.paths().size());
            EXPECT_EQ(triangles, triangles_of(scene));
            EXPECT_EQ(summary.error_texts, std::vector<std::string>());
            const vsqinfo::FileReport report = vsqinfo::report_on_file(target);
            EXPECT_FALSE(report.has_errors()) << report_text(report);
            ++exported;
        } catch (const std::runtime_error& failure) {
            const std::string line = failure.what();
            EXPECT_FALSE(is_readable) << line;
            EXPECT_EQ(line.find('\n'), std::string::npos) << line;
            EXPECT_GT(line.size(), path.size() + 2) << "there is no reason";
        }
    }
    EXPECT_GT(exported, 300);
}

}  // namespace
