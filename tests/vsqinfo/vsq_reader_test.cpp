#include "tools/vsqinfo/vsq_reader.h"

#include <gmock/gmock.h>

#include <cmath>
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

struct Counted {
    const char* what;
    std::string file;
    std::uint64_t VsqSummary::*count;
    std::uint64_t wanted;
};

TEST(VsqReader, CountsWhatAFileHolds) {
    const std::string triangle =
        binary("vertices", 'c', {0, 0, 0, 1, 1, 1, 2, 2, 2}) + binary("triangles", 'i', {0, 1, 2});
    const std::string flat_triangle =
        "\"vertices\" [ 0 0 0,1 1 1,2 2 2 ] ,\n\"triangles\" [ 0,1,2 ] ,\n";
    const std::string curves = "geometry \"qor_curves\" {\n\"radius\" 1,\n" +
                               binary("p", 'c', std::vector<std::uint32_t>(24)) +
                               binary("nvertices", 'i', {4, 4}) + "}\n";
    const std::string two_textures =
        "#define shader 1 texture2_rgb {\n\"texture\" \"a.png\",\n}\n"
        "#define shader 2 texture2_rgb {\n\"texture\" \"a.png\",\n}\n"
        "surface \"x\" {\n\"map\" ! \"t\" {\n\"texture\" \"b.png\",\n},\n}\n";
    const std::string camera =
        "\ncamera \"c\" {\nreflection map \"qor_envmap\" {\n\"texture\" \"sky.hdr\",\n}\n}\n";
    const std::string light = "material \"l\" {\nsurface \"qor_point_light\" {\n}\n}\n";
    const std::string keys = "\"timestamps\" [ " + body('i', {0, 33, 66}) + "] ,\n";

    const Counted cases[] = {
        {"groups but the root", in_root("\ngroup \"a\" {\n\ngroup \"b\" {\n}\n}\n"),
         &VsqSummary::groups, 2},
        {"definitions", in_root("\n#define group \"a\" {\n}\n#define object \"b\" {\n}\n"),
         &VsqSummary::definitions, 2},
        {"objects", in_object("id 1\nflags 0\n"), &VsqSummary::objects, 1},
        {"binary triangles", in_triangles(triangle), &VsqSummary::triangles, 1},
        {"binary vertices", in_triangles(triangle), &VsqSummary::vertices, 3},
        {"text triangles", in_triangles(flat_triangle), &VsqSummary::triangles, 1},
        {"text vertices", in_triangles(flat_triangle), &VsqSummary::vertices, 3},
        {"instances", in_object("geometry \"instance\" {\n\"id\" 1,\n}\n"), &VsqSummary::instances,
         1},
        {"libraries", in_triangles("\"file\" \"a.qorT\",\n"), &VsqSummary::library_files, 1},
        {"strands", in_object(curves), &VsqSummary::curves, 2},
        {"strand points", in_object(curves), &VsqSummary::curve_points, 8},
        {"material names", in_object("material \"m\" {\n}\nmaterial \"m\" {\n}\n"),
         &VsqSummary::materials, 1},
        {"material blocks", in_object("material \"m\" {\n}\nmaterial \"m\" {\n}\n"),
         &VsqSummary::material_blocks, 2},
        {"material references", in_object("material \"m\"\n"), &VsqSummary::material_references, 1},
        {"textures by file", in_material(two_textures), &VsqSummary::textures, 2},
        {"shaders", in_material(two_textures), &VsqSummary::shaders, 4},
        {"environments", in_root(camera), &VsqSummary::environments, 1},
        {"environments are no textures", in_root(camera), &VsqSummary::textures, 0},
        {"lights by object", in_object(light + light), &VsqSummary::lights, 1},
        {"no lights", in_material("surface \"qor_diffuse\" {\n}\n"), &VsqSummary::lights, 0},
        {"cameras", in_root(camera + camera), &VsqSummary::cameras, 2},
        {"a changed camera is none", in_root("#modify \ncamera \"c\" {\n}\n"), &VsqSummary::cameras,
         0},
        {"animations", in_animation(keys), &VsqSummary::animations, 1},
        {"animation keys", in_animation(keys), &VsqSummary::animation_keys, 3},
        {"node matrices", in_root("transform " + kIdentity + "\nset transform " + kIdentity + "\n"),
         &VsqSummary::node_matrices, 2},
        {"other matrices", in_object("transform " + kIdentity + "\n"), &VsqSummary::other_matrices,
         1},
        {"not finite", in_root("transform nan -inf" + kIdentity.substr(3) + "\n"),
         &VsqSummary::matrices_not_finite, 1},
        {"not finite keys",
         in_animation("\"matrices\" [ " + kIdentity + " ,\n-nan" + kIdentity.substr(1) +
                      " \n] ,\n"),
         &VsqSummary::matrices_not_finite, 1},
    };
    for (const Counted& one : cases) {
        SCOPED_TRACE(one.what);
        EXPECT_EQ(read(one.file).*one.count, one.wanted);
    }
}

