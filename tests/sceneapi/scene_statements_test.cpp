#include <gtest/gtest.h>

#include "importers/sceneapi/dev/parameter_codes.h"
#include "tests/support/written_scene.h"

namespace {

using Api = qorScene_api_file;

constexpr qorMatrix kCounting = {{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}}};
const std::string kNumbers = "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16\n";

struct Statement {
    std::function<void(Api&)> calls;
    std::string text;
};

// The tests below compare the blocks that have parameters.
TEST(SceneStatements, AreWrittenExactly) {
    const unsigned char bytes[] = {0x00, 0x7f, 0xff};
    const Statement statements[] = {
        {[](Api& a) { a.begin_group("g", false), a.end_group(); }, "\n#define group \"g\" {\n}\n"},
        {[](Api& a) { a.begin_object("o", false), a.end_object(); }, "#define object \"o\" {\n}\n"},
        {[](Api& a) { a.begin_camera(nullptr), a.end_camera(); }, "\ncamera {\n}\n"},
        {[](Api& a) { a.begin_image(), a.end_image(); }, "\nimage {\n}\n"},
        {[](Api& a) { a.begin_modify("c"), a.end_camera(); }, "#modify \ncamera \"c\" {\n}\n"},
        {[](Api& a) { a.begin_light("l"), a.end_light(); }, "\nlight \"l\" {\n}\n"},
        {[](Api& a) { a.transform(kCounting); }, "transform " + kNumbers},
        {[](Api& a) { a.set_transform(kCounting); }, "set transform " + kNumbers},
        {[](Api& a) { a.scale(1, 0.5, -2); }, "scale 1 0.5 -2\n"},
        {[](Api& a) { a.rotate(90, 0, 1e-7); }, "rotate 90 0 1e-07\n"},
        {[](Api& a) { a.translate(1234567, 0, 0); }, "translate 1.23457e+06 0 0\n"},
        {[](Api& a) { a.begin_matrix("m"), a.end_matrix(); }, "#define matrix \"m\" {\n}\n"},
        {[](Api& a) { a.begin_material("m", false), a.end_material(); },
         "\n#define material \"m\" {\n}\n"},
        {[](Api& a) { a.begin_modify_material("m"), a.end_material(); },
         "#modify material \"m\" {\n}\n"},
        {[](Api& a) { a.set_attribute("k", "v"); }, "attribute \"k\" \"v\"\n"},
        {[](Api& a) { a.write_text("%s %d\n", "n", 3); }, "n 3\n"},
        {[](Api& a) { a.set_version(0xffffffffu); }, "version 20\n\n"},
        {[&](Api& a) { a.set_icon(bytes, 3); }, "icon bX007fff\n"},
        {[&](Api& a) { a.set_binary_parameter("n", bytes, 3); }, "n bX007fff\n"},
        {[](Api& a) { a.set_id(4294967295u); }, "id 4294967295\n"},
        {[](Api& a) { a.set_flags(33792); }, "flags 33792\n"},
        {[](Api& a) { EXPECT_TRUE(a.render()); }, "\nrender\n"},
        {[](Api& a) { a.print_message("a \"b\""); }, "#print \"a \"b\"\"\n"},
        {[](Api& a) { a.print_error("100 %s"); }, "#error \"100 %s\"\n"},
        {[](Api& a) { a.begin_frame(-3), a.end_frame(); }, "frame -3 {\n}\n"},
        {[](Api& a) { a.write_motion(0.5, kCounting); },
         "motion 0.5 {\ntransform " + kNumbers + "}\n"},
        // Beginning a geometry inside a definition succeeds and writes nothing.
        {[](Api& a) {
             a.begin_geometry_definition("n", "triangles");
             EXPECT_TRUE(a.begin_geometry("triangles"));
             a.end_geometry();
         },
         "#define geometry \"n\" \"triangles\" {\n}\n"},
        {[](Api& a) { a.print_message(nullptr), a.set_binary_parameter(nullptr, nullptr, -1); },
         "#print \"\"\n bX\n"},
        {[](Api& a) { a.write_instance("n"); }, "instance \"n\"\n"},
        // Only a link or another back end does something here.
        {[](Api& a) {
             a.reserved_hook(), a.set_option_flag(true);
             EXPECT_FALSE(a.connect("localhost", 1, 0));
             EXPECT_FALSE(a.disconnect());
             EXPECT_FALSE(a.link_request(nullptr, nullptr, nullptr));
             EXPECT_FALSE(a.status_query());
             EXPECT_EQ(a.numeric_query(), 10);
             EXPECT_EQ(a.numeric_query_for(1), 10);
             EXPECT_EQ(a.extension_point(), 0);
         },
         ""},
    };
    for (const Statement& statement : statements) {
        EXPECT_EQ(written_by(statement.calls), statement.text);
    }
}

TEST(SceneStatements, NamesThatCantBeQuotedAreHexadecimal) {
    const std::pair<std::string, std::string> names[] = {
        {"Mesh 01", "\"Mesh 01\""},
        {"", "\"\""},
        {"tab\tand \\ and {", "\"tab\tand \\ and {\""},
        {"a\"b", "xX612262"},
        {"a\nb", "xX610a62"},
        {"\r", "xX0d"},
        {"\x7f", "\"\x7f\""},
        {"\x80\xff", "xX80ff"},
        {std::string(300, '\x99'), "xX" + std::string(600, '9')},
    };
    for (const auto& [name, text] : names) {
        EXPECT_EQ(written_by([&, &given = name](Api& a) { a.use_material(given.c_str()); }),
                  "material " + text + "\n");
    }
    EXPECT_EQ(written_by([](Api& a) { a.use_material(nullptr); }), "material \"\"\n");
}

