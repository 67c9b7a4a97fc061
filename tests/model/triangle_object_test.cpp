#include "model/triangle_object.h"

#include <gtest/gtest.h>

#include "model/diffuse.h"
#include "tests/support/emitted_calls.h"

namespace qor {
namespace {

using Ints = std::vector<int>;
using Floats = std::vector<float>;

// The corners (0,0,0), (1,0,0) and (0,1,0).
TriangleObject one_triangle() {
    TriangleObject object("Box01");
    object.set_vertices({0, 0, 0, 1, 0, 0, 0, 1, 0});
    object.add_triangle(0, 1, 2);
    return object;
}

std::string text_of(TriangleObject& object) {
    return emitted_text([&object](qorSceneapi_oo& scene) { object.emit(scene); });
}

// The object has every array and its initial material.
TEST(TriangleObject, IsWrittenWithItsMaterial) {
    TriangleObject object = one_triangle();
    object.set_name("Box02");
    object.set_flags(16842752);
    object.add_triangle_norm(2, 0, 1);
    object.add_triangle_uv(1, 0, 0);
    object.add_normal(0, 0, 1);
    for (int i = 0; i < 3; ++i) {
        object.add_uv(0.25f, static_cast<float>(i));
        object.add_vcolor(0, 0.5f, 1);
    }
    const std::string expected =
        "object \"Box02\" {\nflags 16842752\n"
        "geometry \"triangles\" {\n"
        "\"vertices\" [ 0 0 0,1 0 0,0 1 0 ] ,\n"
        "\"triangles\" [ 0,1,2 ] ,\n"
        "\"triangles_uv\" [ 1,0,0 ] ,\n"
        "\"uv_tex\" [ 0.25,0,0.25,1,0.25,2 ] ,\n"
        "\"triangles_norm\" [ 2,0,1 ] ,\n"
        "\"normals\" [ 0 0 1 ] ,\n"
        "\"vcolors\" [ 0 0.5 1,0 0.5 1,0 0.5 1 ] ,\n"
        "}\n"
        "material \"default\" {\n"
        "surface \"qor_diffuse\" {\n\"diffuse\" 0.75 0.5 0.5,\n}\n"
        "flags 4096\n}\n}\n";
    EXPECT_EQ(text_of(object), expected);
    // The object can be emitted again.
    EXPECT_EQ(text_of(object), expected);
    EXPECT_EQ(object.data_size(), 4u * (9 + 3 + 3 + 6 + 3 + 3 + 9));
}

// Arrays that don't fit are reported, but an object with triangles is still written. All cases have
// three vertices and one triangle.
TEST(TriangleObject, ReportsArraysThatDoNotFit) {
    const struct {
        size_t uv_tex, triangles_uv, normals, triangles_norm, vcolors;  // numbers in each
        std::string error;
    } cases[] = {
        {0, 0, 0, 0, 0, ""},
        {6, 0, 9, 0, 9, ""},  // one of each for every vertex
        {2, 3, 3, 3, 0, ""},  // one of each, with an index for every corner
        {0, 0, 6, 0, 0, "Number of normals does not equal number of vertices"},
        {0, 0, 0, 3, 0, "No normals defined for index"},
        {0, 0, 3, 6, 0, "Normals count does not match number of triangles 6 vs 3"},
        {4, 0, 0, 0, 0, "Number of uvs(4)  does not match vertex count(9)"},
        {0, 3, 0, 0, 0, "No uvs defined for index"},
        {2, 6, 0, 0, 0, "UV index count does not match triangle count"},
        {0, 0, 0, 0, 3, "VetexColor count does not match number of vertices"},
        {0, 3, 0, 3, 0, "No normals defined for indexNo uvs defined for index"},
    };
    for (const auto& one : cases) {
        TriangleObject object("o");
        object.set_arrays({Floats(9), Ints(3), Floats(one.uv_tex), Ints(one.triangles_uv),
                           Floats(one.normals), Ints(one.triangles_norm), Floats(one.vcolors)});
        const std::string text = text_of(object);
        const std::string end = one.error.empty() ? "}\n}\n" : "#error \"" + one.error + "\"\n";
        EXPECT_EQ(text.find("object \"o\" {\n"), 0u);
        EXPECT_EQ(text.rfind(end), text.size() - end.size()) << text;
    }
}

TEST(TriangleObject, IsWrittenAsAReferenceOnceItIsDefined) {
    TriangleObject object = one_triangle();
    object.set_flags(7);
    const auto material = std::make_shared<Diffuse>("own");
    object.set_material(material);
    EXPECT_EQ(object.get_material(), material);
    // The scene's first number is used up, so the object gets 2. Only the reference has the
    // material.
    EXPECT_EQ(
        emitted_text([&](qorSceneapi_oo& scene) {
            scene.next_id(), object.define(scene), object.emit(scene);
        }),
        "id 1\n#define object \"Box01\" {\nid 2\nflags 7\ngeometry \"triangles\" {\n"
        "\"vertices\" [ 0 0 0,1 0 0,0 1 0 ] ,\n\"triangles\" [ 0,1,2 ] ,\n}\n}\n"
        "object \"Box01\" {\nflags 7\ngeometry \"instance\" {\n\"id\" 2,\n}\nmaterial \"own\" {\n"
        "surface \"qor_diffuse\" {\n\"diffuse\" 0.75 0.5 0.5,\n}\nflags 4096\n}\n}\n");
    EXPECT_TRUE(object.is_defined());
    EXPECT_EQ(object.error(), "");
    EXPECT_EQ(object.data_size(), 0u);
    EXPECT_EQ(object.vertices().capacity(), 0u);
}

}  // namespace
}  // namespace qor