TEST(VsqReader, KeepsTheFrameOfTheFile) {
    const std::string file =
        "//---quoria:dal:7---\n//---import:dal:1---\n//---id:2469134---\n"
        "// This is a Velmora scene file\n\n#print \"Velmora (built \"now\")\"\nversion 9\n\n"
        "load \"qorrtopt.so\" {\n\"import_mode\" on,\n\"import_up_vector\" 2,\n"
        "\"import_use_camera\" \"\",\n}\n"
        "\ngroup \"object\" {\nflags 1\n\ngroup \"a\" {\nflags 7\n}\n#error \"No triangles\"\n}\n";
    const VsqSummary summary = read(file);
    EXPECT_EQ(summary.header_id, 2469134);
    EXPECT_EQ(summary.banner, "Velmora (built \"now\")");
    EXPECT_EQ(summary.version, 9);
    EXPECT_EQ(summary.root_name, "object");
    EXPECT_EQ(summary.root_flags, 1);
    EXPECT_EQ(summary.file_size, file.size());
    ASSERT_EQ(summary.modules.size(), 1u);
    EXPECT_EQ(summary.modules[0].name, "qorrtopt.so");
    using testing::Pair;
    EXPECT_THAT(summary.modules[0].options,
                testing::ElementsAre(Pair("import_mode", "on"), Pair("import_up_vector", "2"),
                                     Pair("import_use_camera", "")));
    EXPECT_EQ(summary.errors, 1u);
    EXPECT_THAT(summary.error_texts, testing::ElementsAre("No triangles"));
}

// Whatever the grammar allows stands in some file, also what no export writes.
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
        // Plain and quoted parameters in one block, as behind a camera in a group.
        in_root("fov 35.5\n\ncamera {\n}\n\"fov\" 35.5,\nname \n\"name\" ,\nthumbnail bX\n"
                "xX612262 1 2 3,\nuv set name \"x\"\nprojection \"orthographic\"\n"),
        in_root(
            "a nan\nb -inf\n\"c\" -nan(ind) 1.#QNAN 1e+20 -1.5e-07,\n\"d\"              nan,\n"),
        in_root("plain [ 1 2 3,4 5 6 ] \nempty [ ] \n\"names\" [ \"a,]\",\nxX22,\n\"c\" \n] ,\n"),
        in_root("bodies [ " + body('f', {1, 2}) + "] \n\"built\" [\n" + body('i', {1, 2}) +
                " ],\n\"text\" [\n1, 2, 3,\n4 ],\n\"doubles\" [ " + body('r', {1, 2, 3, 4}) +
                "] ,\n" + binary("none", 'c', {})),
        // More elements than stand on one line.
        in_root("\"f\" [ 0,1,2,3,4,5,6,7,8,\n9 ] ,\n"),
        in_material(numbered + "surface 3\n// assuming surface shader\nsurface  3\nshadow 3\n"
                               "volume 3\nreflection map 3\nflags 4096\n"),
        in_material(numbered + "#define shader 4 b {\n\"shaders\" [\n3, 4 ],\n\"map\" ! 3,\n}\n"),
        in_material("surface \"a\" {\n\"b\" ! \"c\" {\n\"d\" ! xX22 {\n" + binary("e", 'f', {1}) +
                    "},\n},\n\"f\" ! ,\n}\nreflection map \"a\" {\n}\n"),
        in_material("surface \"a\" {\n\"list\" [\n\"b\" {\n\"n\" 1,\n}, \"c\" {\n} ],\n}\n"),
        // Indented, as with an output mode of its own.
        in_root(" \n  group \"a\" {\n    flags 0\n  }\n"),
        in_root("animation \"deformable\" \"d\" {\n\"start_time\" 0,\n#error \"a\"\n}\n"),
        in_root("#print \"\"\n#error \"a \"quote\" and {\"\n#print \"two\nlines\"\n"),
        in_triangles(""),
    };
    for (const std::string& file : accepted) {
        SCOPED_TRACE(file);
        EXPECT_NO_THROW(read(file));
    }
}

struct Refused {
    const char* what;
    std::string file;
    const char* at;  // the last place of this text is the offset; null for the end of the file
    const char* reason;
};

