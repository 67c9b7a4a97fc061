#include "standins/host/import/model_import.h"

#include <filesystem>
#include <fstream>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <assimp/commonMetaData.h>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <gmock/gmock.h>
#include <assimp/Importer.hpp>

#include "standins/host/import/up_axis.h"
#include "standins/host/memory/host_text.h"

using namespace memhost;
namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;

namespace {

const std::string kSamples = std::string(VSQ_SAMPLES) + "/";
const std::string kModels = std::string(VSQ_TEST_MODELS) + "/";

// The tests of real models need the package that holds them.
#define SKIP_WITHOUT_MODELS()                                      \
    if (!fs::is_directory(fs::u8path(kModels))) {                  \
        GTEST_SKIP() << "assimp-testmodels is not at " << kModels; \
    }

// One text for each node below `node`, depth first: a dot for each level, the name, the place.
void outline(INode& node, const std::string& dots, std::vector<std::string>& lines) {
    for (int i = 0; i < node.NumberOfChildren(); ++i) {
        INode& child = *node.GetChildNode(i);
        const Point3 place = child.GetNodeTM(0).GetTrans();
        char numbers[100];
        std::snprintf(numbers, sizeof(numbers), " %.4g %.4g %.4g", place.x + 0.0, place.y + 0.0,
                      place.z + 0.0);
        lines.push_back(dots + utf8_from_units(child.GetName()) + numbers);
        outline(child, dots + ".", lines);
    }
}

std::vector<std::string> outline_of(const std::string& path) {
    SceneBuilder scene;
    import_model(path, scene);
    std::vector<std::string> lines;
    outline(scene.host().root(), "", lines);
    return lines;
}

// What import_model says of a file that it refuses, or nothing.
std::string refusal_of(const std::string& path) {
    SceneBuilder scene;
    try {
        import_model(path, scene);
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(scene.host().nodes().size(), 1u) << path;
        return error.what();
    }
    return "";
}

// A file that is gone with the test.
class ScratchFile {
public:
    ScratchFile(const std::string& name, const std::string& content)
        : path_((fs::u8path(testing::TempDir()) / fs::u8path(name)).u8string()) {
        std::ofstream(fs::u8path(path_), std::ios::binary) << content;
    }
    ~ScratchFile() { fs::remove(fs::u8path(path_)); }

