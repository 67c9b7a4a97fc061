#include <algorithm>
#include <fstream>
#include <string>
#include <tuple>
#include <vector>

#include <assimp/config.h>
#include <assimp/scene.h>
#include <gmock/gmock.h>
#include <assimp/Importer.hpp>

#include "tests/import/imported_model.h"
#include "tests/import/made_model.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/thrown_text.h"
#include "tools/vsqexport/import/camera_import.h"
#include "tools/vsqexport/import/model_unit.h"

using namespace memhost;
using namespace vsqexport;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

const std::string kSamples = VSQ_SAMPLES "/";
const std::string kTriangle = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";

// The path of a new file in `folder`.
std::string written(const TemporaryFolder& folder, const std::string& name,
                    const std::string& content) {
    std::ofstream(std::filesystem::u8path(folder / name), std::ios::binary) << content;
    return folder / name;
}

// Compares assimp's tree and its matrices, computed with its own types, with the host's. What
// assimp splits into helpers is one node in the host.
void expect_same(aiNode* const* expected, unsigned count, const aiMatrix4x4& parent_world,
                 INode& parent, const Matrix3& z_up) {
    ASSERT_EQ(parent.NumberOfChildren(), static_cast<int>(count));
    for (unsigned i = 0; i < count; ++i) {
        INode& node = *parent.GetChildNode(static_cast<int>(i));
        const aiNode* source = expected[i];
        aiMatrix4x4 world = parent_world * source->mTransformation;
        while (std::string(source->mName.C_Str()).find("$AssimpFbx$") != std::string::npos) {
            source = source->mChildren[0];
            world *= source->mTransformation;
        }
        EXPECT_EQ(utf8_from_units(node.GetName()), source->mName.C_Str());
        for (const aiVector3D& corner : {aiVector3D(), {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}) {
            const aiVector3D p = world * corner;
            const Point3 q = Point3(corner.x, corner.y, corner.z) * node.GetNodeTM(0);
            EXPECT_LT((q - Point3(p.x, p.y, p.z) * z_up).Length(), 1e-5f * (1 + p.Length()))
                << source->mName.C_Str();
        }
        expect_same(source->mChildren, source->mNumChildren, world, node, z_up);
    }
}

TEST(ModelImport, AgreesWithAssimpOnNamesTreeAndWorldMatrices) {
    SKIP_WITHOUT_MODELS();
    struct Model {
        std::string path;
        char up;        // the axis in assimp's scene
        bool has_root;  // the root becomes a node
        int unit;       // from the format or the file; inches if neither has one
    };
    const Model models[] = {
        {kModels + "3DS/cubes_with_alpha.3DS", 'Y', false, UNITS_INCHES},
        {kModels + "ASE/ThreeCubesGreen.ASE", 'Y', false, UNITS_INCHES},
        {kModels + "BLEND/CubeHierarchy_248.blend", 'Z', false, UNITS_METERS},
        {kModels + "PLY/Wuson.ply", 'Z', true, UNITS_INCHES},
        {kModels + "3MF/box.3mf", 'Z', true, UNITS_MILLIMETERS},
        {kModels + "Collada/cameras.dae", 'Y', true, UNITS_METERS},
        {kModels + "FBX/cubes_with_mirroring_and_pivot.fbx", 'Y', true, UNITS_METERS},
        {kModels + "FBX/phong_cube.fbx", 'Y', true, UNITS_CENTIMETERS},
        {kModels + "FBX/embedded_ascii/box.FBX", 'Z', false, UNITS_METERS},
        {kModels + "IFC/AC14-FZK-Haus.ifc", 'Y', true, UNITS_INCHES},
        {kModels + "LWO/LWO2/hierarchy_smoothed.lwo", 'Y', true, UNITS_INCHES},
        {kModels + "MD5/SimpleCube.md5mesh", 'Y', false, UNITS_INCHES},
        {kModels + "OBJ/spider.obj", 'Y', true, UNITS_INCHES},
        {kSamples + "awkward-names.gltf", 'Y', true, UNITS_METERS},
        {kSamples + "desk-lamp.gltf", 'Y', true, UNITS_METERS},
        {kSamples + "windmill.dae", 'Y', true, UNITS_METERS},
    };
    for (const Model& model : models) {
        SCOPED_TRACE(model.path);
        ImportedModel scene(model.path);
        EXPECT_EQ(scene.host().unit_type(), model.unit);
        Assimp::Importer importer;
        importer.SetPropertyBool(AI_CONFIG_IMPORT_COLLADA_USE_COLLADA_NAMES, true);
        const aiScene* expected = importer.ReadFile(model.path, 0);
        ASSERT_NE(expected, nullptr);
        const aiNode& root = *expected->mRootNode;
        const Matrix3 z_up = model.up == 'Z' ? Matrix3() : rotation_x(90);
        if (model.has_root) {
            expect_same(&expected->mRootNode, 1, {}, scene.host().root(), z_up);
        } else {
            expect_same(root.mChildren, root.mNumChildren, root.mTransformation,
                        scene.host().root(), z_up);
        }
    }
}

TEST(ModelImport, RefusesAFileWithOneLineThatNamesFileAndReason) {
    const std::tuple<std::string, std::string, const char*> refusals[] = {
        // name and content of a file, which not every name allows, and the reason
        {"empty.obj", "", "the file is empty"},
        {"prose.txt", "Once upon a time\nthere was a file.\n", "its format is not known"},
        {"two\nlines.gltf", "{ \"asset\": ", "its content is not that of a .gltf file"},
        {"faulty.obj", "v 0 0 0\nv 1 0 0\nf 1 2 9\n", "OBJ: vertex index out of range"},
        {"greedy.off", "COFF\n# counts\n99999999999999999999 6 0\n0 0 0\n",
         "promises more than the file can hold"},
        {"faces.off", "OFF 3 4000000000 0\n0 0 0\n0 0 0\n0 0 0\n",
         "promises more than the file can hold"},
        {"no nodes.gltf", R"({"asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": []}]})",
         "it holds no nodes"},
        {"no folder/model.gltf", "", "there is no such file"},
        {"", "", "this is a folder"},
        {"/dev/full", "", "not a regular file"},
    };
    for (const auto& [name, content, reason] : refusals) {
        const TemporaryFolder folder;
        const std::string path = written(folder, name, content);
        std::string shown = path;
        std::replace(shown.begin(), shown.end(), '\n', ' ');
        SceneBuilder scene;
        const std::string line = thrown_text([&] { import_model(path, scene); });
        EXPECT_THAT(line, testing::StartsWith(shown + ": "));
        EXPECT_THAT(line, HasSubstr(reason));
        EXPECT_EQ(line.find('\n'), std::string::npos) << line;
        EXPECT_EQ(scene.host().nodes().size(), 1u) << path;
    }
}

TEST(ModelImport, ReadsUnicodePathsAndLatin1Names) {
    const TemporaryFolder folder;
    const std::string name = "T\xc3\xbcr \xe6\xa4\x85.obj";
    ImportedModel scene(written(folder, name, "o caf\xe9\n" + kTriangle));
    EXPECT_NO_THROW(scene.find("caf\xc3\xa9"));
}

// The model library recurses along the chain, deeper than a usual stack allows.
TEST(ModelImport, ReadsAChainOfThirtyThousandNodes) {
    constexpr int kDepth = 30000;
    std::string nodes;
    for (int i = 1; i < kDepth; ++i) {
        nodes += R"({"translation": [1, 0, 0], "children": [)" + std::to_string(i) + "]},";
    }
    const TemporaryFolder folder;
    ImportedModel scene(written(
        folder, "chain.gltf",
        R"({"asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [0]}], "nodes": [)" +
            nodes + R"({"translation": [1, 0, 0]}]})"));
    ASSERT_EQ(scene.host().nodes().size(), kDepth + 1u);
    EXPECT_EQ(scene.host().nodes().back()->GetNodeTM(0).GetTrans().x, kDepth);
}