TEST(VsqReader, RefusesAMalformedFileWithOffsetAndReason) {
    const std::string vertices = binary("vertices", 'c', {0, 0, 0, 1, 1, 1});
    const std::string many = std::string("\1\2\3f", 4) + little_endian(0xffffffff);
    const Refused cases[] = {
        {"empty", "", nullptr, "inside its header"},
        {"other file", "\x89PNG", "\x89PNG", "header"},
        {"header number", "//---quoria:dal:7---\n//---import:dal:1---\n//---id:---\n", "---\n",
         "no number"},
        {"no version", kHeader + "\ngroup \"a\" {\n}\n", nullptr, "version"},
        {"no root group", kStart, nullptr, "root group"},
        {"a defined root", kStart + "\n#define group \"a\" {\n}\n", nullptr, "root group"},
        {"last line feed", kStart + "\ngroup \"a\" {\n}", nullptr, "but the file ends"},
        {"open group", kStart + "\ngroup \"a\" {\n", nullptr, "inside a group that begins"},
        {"stray brace", in_root("") + "}\n", "}\n", "no block is open"},
        {"no statement", in_root("") + "rubbish\n", "rubbish", "no statement"},
        {"parameter at top", kStart + "fov 3\n", "fov", "no statement"},
        {"parameter without value", in_root("fov\n"), "fov", "no value"},
        {"no value word", in_root("\"a\" yes,\n"), "yes", "no value"},
        {"missing comma", in_root("\"a\" 1\n"), "\n}", "is expected, not a line feed"},
        {"stray comma", in_root("fov 1,\n"), ",", "not ','"},
        {"open name", in_root("object \"a {\n}\n"), "\n}\n}", "not closed"},
        {"8-bit name", in_root("object \"\xe9\" {\n}\n"), "\xe9", "quoted name"},
        {"odd hexadecimal name", in_root("object xX612 {\n}\n"), " {\n}\n}", "second hexadecimal"},
        {"upper-case name", in_root("object xX6A {\n}\n"), "A {", "second hexadecimal"},
        {"odd data", in_root("a bX123\n"), "\n}", "second hexadecimal"},
        {"open message", in_root("#error \"a\n"), nullptr, "inside a message"},
        {"short matrix", in_root("transform 1 2 3\n"), "\n}", "16 numbers, not 3"},
        {"long matrix", in_root("transform " + kIdentity + " 1\n"), " 1\n}", "line feed"},
        {"matrix of words", in_root("transform on\n"), "on\n", "no number"},
        {"short key", in_animation("\"matrices\" [ 1 2 ,\n] ,\n"), ",\n] ", "16 numbers, not 2"},
        {"geometry in group", in_root("geometry \"a\" {\n}\n"), "geometry", "stand in a group"},
        {"object in object", in_object("object \"a\" {\n}\n"), "object", "stand in an object"},
        {"camera in options", in_root("\noptions {\n\ncamera \"a\" {\n}\n}\n"), "camera",
         "stand in the options"},
        {"load in group", in_root("load \"a\" {\n}\n"), "load", "stand in a group"},
        {"shader in geometry", in_triangles("#define shader 1 a {\n}\n"), "#define",
         "stand in a geometry"},
        {"defined load", in_root("#define load \"a\" {\n}\n"), "#define", "in front of"},
        {"unknown shader", in_material("surface 1\n"), "1\n", "not defined"},
        {"wrong tag", in_root("\"a\" [ \1\2\3xxxxx] ,\n"), "xxxxx", "none of c"},
        {"wrong mark", in_root("\"a\" [ \1\2\4fxxxx] ,\n"), "\1\2\4", "bytes 1, 2, 3"},
        {"body beyond the end", in_root("\"a\" [ " + many + "] ,\n"), "\1\2\3", "17179869180"},
        {"broken triple", in_root(binary("a", 'c', {8, 9})), "\2", "whole triples"},
        {"text behind a body", in_root("\"a\" [ " + body('f', {}) + "1 ] ,\n"), "1 ]", "bracket"},
        {"open array", in_root("\"a\" [ 1,2"), "}\n", "word is expected"},
        {"broken triangle", in_triangles(binary("triangles", 'i', {0, 0})), "[", "whole triangles"},
        {"indices of floats", in_triangles(binary("triangles", 'f', {0, 0, 0})), "f\3",
         "no integers"},
        {"index too large", in_triangles(vertices + binary("triangles", 'i', {0, 2, 1})), "\2",
         "holds the index 2, but \"vertices\" has 2 points"},
        {"index in front of the points", in_triangles("\"triangles\" [ 0,1,7 ] ,\n" + vertices),
         "7 ]", "holds the index 7"},
        {"negative index", in_triangles(vertices + "\"triangles\" [ 0,1,-3 ] ,\n"), "-3",
         "holds the index -3"},
    };
    for (const Refused& one : cases) {
        SCOPED_TRACE(one.what);
        const std::size_t offset = one.at ? one.file.rfind(one.at) : one.file.size();
        try {
            read(one.file);
            ADD_FAILURE() << "is accepted";
        } catch (const vsqinfo::MalformedFile& error) {
            EXPECT_EQ(error.offset(), offset);
            EXPECT_THAT(error.reason(), testing::HasSubstr(one.reason));
        }
    }
}