    const std::string& path() const { return path_; }

private:
    std::string path_;
};

TEST(ModelImport, KeepsHierarchyAndPlacesWithZUp) {
    // The joints lean by 30 and 60 degrees, and the whole lamp is turned by 60 around the vertical.
    EXPECT_THAT(outline_of(kSamples + "desk-lamp.gltf"),
                ElementsAre("Desk 0 0 0", ".Top 0 0 0.7", ".Lamp -0.5 0.2 0.72",
                            "..Foot -0.5 0.2 0.73", "..Lower joint -0.5 0.2 0.74",
                            "...Lower arm -0.45 0.2866 0.9132", "...Upper joint -0.4 0.3732 1.086",
                            "....Upper arm -0.3125 0.5248 1.086", "....Head -0.225 0.6763 1.086",
                            ".....Shade -0.225 0.6763 1.036", ".....Bulb -0.225 0.6763 0.9764"));
    EXPECT_THAT(
        outline_of(kSamples + "windmill.dae"),
        ElementsAre("Field 0 0 0", ".Tower 10 0 0", "..Cap 10 0 12", "...Wheel 11.41 -1.414 12",
                    "....Blade1 11.41 -1.414 12", "....Blade2 11.41 -1.414 12",
                    "....Blade3 11.41 -1.414 12", "....Blade4 11.41 -1.414 12"));
}

TEST(ModelImport, KeepsNamesAsTheyAre) {
    EXPECT_THAT(
        outline_of(kSamples + "awkward-names.gltf"),
        ElementsAre("Names 0 0 0", ".say \"hello\" 0 0 0", ".two\nlines 2 0 0",
                    ".T\xc3\xbcr und Fenster 4 0 0",
                    ".\xe6\xa4\x85\xe5\xad\x90 \xf0\x9f\xaa\x91 6 0 0", ".nodes[5] 8 0 0",
                    ".Twin 10 0 0", ".Twin 12 0 0", ".back\\slash { and } brace # hash 14 0 0"));

    // Bytes of an old encoding stay readable.
    const ScratchFile latin("latin.obj", "o caf\xe9\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    EXPECT_THAT(outline_of(latin.path()), ElementsAre("latin.obj 0 0 0", ".caf\xc3\xa9 0 0 0"));
}

// Both files come from the host, and their numbers are the host's own, as the text of the second
// one shows.
TEST(ModelImport, GivesTheHostsOwnFilesBackUnturned) {
    SKIP_WITHOUT_MODELS();
    EXPECT_THAT(outline_of(kModels + "3DS/CameraRollAnim.3ds"),
                ElementsAre("Box01 10.54 -0.8547 0", "Camera01 -153.1 3.272 22.78"));
    EXPECT_THAT(outline_of(kModels + "ASE/CameraRollAnim.ase"),
                IsSupersetOf({".Camera01 -153.1 3.272 22.78", ".Box01 10.54 -0.8547 0"}));
}

struct Model {
    const char* file;
    char up;        // of what assimp makes of it
    bool has_root;  // its root becomes a node
};

// Assimp's tree and matrices, computed by its own types, against the host's.
void expect_same(const aiNode& expected, const aiMatrix4x4& parent_world, INode& node, char up) {
    const aiMatrix4x4 world = parent_world * expected.mTransformation;
    EXPECT_EQ(utf8_from_units(node.GetName()), expected.mName.C_Str());
    const aiVector3D corners[] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    for (const aiVector3D& corner : corners) {
        const aiVector3D p = world * corner;
        const Point3 q = Point3(corner.x, corner.y, corner.z) * node.GetNodeTM(0);
        const float tolerance = 1e-5f * (1 + p.Length());
        EXPECT_NEAR(q.x, p.x, tolerance) << expected.mName.C_Str();
        EXPECT_NEAR(q.y, up == 'Y' ? -p.z : p.y, tolerance) << expected.mName.C_Str();
        EXPECT_NEAR(q.z, up == 'Y' ? p.y : p.z, tolerance) << expected.mName.C_Str();
    }
    ASSERT_EQ(node.NumberOfChildren(), static_cast<int>(expected.mNumChildren));
    for (unsigned i = 0; i < expected.mNumChildren; ++i) {
        expect_same(*expected.mChildren[i], world, *node.GetChildNode(static_cast<int>(i)), up);
    }
}

TEST(ModelImport, AgreesWithAssimpOnNamesTreeAndWorldMatrices) {
    SKIP_WITHOUT_MODELS();
    const Model models[] = {
        {"3DS/cubes_with_alpha.3DS", 'Y', false},
        {"ASE/ThreeCubesGreen.ASE", 'Y', false},
        {"BLEND/CubeHierarchy_248.blend", 'Z', false},
        {"3MF/box.3mf", 'Z', true},
        {"Collada/cameras.dae", 'Y', true},
        {"Collada/regr01.dae", 'Y', true},
        {"FBX/cubes_with_mirroring_and_pivot.fbx", 'Y', true},
        {"FBX/embedded_ascii/box.FBX", 'Z', false},
        {"glTF2/cameras/Cameras.gltf", 'Y', true},
        {"IFC/AC14-FZK-Haus.ifc", 'Y', true},
        {"LWO/LWO2/hierarchy_smoothed.lwo", 'Y', true},
        {"MD5/SimpleCube.md5mesh", 'Y', false},
        {"OBJ/spider.obj", 'Y', true},
    };
    for (const Model& model : models) {
        SCOPED_TRACE(model.file);
        SceneBuilder scene;
        import_model(kModels + model.file, scene);

        Assimp::Importer importer;
        importer.SetPropertyBool(AI_CONFIG_IMPORT_COLLADA_USE_COLLADA_NAMES, true);
        const aiScene* expected = importer.ReadFile(kModels + model.file, 0);
        ASSERT_NE(expected, nullptr);
        const aiNode& root = *expected->mRootNode;

        INode& top = scene.host().root();
        if (model.has_root) {
            ASSERT_EQ(top.NumberOfChildren(), 1);
            expect_same(root, aiMatrix4x4(), *top.GetChildNode(0), model.up);
            continue;
        }
        ASSERT_EQ(top.NumberOfChildren(), static_cast<int>(root.mNumChildren));
        for (unsigned i = 0; i < root.mNumChildren; ++i) {
            expect_same(*root.mChildren[i], root.mTransformation,
                        *top.GetChildNode(static_cast<int>(i)), model.up);
        }
    }
}

struct UpCase {
    int axis;
    int sign;
    Point3 up_in_file;
};

TEST(UpAxis, BecomesTheHostsZWithoutMirroring) {
    const UpCase cases[] = {
        {0, 1, {1, 0, 0}},   {1, 1, {0, 1, 0}},   {2, 1, {0, 0, 1}},
        {0, -1, {-1, 0, 0}}, {1, -1, {0, -1, 0}}, {2, -1, {0, 0, -1}},
    };
    for (const UpCase& expected : cases) {
        aiScene scene;
        scene.mMetaData = aiMetadata::Alloc(2);
        scene.mMetaData->Set(0, "UpAxis", expected.axis);
        scene.mMetaData->Set(1, "UpAxisSign", expected.sign);
        const Matrix3 turn = scene_from_model(scene);

        const Point3 up = expected.up_in_file * turn;
        EXPECT_EQ(up.x, 0);
        EXPECT_EQ(up.y, 0);
        EXPECT_EQ(up.z, 1) << expected.axis << " " << expected.sign;

        // X turned into Y by Z, and not against it.
        const Point3 x = turn.GetRow(0);
        const Point3 y = turn.GetRow(1);
        const Point3 z = turn.GetRow(2);
        EXPECT_EQ(x.y * y.z - x.z * y.y, z.x);
        EXPECT_EQ(x.z * y.x - x.x * y.z, z.y);
        EXPECT_EQ(x.x * y.y - x.y * y.x, z.z);
    }
}

struct Refusal {
    std::string path;
    const char* reason;
};

TEST(ModelImport, RefusesWithOneLineThatNamesFileAndReason) {
    const std::string nodeless =
        R"({"asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": []}]})";
    const ScratchFile empty("empty.obj", "");
    const ScratchFile prose("prose.txt", "Once upon a time\nthere was a file.\n");
    const ScratchFile broken("two\nlines.gltf", "{ \"asset\": ");
    const ScratchFile faulty("faulty.obj", "v 0 0 0\nv 1 0 0\nf 1 2 9\n");
    const ScratchFile greedy("greedy.off", "COFF\n# counts\n99999999999999999999 6 0\n0 0 0\n");
    const ScratchFile greedy_faces("faces.off", "OFF 3 4000000000 0\n0 0 0\n0 0 0\n0 0 0\n");
    const ScratchFile no_nodes("no nodes.gltf", nodeless);
    const Refusal refusals[] = {
        {kSamples + "no such.gltf", "there is no such file"},
        {kSamples, "this is a folder"},
        {"/dev/full", "not a regular file"},
        {empty.path(), "the file is empty"},
        {prose.path(), "its format is not known"},
        {broken.path(), "its content is not that of a .gltf file"},
        {faulty.path(), "OBJ: vertex index out of range"},
        {greedy.path(), "counts more than the file can hold"},
        {greedy_faces.path(), "counts more than the file can hold"},
        {no_nodes.path(), "it holds no nodes"},
    };
    for (const Refusal& expected : refusals) {
        const std::string line = refusal_of(expected.path);
        EXPECT_THAT(line, HasSubstr(expected.reason)) << expected.path;
        EXPECT_THAT(line, HasSubstr(fs::u8path(expected.path).extension().u8string()));
        EXPECT_EQ(line.find('\n'), std::string::npos) << line;
    }
}

TEST(ModelImport, TakesTheUnitThatTheFileTells) {
    const ScratchFile obj("unit.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    std::vector<std::pair<std::string, int>> units = {{kSamples + "/desk-lamp.gltf", UNITS_METERS},
                                                      {kSamples + "/windmill.dae", UNITS_METERS},
                                                      {obj.path(), UNITS_INCHES}};
    if (fs::exists(kModels)) {
        units.push_back({kModels + "/FBX/box.fbx", UNITS_METERS});
    }
    for (const auto& [path, unit] : units) {
        SceneBuilder scene;
        import_model(path, scene);
        EXPECT_EQ(scene.host().unit_type(), unit) << path;
    }
}

TEST(ModelImport, ReadsAPathWithNationalCharacters) {
    const ScratchFile file("T\xc3\xbcr \xe6\xa4\x85.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    EXPECT_EQ(refusal_of(file.path()), "");
}

// The model library recurses along it, further than a usual stack goes.
TEST(ModelImport, ReadsAChainOfThirtyThousandNodes) {
    constexpr int kDepth = 30000;
    std::string nodes;
    for (int i = 0; i < kDepth; ++i) {
        const std::string below = std::to_string(i + 1);
        nodes += i == 0 ? "" : ",";
        nodes += R"({"translation": [1, 0, 0])";
        nodes += i + 1 < kDepth ? ", \"children\": [" + below + "]}" : "}";
    }
    const ScratchFile chain("chain.gltf",
                            R"({"asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [0]}],
                                "nodes": [)" +
                                nodes + "]}");
    SceneBuilder scene;
    import_model(chain.path(), scene);
    ASSERT_EQ(scene.host().nodes().size(), kDepth + 1u);
    EXPECT_EQ(scene.host().nodes().back()->GetNodeTM(0).GetTrans().x, kDepth);
}

// The triangle object of a node, or null.
TriObject* triangles_of(INode& node) {
    return dynamic_cast<TriObject*>(node.EvalWorldState(0).obj);
}

INode* find_node(INode& top, const std::string& name) {
    for (int i = 0; i < top.NumberOfChildren(); ++i) {
        INode* child = top.GetChildNode(i);
        INode* found = utf8_from_units(child->GetName()) == name ? child : find_node(*child, name);
        if (found) {
            return found;
        }
    }
    return nullptr;
}

TEST(ModelImport, PutsTheMeshesOfANodeTogether) {
    SceneBuilder scene;
    EXPECT_THAT(import_model(kSamples + "traffic-light.obj", scene), ElementsAre());
    INode* node = find_node(scene.host().root(), "TrafficLight");
    ASSERT_NE(node, nullptr);
    TriObject* object = triangles_of(*node);
    ASSERT_NE(object, nullptr);
    Mesh& mesh = object->GetMesh();
    EXPECT_EQ(mesh.numFaces, 3 * 12);
    EXPECT_EQ(mesh.numVerts, 3 * 8) << "faces share their corners in spite of their normals";
    EXPECT_EQ(mesh.faces[0].getMatID(), 0);
    EXPECT_EQ(mesh.faces[35].getMatID(), 2);
    EXPECT_EQ(mesh.faces[0].smGroup, 0u);
    EXPECT_EQ(mesh.GetSpecifiedNormals()->GetNormal(0, 0).z, 1);
    ASSERT_EQ(node->GetMtl()->NumSubMtls(), 3);
    EXPECT_EQ(std::wstring(node->GetMtl()->GetSubMtl(1)->GetName().data()), L"Red");
}

TEST(ModelImport, SharesTheObjectOfNodesThatShowTheSame) {
    SceneBuilder scene;
    import_model(kSamples + "desk-lamp.gltf", scene);
    INode* foot = find_node(scene.host().root(), "Foot");
    INode* shade = find_node(scene.host().root(), "Shade");
    ASSERT_TRUE(foot && shade);
    ASSERT_NE(triangles_of(*foot), nullptr);
    EXPECT_EQ(triangles_of(*foot), triangles_of(*shade));
}

TEST(ModelImport, FindsTexturesOfTheModelAndWarnsOfOthers) {
    SceneBuilder scene;
    EXPECT_THAT(import_model(kSamples + "crate.obj", scene), ElementsAre());
    INode* crate = find_node(scene.host().root(), "Crate");
    ASSERT_NE(crate, nullptr);
    Texmap* map = crate->GetMtl()->GetSubTexmap(kDiffuseSlot);
    ASSERT_EQ(map->ClassID(), Class_ID(BMTEX_CLASS_ID, 0));
    EXPECT_NE(static_cast<BitmapTex*>(map)->GetBitmap(0), nullptr);
    EXPECT_EQ(triangles_of(*crate)->GetMesh().numVerts, 8);
    EXPECT_EQ(triangles_of(*crate)->GetMesh().faces[0].smGroup, 1u);

    SceneBuilder flag;
    EXPECT_THAT(import_model(kSamples + "flag.gltf", flag), ElementsAre());
    map = find_node(flag.host().root(), "Flag")->GetMtl()->GetSubTexmap(kDiffuseSlot);
    EXPECT_NE(dynamic_cast<ProceduralMap*>(map), nullptr);

    const ScratchFile library("lost.mtl", "newmtl M\nmap_Kd lost.png\n");
    const ScratchFile model("lost.obj",
                            "mtllib lost.mtl\nusemtl M\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    SceneBuilder lost;
    EXPECT_THAT(import_model(model.path(), lost), ElementsAre(HasSubstr("lost.png")));
}

}  // namespace
