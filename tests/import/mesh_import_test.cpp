#include "standins/host/import/mesh_import.h"

#include <cmath>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

using namespace memhost;

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

using Vectors = std::vector<aiVector3D>;

aiVector3D* array_of(const Vectors& vectors) {
    auto* array = new aiVector3D[vectors.size()];
    std::copy(vectors.begin(), vectors.end(), array);
    return array;
}

std::unique_ptr<aiMesh> mesh_of(const Vectors& positions,
                                const std::vector<std::vector<unsigned>>& faces) {
    auto mesh = std::make_unique<aiMesh>();
    mesh->mNumVertices = static_cast<unsigned>(positions.size());
    mesh->mVertices = array_of(positions);
    mesh->mNumFaces = static_cast<unsigned>(faces.size());
    mesh->mFaces = new aiFace[faces.size()];
    for (std::size_t f = 0; f < faces.size(); ++f) {
        mesh->mFaces[f].mNumIndices = static_cast<unsigned>(faces[f].size());
        mesh->mFaces[f].mIndices = new unsigned[faces[f].size()];
        std::copy(faces[f].begin(), faces[f].end(), mesh->mFaces[f].mIndices);
    }
    return mesh;
}

// Two triangles of a square, as a reader gives them that splits every corner.
const Vectors kSquare = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {-0.0f, 0, 0}, {1, 1, 0}, {0, 1, 0}};
const std::vector<std::vector<unsigned>> kSquareFaces = {{0, 1, 2}, {3, 4, 5}};

TEST(JoinParts, SharesPositionsAndKeepsWhatSplitThem) {
    const auto square = mesh_of(kSquare, kSquareFaces);
    square->mNormals =
        array_of({{0, 0, 1}, {0, 0, 2}, {0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, kNan, 1}});
    square->mTextureCoords[0] =
        array_of({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {5, 5, 0}, {6, 6, 0}, {5, 6, 0}});
    square->mTextureCoords[2] = array_of(kSquare);
    // A third triangle beside it, of another material and with nothing but positions.
    const auto flap = mesh_of({{9, 9, 9}, {1, 1, 0}, {1, 0, 0}, {2, 0, 0}}, {{1, 2, 3}});

    Mesh mesh;
    ASSERT_TRUE(join_parts({{square.get(), 0}, {flap.get(), 3}}, mesh));
    ASSERT_EQ(mesh.numVerts, 5) << "four corners and one beside; the unused one is left out";
    ASSERT_EQ(mesh.numFaces, 3);
    EXPECT_EQ(mesh.faces[1].v[0], mesh.faces[0].v[0]);
    EXPECT_EQ(mesh.faces[1].v[1], mesh.faces[0].v[2]);
    EXPECT_EQ(mesh.faces[2].v[0], mesh.faces[0].v[2]);
    EXPECT_EQ(mesh.faces[2].v[1], mesh.faces[0].v[1]);
    EXPECT_EQ(mesh.faces[0].getMatID(), 0);
    EXPECT_EQ(mesh.faces[2].getMatID(), 3);

    for (int f = 0; f < 2; ++f) {
        for (int corner = 0; corner < 3; ++corner) {
            const aiVector3D& uv = square->mTextureCoords[0][f * 3 + corner];
            const UVVert& kept = mesh.mapVerts(1)[mesh.mapFaces(1)[f].t[corner]];
            EXPECT_EQ(kept.x, uv.x);
            EXPECT_EQ(kept.y, uv.y);
        }
    }
    EXPECT_FALSE(mesh.mapSupport(2));
    EXPECT_TRUE(mesh.mapSupport(3));
    EXPECT_EQ(mesh.mapVerts(1)[mesh.mapFaces(1)[2].t[1]].x, 0) << "a part without coordinates";

    // A normal that is none leaves its corner to the smoothing group.
    MeshNormalSpec& normals = *mesh.GetSpecifiedNormals();
    EXPECT_EQ(normals.GetNormal(0, 1).z, 2);
    EXPECT_EQ(normals.GetNormal(1, 0).x, 1);
    EXPECT_TRUE(normals.GetNormalExplicit(normals.GetNormalIndex(1, 0)));
    EXPECT_EQ(normals.GetNormalIndex(0, 2), -1);
    EXPECT_EQ(normals.GetNormalIndex(1, 2), -1);
    for (int f = 0; f < 3; ++f) {
        EXPECT_EQ(mesh.faces[f].smGroup, 1u) << f;
        EXPECT_EQ(normals.GetNormalIndex(2, f), -1);
    }

    const auto whole = mesh_of(kSquare, kSquareFaces);
    whole->mNormals = array_of(Vectors(6, {0, 0, 1}));
    ASSERT_TRUE(join_parts({{whole.get(), 0}}, mesh));
    EXPECT_EQ(mesh.faces[0].smGroup, 0u);
}

TEST(JoinParts, TakesTrianglesAloneAndKeepsBrokenPositions) {
    const auto mixed = mesh_of({{0, 0, 0}, {1, 0, 0}, {kNan, 0, 0}, {kNan, 0, 0}},
                               {{0}, {0, 1}, {0, 1, 2}, {0, 1, 2, 3}, {}, {1, 0, 3}});
    Mesh mesh;
    ASSERT_TRUE(join_parts({{mixed.get(), 0}}, mesh));
    EXPECT_EQ(mesh.numFaces, 2);
    EXPECT_EQ(mesh.numVerts, 3);
    EXPECT_TRUE(std::isnan(mesh.verts[mesh.faces[1].v[2]].x));
    EXPECT_EQ(mesh.GetSpecifiedNormals(), nullptr);

    const auto points = mesh_of({{0, 0, 0}}, {{0}});
    const auto nothing = mesh_of({}, {});
    EXPECT_FALSE(join_parts({{points.get(), 0}, {nothing.get(), 0}}, mesh));
    EXPECT_FALSE(join_parts({}, mesh));
}

TEST(FacesStayInRange, OnlyIfEveryCornerHasItsVertex) {
    EXPECT_TRUE(faces_stay_in_range(*mesh_of(kSquare, kSquareFaces)));
    EXPECT_TRUE(faces_stay_in_range(*mesh_of({}, {})));
    EXPECT_FALSE(faces_stay_in_range(*mesh_of(kSquare, {{0, 1, 2}, {3, 4, 6}})));
    EXPECT_FALSE(faces_stay_in_range(*mesh_of(kSquare, {{0, 0xFFFFFFFF}})));
}

}  // namespace