// A stream without a length: the body's count can't be checked ahead.
TEST(VsqReader, ReadsAPipe) {
    class Pipe : public std::stringbuf {
    public:
        using std::stringbuf::stringbuf;

    protected:
        pos_type seekoff(off_type, std::ios::seekdir, std::ios::openmode) override { return -1; }
    };
    const auto read_pipe = [](const std::string& file) {
        Pipe pipe(file);
        std::istream stream(&pipe);
        return vsqinfo::read_vsq(stream);
    };
    const std::string file = in_root(binary("a", 'f', {1, 2, 3}));
    EXPECT_EQ(read_pipe(file).file_size, file.size());
    EXPECT_THROW(read_pipe(file.substr(0, file.size() - 10)), vsqinfo::MalformedFile);
}

TEST(VsqReader, ReadsBodiesAndNestingBeyondItsBuffer) {
    constexpr std::uint32_t kCount = 300000;  // more than a megabyte
    std::vector<std::uint32_t> indices(kCount);
    indices[kCount - 2] = 1;
    std::string content = binary("triangles", 'i', indices) + binary("vertices", 'c', {0, 0, 0});
    const std::string file = in_triangles(content);
    const std::size_t wrong = file.find(little_endian(1), file.find("triangles\" ["));
    try {
        read(file);
        ADD_FAILURE() << "is accepted";
    } catch (const vsqinfo::MalformedFile& error) {
        EXPECT_EQ(error.offset(), wrong);
    }

    constexpr int kDepth = 200000;
    std::string nested;
    for (int i = 0; i < kDepth; ++i)
        nested += "group \"g\" {\n";
    for (int i = 0; i < kDepth; ++i)
        nested += "}\n";
    EXPECT_EQ(read(in_root(nested)).groups, static_cast<std::uint64_t>(kDepth));
}

TEST(VsqReader, TellsItsListenerInFileOrder) {
    class Recorder : public vsqinfo::VsqListener {
    public:
        void block_begins(const vsqinfo::VsqBlock& block) override {
            add(std::string(block.keyword) + " " + block.name + "/" + block.type +
                (block.number ? " number " + std::to_string(*block.number) : "") +
                (block.is_definition ? " defined" : ""));
        }
        void block_ends() override { add("end"); }
        void matrix(const vsqinfo::VsqMatrix& matrix, bool replaces) override {
            add((replaces ? "set " : "matrix ") + std::to_string(matrix[12]));
        }
        void parameter(const std::string& name, const std::string& value) override {
            add(name + "=" + value);
        }
        void array(const std::string& name, std::uint64_t count) override {
            add(name + " x" + std::to_string(count));
        }
        void assignment(std::string_view kind, std::int64_t shader) override {
            add(std::string(kind) + " is " + std::to_string(shader));
        }
        std::vector<std::string> calls;

    private:
        void add(std::string call) { calls.push_back(std::move(call)); }
    };
    Recorder recorder;
    read(in_object("set transform 1 0 0 0 0 1 0 0 0 0 1 0 2.5 0 0 1\nmaterial xX6122 {\n"
                   "#define shader 1 qor_diffuse {\n\"color\" 1 0.5 0,\n\"a\" [ 1,2 ] ,\n}\n"
                   "#define shader 2 b {\n\"map\" ! 1,\n}\nsurface 2\nshadow \"c\" {\n}\n}\n"),
         &recorder);
    EXPECT_THAT(recorder.calls, testing::ElementsAre(
                                    "group object/", "object o/", "set 2.500000", "material a\"/",
                                    "shader /qor_diffuse number 1 defined", "color=1 0.5 0", "a x2",
                                    "end", "shader /b number 2 defined", "map=! 1", "end",
                                    "surface is 2", "shader shadow/c", "end", "end", "end", "end"));
}

TEST(VsqReader, NamesAFileThatCannotBeRead) {
    EXPECT_THROW(vsqinfo::read_vsq_file("no/such/file.vsq"), vsqinfo::UnreadableFile);
    EXPECT_THROW(vsqinfo::read_vsq_file("."), vsqinfo::UnreadableFile);
}

}  // namespace