TEST(ModelImport, CountsWhatMeshesHaveThatIsNotShown) {
    SKIP_WITHOUT_MODELS();
    const std::pair<const char*, const char*> cases[] = {
        {"OBJ/testpoints.obj", ": 24 points"},
        {"OBJ/testline.obj", ": 18 lines"},
        {"OBJ/cube_with_vertexcolors.obj", ": 36 colours of vertices"},
        {"PLY/points.ply", ": 4 points are left out"},
        {"Collada/cube_with_2UVs.DAE", ": 1 further sets of texture coordinates"},
    };
    for (const auto& [file, warning] : cases) {
        EXPECT_THAT(testing::PrintToString(ImportedModel(kModels + file).warnings),
                    HasSubstr(warning))
            << file;
    }
}

// The file says: translation, scaling offset and scaling pivot of 0.0019 in y, scaled by 1.0019.
TEST(ModelImport, FoldsThePivotsOfAnFbxNodeIntoItsMatrix) {
    SKIP_WITHOUT_MODELS();
    ImportedModel scene(kModels + "FBX/close_to_identity_transforms.fbx");
    const MemoryNode& node = *scene.find("Cube3").children().at(0);
    EXPECT_EQ(utf8_from_units(node.name().c_str()), "Cube1");
    Interval valid = FOREVER;
    const Matrix3 local = node.local_transform().at(0, valid);
    EXPECT_NEAR(local.GetRow(1).y, 1.0019f, 1e-6f);
    EXPECT_NEAR(local.GetTrans().y, 0.0019 + 0.0019 + 0.0019 - 1.0019 * 0.0019, 1e-7);
}

// A scene keeps the low bytes of a name: that of the first letter is the second name.
TEST(ModelImport, NumbersNamesThatWouldBecomeOne) {
    const TemporaryFolder folder;
    ImportedModel scene(written(
        folder, "m.gltf", R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0,1,2,3]}],
        "nodes":[{"name":"\u0141"},{"name":"A"},{"name":"\u6905"},{"name":"A"}]})"));
    std::vector<std::string> names;
    for (const auto& node : scene.host().nodes()) {
        names.push_back(utf8_from_units(node->GetName()));
    }
    EXPECT_THAT(names, testing::IsSupersetOf({"\xc5\x81", "A 2", "\xe6\xa4\x85", "A 2"}));
}