// Inside another block, these write nothing and leave the open block alone.
TEST(SceneStatements, ExclusiveBlocksAreRefusedInsideAnother) {
    EXPECT_EQ(written_by([](Api& a) {
                  a.begin_object("o", true);
                  EXPECT_FALSE(a.begin_options());
                  EXPECT_FALSE(a.begin_camera("c"));
                  EXPECT_FALSE(a.begin_image());
                  EXPECT_FALSE(a.begin_modify("c"));
                  a.end_object();
                  EXPECT_TRUE(a.begin_options());
                  EXPECT_FALSE(a.begin_camera("c"));
                  a.end_options();
              }),
              "object \"o\" {\n}\n\noptions {\n}\n");
}

// An end without its begin writes nothing, but resets the state of the open block.
TEST(SceneStatements, UnmatchedEndsWriteNothing) {
    EXPECT_EQ(written_by([](Api& a) { a.end_options(), a.end_camera(), a.end_image(); }), "");
    EXPECT_EQ(written_by([](Api& a) {
                  a.begin_camera("c");
                  a.end_options();
                  EXPECT_TRUE(a.begin_image());
              }),
              "\ncamera \"c\" {\n\nimage {\n");
}

// Some blocks have `name value` lines and others `"name" value,`. This also holds after an inner
// block.
TEST(SceneStatements, BlocksChooseTheFormOfTheirParameters) {
    const std::int32_t one = 1;
    const auto put = [&one](Api& a) { a.set_parameter("n", parameter_code::kInt, &one); };
    const auto group = [](Api& a) { a.begin_group("g", true); };
    const std::string plain = "n 1\n";
    const std::string quoted = "\"n\" 1,\n";
    const Statement blocks[] = {
        {put, quoted},
        {[&](Api& a) { a.begin_load("l"), put(a), a.end_load(); },
         "load \"l\" {\n" + quoted + "}\n"},
        {[&](Api& a) {
             group(a), put(a), a.begin_object("o", true), put(a), a.end_object();
             put(a), a.end_group(), put(a);
         },
         "\ngroup \"g\" {\n" + plain + "object \"o\" {\n" + plain + "}\n" + plain + "}\n" + quoted},
        {[&](Api& a) {
             a.begin_object("o", true), a.begin_geometry("k"), put(a), a.end_geometry(), put(a);
         },
         "object \"o\" {\ngeometry \"k\" {\n" + quoted + "}\n" + plain},
        {[&](Api& a) {
             group(a), a.begin_animation("k", "n"), put(a), a.end_animation();
             put(a);
         },
         "\ngroup \"g\" {\nanimation \"k\" \"n\" {\n" + quoted + "}\n" + plain},
        // After a camera the quoted form stays, whatever block the camera is in.
        {[&](Api& a) { group(a), a.begin_camera("c"), put(a), a.end_camera(), put(a); },
         "\ngroup \"g\" {\n\ncamera \"c\" {\n" + plain + "}\n" + quoted},
        {[&](Api& a) { a.begin_output("a", "b", "c"), put(a), a.end_output(), put(a); },
         "output \"a\" \"b\" \"c\" {\n" + quoted + "}\n" + plain},
        {[&](Api& a) { group(a), a.begin_accel("x"), put(a), a.end_accel(), put(a); },
         "\ngroup \"g\" {\n\naccel \"x\" {\n" + quoted + "}\n" + plain},
    };
    for (const Statement& block : blocks) {
        EXPECT_EQ(written_by(block.calls), block.text);
    }
}

TEST(SceneStatements, IndentationFollowsTheBlocks) {
    EXPECT_EQ(written_by([](Api& a) {
                  a.set_output_mode(1);
                  a.begin_group("g", true), a.begin_object("a\"b", true), a.set_flags(0);
                  a.write_text("one\n\ntwo\n");
                  a.end_object(), a.end_group();
              }),
              "\ngroup \"g\" {\n object xX612262 {\n  flags 0\n  one\n  \n  two\n }\n}\n");
}

// One write is cut to the size of the buffer; the next one follows the cut.
TEST(SceneStatements, TextOverTheLimitIsCut) {
    constexpr size_t kLimit = 1048574;
    for (const size_t length : {kLimit - 1, kLimit, kLimit + 1, 3 * kLimit}) {
        const std::string text(length, 'x');
        const std::string kept = text.substr(0, std::min(length, kLimit));
        EXPECT_TRUE(written_by([&](Api& a) {
                        a.write_text("%s", text.c_str());
                        a.write_text("\n");
                    }) == kept + "\n")
            << length;

        // The blanks of the indentation count as well.
        EXPECT_TRUE(written_by([&](Api& a) {
                        a.begin_load("l");
                        a.set_output_mode(1);
                        a.write_text("%s", text.c_str());
                    }) == "load \"l\" {\n" + (" " + text).substr(0, kLimit))
            << length;
    }
}

TEST(SceneStatements, WithoutAStreamEverythingIsDropped) {
    qorScene_api_file api(static_cast<std::FILE*>(nullptr), true);
    EXPECT_TRUE(api.begin_group("g", true));
    api.write_text("%s", "text");
    api.end_group();
}

}  // namespace
