#include <cmath>
#include <memory>
#include <set>
#include <tuple>

#include <gtest/gtest.h>

#include "standins/host/memory/scene_builder.h"

using namespace memhost;

namespace {

Point3 corner(const Mesh& mesh, int face, int corner) {
    return mesh.verts[mesh.faces[face].v[corner]];
}

// Twice the area, along the side from which the corners go counter-clockwise.
Point3 facing(const Mesh& mesh, int face) {
    const Point3 a = corner(mesh, face, 0);
    return (corner(mesh, face, 1) - a) ^ (corner(mesh, face, 2) - a);
}

TEST(Mesh, IsCopiedWithAllThatBelongsToIt) {
    MeshBuilder built({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}});
    built.map_positions(1).map(7, {{0.5f, 0.25f, 0}}, {{0, 0, 0}});
    built.normal(0, 1, {0, 0, 2}).normal(0, 2, {1, 0, 0}, false);
    auto original = std::make_unique<Mesh>(built.mesh());
    Mesh copy(*original);
    Mesh assigned = box_mesh(1, 1, 1);
    assigned = *original;
    assigned = *&assigned;

    original->verts[1] = Point3(9, 9, 9);
    original->mapVerts(7)[0] = Point3(9, 9, 9);
    original->GetSpecifiedNormals()->Normal(0) = Point3(9, 9, 9);
    original.reset();
    for (Mesh* mesh : {&copy, &assigned}) {
        ASSERT_EQ(mesh->numVerts, 3);
        ASSERT_EQ(mesh->numFaces, 1);
        EXPECT_EQ(mesh->verts[1].x, 1);
        EXPECT_EQ(mesh->faces[0].v[2], 2u);
        EXPECT_EQ(mesh->mapVerts(7)[0].y, 0.25f);
        EXPECT_EQ(mesh->mapFaces(1)[0].t[2], 2u);
        EXPECT_EQ(mesh->getNumMapVerts(1), 3);
        MeshNormalSpec& normals = *mesh->GetSpecifiedNormals();
        EXPECT_EQ(normals.GetNormal(0, 1).z, 2);
        EXPECT_EQ(normals.GetNormalIndex(0, 0), -1);
        EXPECT_EQ(normals.GetNormalIndex(1, 0), -1) << "a face past the last has no normals";
        EXPECT_TRUE(normals.GetNormalExplicit(normals.GetNormalIndex(0, 1)));
        EXPECT_FALSE(normals.GetNormalExplicit(normals.GetNormalIndex(0, 2)));
    }
}

TEST(Mesh, HasOnlyTheChannelsThatItWasGiven) {
    Mesh mesh = grid_mesh(1, 1, 1);
    for (const int channel : {-1, 0, 2, 99, 100}) {
        EXPECT_FALSE(mesh.mapSupport(channel)) << channel;
        EXPECT_EQ(mesh.mapVerts(channel), nullptr);
        EXPECT_EQ(mesh.mapFaces(channel), nullptr);
    }
    EXPECT_TRUE(mesh.mapSupport(1));
    EXPECT_EQ(mesh.GetSpecifiedNormals(), nullptr);
}

TEST(Face, KeepsItsOtherFlagsBesideTheMaterialId) {
    Face face = {};
    face.flags = 7;
    face.setMatID(0xFFFF);
    face.setMatID(300);
    EXPECT_EQ(face.getMatID(), 300);
    EXPECT_EQ(face.flags, 300u << 16 | 7u);
}

// Each edge of a closed surface is passed once in either direction.
void expect_closed_and_outward(const Mesh& mesh) {
    std::set<std::tuple<DWORD, DWORD>> edges;
    for (int f = 0; f < mesh.numFaces; ++f) {
        EXPECT_GT(facing(mesh, f) % corner(mesh, f, 0), 0) << "face " << f;
        for (int c = 0; c < 3; ++c) {
            const Face& face = mesh.faces[f];
            EXPECT_TRUE(edges.insert({face.v[c], face.v[(c + 1) % 3]}).second) << "face " << f;
        }
    }
    for (const auto& [from, to] : edges) {
        EXPECT_TRUE(edges.count({to, from})) << from << " " << to;
    }
}