// Textures that lie on a mesh as on a sphere, a cylinder or a plane have no coordinates in the
// file.
TEST(ModelImport, ComputesCoordinatesOfProjectedTextures) {
    SKIP_WITHOUT_MODELS();
    for (const char* const kind : {"planar", "cylindrical", "spherical"}) {
        ImportedModel scene(kModels + "LWO/LWO2/MappingModes/earth_" + kind + "_z.lwo");
        EXPECT_TRUE(scene.object<TriObject>("Layer_0").GetMesh().mapSupport(1)) << kind;
    }
}

TEST(ModelImport, FindsTexturesOfTheModelAndWarnsOfOthers) {
    ImportedModel crate(kSamples + "crate.obj");
    EXPECT_THAT(crate.warnings, ElementsAre());
    auto* map = dynamic_cast<BitmapTex*>(crate.find("Crate").GetMtl()->GetSubTexmap(kDiffuseSlot));
    ASSERT_NE(map, nullptr);
    EXPECT_NE(map->GetBitmap(0), nullptr);
    EXPECT_EQ(crate.object<TriObject>("Crate").GetMesh().numVerts, 8);
    EXPECT_EQ(crate.object<TriObject>("Crate").GetMesh().faces[0].smGroup, 1u);

    ImportedModel flag(kSamples + "flag.gltf");
    EXPECT_THAT(flag.warnings, ElementsAre());
    Texmap* drawn = flag.find("Flag").GetMtl()->GetSubTexmap(kDiffuseSlot);
    EXPECT_NE(dynamic_cast<ProceduralMap*>(drawn), nullptr);

    const TemporaryFolder folder;
    written(folder, "lost.mtl", "newmtl M\nmap_Kd lost.png\n");
    const std::string model = "mtllib lost.mtl\nusemtl M\n" + kTriangle;
    EXPECT_THAT(ImportedModel(written(folder, "lost.obj", model)).warnings,
                ElementsAre(AllOf(HasSubstr("import-texture: "), HasSubstr("lost.png"))));
}

// What the user says counts instead of what the file says.
TEST(ModelImport, TakesAxisScaleAndUnitFromTheUser) {
    const TemporaryFolder folder;
    const std::string path = written(folder, "m.obj", "v 0 0 0\nv 1 0 0\nv 1 2 3\nf 1 2 3\n");
    const struct {
        const char* what;
        vsqexport::ImportOptions options;
        Point3 corner;  // where the third vertex is
    } cases[] = {
        {"as the file says", {}, {1, -3, 2}},
        {"x up", {{}, 0, 1, false}, {2, 3, 1}},
        {"z up, ten times as large", {{}, 2, 10, false}, {10, 20, 30}},
    };
    for (const auto& one : cases) {
        ImportedModel scene(path, one.options);
        MemoryNode& node = *scene.host().nodes().back();
        Box3 box;
        node.EvalWorldState(0).obj->GetWorldBoundBox(0, &node, nullptr, box);
        const float y = one.corner.y < 0 ? box.pmin.y : box.pmax.y;
        EXPECT_LT((Point3(box.pmax.x, y, box.pmax.z) - one.corner).Length(), 1e-5f) << one.what;
    }
    // An FBX unit that the host doesn't have.
    MadeModel model({"A"});
    model.mMetaData = aiMetadata::Alloc(1);
    model.mMetaData->Set(0, "UnitScaleFactor", 25.0);
    const auto unit = vsqexport::unit_of_model(model, ".fbx");
    ASSERT_TRUE(unit);
    EXPECT_EQ(unit->type, UNITS_CENTIMETERS);
    EXPECT_EQ(unit->count, 25);
}

// Kinds of things that few files have.
TEST(ModelImport, WarnsOfWhatItLeavesOutAltogether) {
    MadeModel model({"A"});
    model.move("A", {{0, 1}});
    model.add_animation("take");
    append(model.mAnimations[1]->mMeshChannels, model.mAnimations[1]->mNumMeshChannels);
    model.move("A", {{0, 1}});
    model.animation();
    append(model.mCameras, model.mNumCameras).mName = "Lost";
    vsqexport::HeldObjects held;
    import_cameras(model, {}, vsqexport::NodeIndex(model), held, model.warnings);
    EXPECT_THAT(
        texts_of(model.warnings),
        testing::ElementsAre(HasSubstr("import-other-animations: animations that move the same as"),
                             HasSubstr("import-mesh-animations: animations that replace"),
                             HasSubstr("import-camera: the camera \"Lost\" is left out: no node")));

    const TemporaryFolder folder;
    const std::string broken =
        "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\n"
        "property float z\nelement face 1\nproperty list uchar int vertex_indices\nend_header\n"
        "0 0 0\n1 0 0\n0 1 0\n3 0 1 9\n";
    EXPECT_THAT(
        ImportedModel(written(folder, "broken.ply", broken)).warnings,
        ElementsAre(AllOf(HasSubstr("import-mesh: "), HasSubstr("the mesh \"\" is left out"))));
}

}  // namespace
