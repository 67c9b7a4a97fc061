#include "tools/vsqinfo/vsq_reader.h"

#include <gmock/gmock.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/vsqinfo/scene_text.h"

namespace {

using namespace scene_text;
using vsqinfo::VsqSummary;

const std::string kIdentity = "1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1";

std::string in_material(const std::string& content) {
    return in_object("\nmaterial \"m\" {\n" + content + "}\n");
}

std::string in_triangles(const std::string& content) {
    return in_object("geometry \"triangles\" {\n" + content + "}\n");
}

std::string in_animation(const std::string& content) {
    return in_root("animation \"fbx_animation_2\" \"a\" {\n" + content + "}\n");
}

// Contents that an export seldom writes, or that don't count as often as they occur.
TEST(VsqReader, CountsWhatAFileHolds) {
    const std::string triangle =
        "\"vertices\" [ 0 0 0,1 1 1,2 2 2 ] ,\n\"triangles\" [ 0,1,2 ] ,\n";
    const std::string two_textures =
        "#define shader 1 texture2_rgb {\n\"texture\" \"a.png\",\n}\n"
        "#define shader 2 texture2_rgb {\n\"texture\" \"a.png\",\n}\n"
        "surface \"x\" {\n\"map\" ! \"t\" {\n\"texture\" \"b.png\",\n},\n}\n";
    const std::string light = "material \"l\" {\nsurface \"qor_point_light\" {\n}\n}\n";

    using S = VsqSummary;
    const struct {
        std::string file;
        std::uint64_t S::*count;
        std::uint64_t wanted;
    } cases[] = {
        {in_root("\n#define group \"a\" {\n}\n#define object \"b\" {\n}\n"), &S::definitions, 2},
        {in_triangles(triangle), &S::triangles, 1},
        {in_triangles(triangle), &S::vertices, 3},
        {in_object("geometry \"instance\" {\n\"id\" 1,\n}\n"), &S::instances, 1},
        {in_triangles("\"file\" \"a.qorT\",\n"), &S::library_files, 1},
        {in_object("material \"m\" {\n}\nmaterial \"m\" {\n}\n"), &S::materials, 1},
        {in_object("material \"m\"\n"), &S::material_references, 1},
        {in_material(two_textures), &S::textures, 2},
        {in_object(light + light), &S::lights, 1},
        {in_root("#modify \ncamera \"c\" {\n}\n"), &S::cameras, 0},
        {in_object("transform " + kIdentity + "\n"), &S::other_matrices, 1},
        {in_root("transform nan -inf" + kIdentity.substr(3) + "\n"), &S::matrices_not_finite, 1},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(read(one.file).*one.count, one.wanted) << one.file;
    }
}

// The grammar allows more than exports write.
TEST(VsqReader, AcceptsEveryStatementAndValueForm) {
    const std::string numbered = "#define shader 3 qor_diffuse {\n}\n";
    const std::string accepted[] = {
        kHeader +
            "version 20\n\nprogress \"p\" 0.500\n\nattribute \"a\" xXe9\nicon bX00ff\nid 4\n"
            "\noptions {\nfov 35.5\n}\n\nimage {\n}\noutput \"a\" \"b\" \"c\" {\n}\n"
            "\nlight \"l\" {\n}\n\naccel \"a\" {\n}\n\n#define material \"m\" {\n}\n"
            "#define matrix \"m\" {\n}\n#define geometry \"g\" \"triangles\" {\n}\n"
            "#define shader \"s\" \"qor_diffuse\" {\n}\n#modify material \"m\" {\n}\n"
            "frame 3 {\ntranslate 1 2 3\n}\n\ngroup \"r\" {\n}\n\nrender\n",
        in_root("scale 1 1 1\nrotate 0 nan 0\ninstance \"i\"\nmotion 0.5 {\ntransform " +
                kIdentity + "\n}\n"),
        // Plain and quoted parameters in one block, as after a camera in a group.
        in_root("fov 35.5\n\ncamera {\n}\n\"fov\" 35.5,\nname \n\"name\" ,\nthumbnail bX\n"
                "xX612262 1 2 3,\nuv set name \"x\"\nprojection \"orthographic\"\n"),
        in_root(
            "a nan\nb -inf\n\"c\" -nan(ind) 1.#QNAN 1e+20 -1.5e-07,\n\"d\"              nan,\n"),
        in_root("plain [ 1 2 3,4 5 6 ] \nempty [ ] \n\"names\" [ \"a,]\",\nxX22,\n\"c\" \n] ,\n"),
        in_root("bodies [ " + body('f', {1, 2}) + "] \n\"built\" [\n" + body('i', {1, 2}) +
                " ],\n\"text\" [\n1, 2, 3,\n4 ],\n\"doubles\" [ " + body('r', {1, 2, 3, 4}) +
                "] ,\n" + binary("none", 'c', {})),
        // More elements than fit on one line.
        in_root("\"f\" [ 0,1,2,3,4,5,6,7,8,\n9 ] ,\n"),
        in_material(numbered + "surface 3\n// assuming surface shader\nsurface  3\nshadow 3\n"
                               "volume 3\nreflection map 3\nflags 4096\n"),
        in_material("surface \"a\" {\n\"b\" ! \"c\" {\n\"d\" ! xX22 {\n" + binary("e", 'f', {1}) +
                    "},\n},\n\"f\" ! ,\n}\nreflection map \"a\" {\n}\n"),
        in_material("surface \"a\" {\n\"list\" [\n\"b\" {\n\"n\" 1,\n}, \"c\" {\n} ],\n}\n"),
        // Indented, as in one of the writer's output modes.
        in_root(" \n  group \"a\" {\n    flags 0\n  }\n"),
        in_root("animation \"deformable\" \"d\" {\n\"start_time\" 0,\n#error \"a\"\n}\n"),
        in_root("#print \"\"\n#error \"a \"quote\" and {\"\n#print \"two\nlines\"\n"),
        in_triangles(""),
    };
    for (const std::string& file : accepted) {
        EXPECT_NO_THROW(read(file)) << file;
    }
}

TEST(VsqReader, RefusesAMalformedFileWithOffsetAndReason) {
    const std::string vertices = binary("vertices", 'c', {0, 0, 0, 1, 1, 1});
    const std::string many = std::string("\1\2\3f", 4) + qort_bytes::words({0xffffffff});
    const struct {
        std::string file;
        const char* at;  // its last occurrence is the offset; null means the end of the file
        const char* reason;
    } cases[] = {
        {"", nullptr, "inside its header"},
        {"\x89PNG", "\x89PNG", "header"},
        {"//---quoria:dal:7---\n//---import:dal:1---\n//---id:---\n", "---\n", "no number"},
        {kHeader + "\ngroup \"a\" {\n}\n", nullptr, "version"},
        {kStart, nullptr, "root group"},
        {kStart + "\n#define group \"a\" {\n}\n", nullptr, "root group"},
        {kStart + "\ngroup \"a\" {\n}", nullptr, "but the file ends"},
        {in_root("") + "}\n", "}\n", "no block is open"},
        {kStart + "fov 3\n", "fov", "not a statement"},
        {in_root("fov\n"), "fov", "no value"},
        {in_root("\"a\" 1\n"), "\n}", "is expected, not a line feed"},
        {in_root("object \"a {\n}\n"), "\n}\n}", "not closed"},
        {in_root("fov 1,\n"), ",", "not ','"},
        {in_root("object \"\xe9\" {\n}\n"), "\xe9", "quoted name"},
        {in_root("object xX6A {\n}\n"), "A {", "second hexadecimal"},
        {in_root("transform " + kIdentity + " 1\n"), " 1\n}", "line feed"},
        {in_root("object xX612 {\n}\n"), " {\n}\n}", "second hexadecimal"},
        {in_root("transform 1 2 3\n"), "\n}", "16 numbers, not 3"},
        {in_animation("\"matrices\" [ 1 2 ,\n] ,\n"), ",\n] ", "16 numbers, not 2"},
        {in_root("geometry \"a\" {\n}\n"), "geometry", "not allowed in a group"},
        {in_object("object \"a\" {\n}\n"), "object", "not allowed in an object"},
        {in_root("\noptions {\n\ncamera \"a\" {\n}\n}\n"), "camera", "not allowed in the options"},
        {in_root("#define load \"a\" {\n}\n"), "#define", "is not allowed before"},
        {in_material("surface 1\n"), "1\n", "not defined"},
        {in_root("\"a\" [ \1\2\3xxxxx] ,\n"), "xxxxx", "not c, f"},
        {in_root("\"a\" [ " + many + "] ,\n"), "\1\2\3", "17179869180"},
        {in_root(binary("a", 'c', {8, 9})), "\2", "whole triples"},
        {in_root("\"a\" [ " + body('f', {}) + "1 ] ,\n"), "1 ]", "bracket"},
        {in_triangles(binary("triangles", 'i', {0, 0})), "[", "whole triangles"},
        {in_triangles(binary("triangles", 'f', {0, 0, 0})), "f\3", "not hold integers"},
        {in_triangles(vertices + binary("triangles", 'i', {0, 2, 1})), "\2",
         "holds the index 2, but \"vertices\" has 2 points"},
        {in_triangles("\"triangles\" [ 0,1,7 ] ,\n" + vertices), "7 ]", "holds the index 7"},
        {in_triangles(vertices + "\"triangles\" [ 0,1,-3 ] ,\n"), "-3", "holds the index -3"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.file);
        const std::size_t offset = one.at ? one.file.rfind(one.at) : one.file.size();
        const auto refused = refusal(one.file);
        ASSERT_TRUE(refused);
        EXPECT_EQ(refused->offset(), offset);
        EXPECT_THAT(refused->reason(), testing::HasSubstr(one.reason));
    }
}

TEST(VsqReader, ReadsBodiesAndNestingBeyondItsBuffer) {
    constexpr std::uint32_t kCount = 300000;  // more than a megabyte
    std::vector<std::uint32_t> indices(kCount);
    indices[kCount - 2] = 1;
    const std::string file =
        in_triangles(binary("triangles", 'i', indices) + binary("vertices", 'c', {0, 0, 0}));
    const std::size_t wrong = file.find(qort_bytes::words({1}), file.find("triangles\" ["));
    EXPECT_EQ(refusal(file).value().offset(), wrong);

    std::string nested;
    for (int i = 0; i < 400000; ++i)
        nested += i < 200000 ? "group \"g\" {\n" : "}\n";
    EXPECT_EQ(read(in_root(nested)).groups, 200000u);
}

}  // namespace