TEST(MeshBuilder, MakesClosedBodiesThatFaceOutwards) {
    const Mesh box = box_mesh(2, 4, 6);
    expect_closed_and_outward(box);
    EXPECT_EQ(facing(box, 0).z, -8);
    EXPECT_EQ(facing(box, 6).x, 24);
    EXPECT_EQ(box.faces[6].smGroup, box.faces[7].smGroup);
    EXPECT_EQ(box.faces[11].getMatID(), 5);

    const Mesh sphere = sphere_mesh(3, 8, 4);
    expect_closed_and_outward(sphere);
    EXPECT_EQ(sphere.numVerts, 2 + 3 * 8);
    EXPECT_EQ(sphere.numFaces, 8 * 2 * 3);
    // The coordinates of a face lie together, at the seam as well.
    for (int f = 0; f < sphere.numFaces; ++f) {
        const TVFace& face = sphere.mapFaces(1)[f];
        for (const DWORD t : face.t) {
            EXPECT_LE(std::fabs(sphere.mapVerts(1)[t].x - sphere.mapVerts(1)[face.t[0]].x), 0.126f);
        }
    }
}

TEST(MeshObjects, TellTheirBoxInTheWorld) {
    SceneBuilder scene;
    const NodeBuilder node = scene.node(L"Box")
                                 .transform(rotation_z(90) * translation(10, 0, 0))
                                 .offset(translation(5, 0, 0))
                                 .mesh(box_mesh(2, 4, 6));
    const auto convertible =
        std::make_shared<ConvertibleObject>(box_mesh(2, 4, 6), BONE_OBJ_CLASSID);
    const NodeBuilder other = scene.node(L"Bone").object(convertible).at(1, 0, 0);

    Box3 box;
    ViewExp* view = GetCOREInterface()->GetActiveViewExp().ToPointer();
    node.node().EvalWorldState(0).obj->GetWorldBoundBox(0, &node.node(), view, box);
    EXPECT_EQ(box.pmin.x, 8);
    EXPECT_EQ(box.pmax.x, 12);
    EXPECT_EQ(box.pmin.y, 4);
    EXPECT_EQ(box.pmax.y, 6);
    EXPECT_EQ(box.pmax.z, 3);
    convertible->GetWorldBoundBox(0, &other.node(), view, box);
    EXPECT_EQ(box.pmin.x, 0);

    MeshObject empty;
    empty.GetWorldBoundBox(0, &node.node(), view, box);
    EXPECT_TRUE(box.IsEmpty());
}

TEST(MeshObjects, ConvertToThemselvesOrToAnObjectOfTheCaller) {
    const Class_ID triangles(TRIOBJ_CLASS_ID, 0);
    MeshObject mesh(box_mesh(1, 1, 1));
    EXPECT_EQ(mesh.ConvertToType(0, triangles), &mesh);
    EXPECT_EQ(mesh.ConvertToType(0, BONE_OBJ_CLASSID), nullptr);
    PlainObject stubborn(GEOMOBJECT_CLASS_ID);
    EXPECT_FALSE(stubborn.CanConvertToType(triangles));

    ConvertibleObject bone(box_mesh(1, 1, 1), BONE_OBJ_CLASSID);
    ASSERT_TRUE(bone.CanConvertToType(triangles));
    Object* converted = bone.ConvertToType(0, triangles);
    EXPECT_EQ(ConvertibleObject::live_conversions(), 1);
    EXPECT_EQ(static_cast<TriObject*>(converted)->GetMesh().numFaces, 12);
    converted->DeleteMe();
    EXPECT_EQ(ConvertibleObject::live_conversions(), 0);
}

}  // namespace
