#include <gmock/gmock.h>

#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/qort_bytes.h"
#include "tests/support/temporary_folder.h"
#include "tests/vsqinfo/scene_text.h"
#include "tools/vsqinfo/checks/file_report.h"
#include "tools/vsqinfo/checks/spelling_check.h"

namespace {

using namespace scene_text;

const std::string kIdentity = "1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1";
const std::string kMaterial = "material \"m\" {\nsurface \"qor_diffuse\" {\n}\n}\n";
const std::string kVertices = "\"vertices\" [ 0 0 0,1 0 0,0 1 0 ] ,\n";
const std::string kTriangle = kVertices + "\"triangles\" [ 0 1 2 ] ,\n";
const std::uint32_t kOne = 0x3f800000, kNan = 0x7fc00000;

std::string mesh(const std::string& content, const std::string& behind = kMaterial) {
    return in_sound_root("object \"o\" {\ngeometry \"triangles\" {\n" + content + "}\n" + behind +
                         "}\n");
}

std::string material(const std::string& content) {
    return mesh(kTriangle, "material \"m\" {\n" + content + "}\n");
}

std::string in_shader(const std::string& content) {
    return material("surface \"qor_diffuse\" {\n" + content + "}\n");
}

std::string curves(const std::string& content) {
    return in_sound_root("object \"o\" {\ngeometry \"qor_curves\" {\n" + content + "}\n}\n");
}

std::string camera(const std::string& content) {
    return in_sound_root("\ncamera \"c\" {\n" + content + "}\n");
}

std::string track(const std::string& content, const std::string& kind = "fbx_animation_2") {
    return in_sound_root("animation \"" + kind + "\" \"a\" {\n" + content + "}\n");
}

std::string load(const std::string& content) {
    std::string file = in_sound_root("");
    return file.insert(file.find("\ngroup"), "\nload \"l\" {\n" + content + "}\n");
}

std::string instance(const std::string& content) {
    return in_sound_root("object \"i\" {\ngeometry \"instance\" {\n" + content + "}\n}\n");
}

std::string codes(const vsqinfo::FileReport& report) {
    std::string text;
    for (const vsqinfo::Check check : report.findings.checks()) {
        text += (text.empty() ? "" : " ") + std::string(vsqinfo::check_row(check).code);
    }
    return text;
}

// Two frames of one triangle with normals; all that the checks of mesh files look at.
std::string library(std::vector<float> box, std::uint32_t second, float time, float normal,
                    std::uint32_t corner = 2) {
    using namespace qort_bytes;
    return header(true, box, 64 + 80 + 12 + 36 + 36) +
           block(9, frame(0, 0, {0, 1, 0, 3, 0, 3, 0, 0}) +
                        frame(second, time, {0, 1, 0, 3, 0, 3, 0, 0})) +
           block(1, words({0, 1, corner})) + block(2, floats({0, 0, 0, 1, 0, 0, 0, 1, 0})) +
           block(3, floats({0, 0, 1, 0, 0, 1, 0, 0, normal}));
}

struct Case {
    std::string codes;  // all that are found, worst first
    std::string file;
};

// Every check has a row whose file is sound but for that.
std::vector<Case> cases() {
    const std::string number = "#define shader 1 qor_diffuse {\n}\n";
    const std::vector<float> box = {0, 0, 0, 1, 1, 0};
    std::string cut = library(box, 1, 1, 1);
    const auto changed = [&cut](std::size_t at, std::uint32_t word) {
        std::string file = cut;
        return file.replace(at, 4, qort_bytes::words({word}));
    };
    std::string behind = in_sound_root("") + "#define material \"d\" {\nsurface \"s\" {\n}\n}\n";
    return {
        {"", mesh(kTriangle)},
        {"malformed", in_sound_root("\"a\" 1\n")},
        {"cut-short", in_sound_root("").substr(0, 130)},
        {"header", "GIF89a"},
        {"misplaced", in_sound_root("geometry \"triangles\" {\n}\n")},
        {"root-twice", in_sound_root("") + "group \"b\" {\n}\n"},
        {"behind-root", behind},
        {"behind-root version-twice", in_sound_root("") + "version 9\n"},
        {"version-range", load("").replace(load("").find("version 9"), 9, "version 0")},
        {"version-unknown", load("").replace(load("").find("version 9"), 9, "version 8")},
        {"banner-missing", in_root("")},
        {"error-message", in_sound_root("#error \"No triangles\"\n")},
        {"message-line-feed", in_sound_root("#print \"two\nlines\"\n")},
        {"statement-misspelt", in_sound_root("flag 3\n")},
        {"statement-misspelt", in_sound_root("transfrom " + kIdentity + "\n")},
        {"statement-misspelt material-bare", material("surfase 1\n")},
        {"not-ascii", in_sound_root("gr\xf6\xdf"
                                    "e 1\n")},
        {"hex-name", in_sound_root("\ngroup xX61 {\n}\n")},
        {"number-form", in_sound_root("size 1.50\n")},
        {"flags-range", in_sound_root("flags 4294967296\n")},
        {"flags-twice", in_sound_root("flags 0\nflags 0\n")},
        {"name-empty", in_sound_root("\ngroup \"\" {\n}\n")},
        {"name-twice object-bare", in_sound_root("object \"o\" {\n}\nobject \"o\" {\n}\n")},
        {"geometry-kind", in_sound_root("object \"o\" {\ngeometry \"cone\" {\n}\n}\n")},
        {"animation-kind", track("", "wave")},
        {"geometry-twice", mesh(kTriangle, "geometry \"triangles\" {\n" + kTriangle + "}\n")},
        {"parameter-form", in_sound_root("\"a\" 1,\n")},
        {"parameter-form", in_shader("a 1\n")},
        // A camera leaves the quoted form behind.
        {"", in_sound_root("\ncamera \"c\" {\n}\n\"a\" 1,\n")},
        {"parameter-twice", in_shader("\"a\" 1,\n\"a\" 2,\n")},
        {"", in_shader("\"diffuse\" ! \"s\" {\n},\n\"diffuse\" 1 1 1,\n")},
        {"parameter-kind", camera("fov \"wide\"\n")},
        {"parameter-kind", in_shader("\"lumen\" 1,\n")},
        {"parameter-count", in_shader("\"a\" 1 2 3 4 5,\n")},
        {"parameter-count", camera("fov 1 2\n")},
        {"colour-count", in_shader("\"diffuse\" 1 1,\n")},
        {"colour-count", in_shader("\"specular\" 1 1 1 1 1,\n")},
        {"not-finite", in_shader("\"a\" 1 nan,\n")},
        {"fov-range", camera("fov 180\n")},
        {"clip-planes", camera("clipping 5 5\n")},
        {"projection-unknown", camera("projection \"flat\"\n")},
        {"meter-scale", load("\"meter_scale\" 0,\n")},
        {"duration-negative", track("\"duration\" -1,\n", "deformable")},
        {"id-twice", in_sound_root("object \"a\" {\nid 1\ninstance \"x\"\n}\n"
                                   "object \"b\" {\nid 1\ninstance \"x\"\n}\n")},
        {"instance-without-id", instance("")},
        {"instance-target", instance("\"id\" 7,\n")},
        {"animation-target", track("\"target_object_id\" 7,\n", "deformable_qortlib")},
        {"shader-twice shader-unused", material(number + number + "surface \"s\" {\n}\n")},
        {"shader-undefined", material("surface 1\n")},
        {"shader-undefined", in_shader("\"shaders\" [ 1 ] ,\n")},
        {"", material(number + "surface \"s\" {\n\"shaders\" [ " + body('i', {1}) + "] ,\n}\n")},
        {"shader-unused", material(number + "surface \"s\" {\n}\n")},
        {"material-undefined", mesh(kTriangle, "material \"x\"\n")},
        {"material-bare", material("")},
        {"assignment-twice", material(number + "surface 1\nsurface 1\n")},
        {"matrix-count", in_sound_root("transform 1 0 0\n")},
        {"matrix-not-finite", in_sound_root("transform nan" + kIdentity.substr(1) + "\n")},
        {"matrix-singular", in_sound_root("transform 0" + kIdentity.substr(1) + "\n")},
        {"", in_sound_root("transform 1e-09 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1\n")},
        {"matrix-column", in_sound_root("transform 1 0 0 1" + kIdentity.substr(7) + "\n")},
        {"matrix-twice",
         in_sound_root("transform " + kIdentity + "\ntransform " + kIdentity + "\n")},
        {"array-tag", mesh(kTriangle + binary("uv_tex", 'c', {0, 0, 0, 0, 0, 0}))},
        {"array-tag", mesh(kVertices + binary("triangles", 'f', {0, kOne, kOne + 0x800000}))},
        {"array-width array-lengths", mesh(kTriangle + binary("uv_tex", 'f', {0, 0, 0}))},
        {"array-width", in_sound_root("a [ " + body('c', {0}) + "] \n")},
        {"array-twice", mesh(kTriangle + kVertices)},
        {"array-lengths", mesh(kTriangle + binary("normals", 'c', {0, 0, kOne}))},
        {"", mesh(kTriangle + binary("normals", 'c', {0, 0, kOne}) +
                  binary("triangles_norm", 'i', {0, 0, 0}))},
        {"array-not-finite", in_shader(binary("a", 'f', {0, kNan}))},
        {"index-count", mesh(kVertices + "\"triangles\" [ 0 1 ] ,\n")},
        {"index-range", mesh(kVertices + "\"triangles\" [ 0 1 3 ] ,\n")},
        {"triangles-without-vertices", mesh("\"triangles\" [ 0 1 2 ] ,\n")},
        {"triangle-degenerate", mesh(kVertices + "\"triangles\" [ 0 1 1 ] ,\n")},
        {"triangle-degenerate", mesh("\"vertices\" [ 0 0 0,1 0 0,1 0 0 ] ,\n"
                                     "\"triangles\" [ 0 1 2 ] ,\n")},
        {"light-degenerate", mesh(kVertices + "\"triangles\" [ 0 1 1 ] ,\n",
                                  "material \"l\" {\nsurface \"qor_mesh_light\" {\n}\n}\n")},
        {"normal-length", mesh(kTriangle + "\"normals\" [ 0 0 1,0 0 1,0 0 2 ] ,\n")},
        {"geometry-empty", mesh("")},
        {"mesh-file-missing file-and-arrays", mesh(kTriangle + "\"file\" \"no.qorT\",\n")},
        {"strand-points", curves("\"p\" [ 0 0 0,1 1 1 ] ,\n\"nvertices\" [ 3 ] ,\n")},
        {"strand-lengths",
         curves("\"p\" [ 0 0 0,1 1 1 ] ,\n\"nvertices\" [ 2 ] ,\n\"pr\" [ 1 ] ,\n")},
        {"strand-short", curves("\"order\" 4,\n\"p\" [ 0 0 0,1 1 1 ] ,\n\"nvertices\" [ 2 ] ,\n")},
        {"track-lengths",
         track("\"timestamps\" [ 0 33 ] ,\n\"matrices\" [ " + kIdentity + " ] ,\n")},
        {"track-order", track("\"timestamps\" [ 33 0 ] ,\n", "deformable")},
        {"track-empty", track("")},
        {"track-empty", track("", "fbx_animation")},
        {"texture-missing", in_shader("\"texture\" \"no.png\",\n")},
        {"mesh-file-malformed", mesh("\"file\" \"cut.qorT\",\n")},
        {"", mesh("\"file\" \"whole.qorT\",\n") + "// \"texture\" \"whole.qorT\"\n"},
        {"renderer-file", in_shader("\"texture\" \"startup.hdr\",\n")},
        {"", library(box, 1, 1, 1)},
        {"mesh-blocks", changed(152, 10)},
        {"mesh-lengths", changed(100, 2)},
        {"mesh-index", changed(168, 3)},
        {"mesh-box", changed(32, 0)},
        {"mesh-frames", changed(80, 1)},
        {"mesh-end", cut + "x"},
        {"mesh-not-finite", changed(cut.size() - 4, kNan)},
        {"mesh-degenerate", library(box, 1, 1, 1, 1)},
        {"mesh-normal-length", library(box, 1, 1, 2)},
        {"mesh-box-large", library({0, 0, 0, 1, 1, 1}, 1, 1, 1)},
        {"mesh-frame-order", library(box, 1, 0, 1)},
        {"mesh-frame-gap", library(box, 2, 1, 1)},
    };
}

TEST(Checks, FindWhatIsWrongAndNothingElse) {
    const TemporaryFolder folder;
    const auto write = [&folder](const char* name, const std::string& bytes) {
        std::ofstream(folder / name, std::ios::binary) << bytes;
        return folder / name;
    };
    write("whole.qorT", library({0, 0, 0, 1, 1, 0}, 1, 1, 1));
    write("cut.qorT", "qorT");
    std::set<std::string> found;
    for (const Case& one : cases()) {
        const std::string seen = codes(vsqinfo::report_on_file(write("a", one.file)));
        EXPECT_EQ(seen, one.codes) << one.file;
        std::istringstream words(seen);
        found.insert(std::istream_iterator<std::string>(words), {});
    }
    EXPECT_EQ(found.size(), static_cast<std::size_t>(vsqinfo::Check::kCount));
}

TEST(Checks, AreListedInTheDocument) {
    std::string table;
    for (const char* severity : {"error", "warning", "hint"}) {
        for (std::size_t i = 0; i < static_cast<std::size_t>(vsqinfo::Check::kCount); ++i) {
            const vsqinfo::CheckRow& row = vsqinfo::check_row(static_cast<vsqinfo::Check>(i));
            if (severity == vsqinfo::severity_word(row.severity)) {
                table += "| `" + std::string(row.code) + "` | " + severity + " | " +
                         std::string(row.sentence) + " |\n";
            }
        }
    }
    const std::string document = file_contents(CHECKS_DOCUMENT);
    EXPECT_EQ(document.substr(document.find("| `malformed`")), table);
}

TEST(Checks, NameThePlaceAndTheLine) {
    const TemporaryFolder folder;
    const std::string text =
        in_sound_root("\ngroup xX4be9 {\nobject \"o\" {\ngeometry \"triangles\" {\n" +
                      binary("vertices", 'c', {0x0a0a0a0a, 0, 0}) +
                      "\"normals\" [ 0 0 1,0 0 2 ] ,\n\"file\" \"no.qorT\",\n}\n}\nflag 1\n}\n");
    std::ofstream(folder / "a", std::ios::binary) << text;
    const vsqinfo::FileReport report = vsqinfo::report_on_file(folder / "a");
    // The four line feeds among the vertices count, as they do in an editor.
    const std::string before = text.substr(0, text.find("flag 1"));
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    EXPECT_THAT(vsqinfo::report_text(report),
                testing::HasSubstr("warning statement-misspelt: line " + std::to_string(line) +
                                   ", offset " + std::to_string(before.size()) +
                                   ": \"flag\" in group \"K\\xe9\" may be \"flags\"\n"));
    EXPECT_THAT(vsqinfo::report_text(report),
                testing::HasSubstr(": 1 of 2 normals in object \"o\"\n"));
    EXPECT_THAT(vsqinfo::report_text(report),
                testing::HasSubstr("\"no.qorT\" isn't in \"" + (folder / "").substr(0, 4)));
}

TEST(Checks, KnowTheFormsOfNumbers) {
    for (const char* word : {"0", "-1", "4096", "1234567", "0.5", "39.3701", "1e+06", "-3e-07",
                             "1.5e+100", "0.0001", "nan", "-inf", "0.1000000000000000"}) {
        EXPECT_TRUE(vsqinfo::is_writers_form(word)) << word;
    }
    for (const char* word : {"00", "1.0", "1.50", "1.234567", "1e6", "1e+6", "10e+06", "1e+05",
                             "1e-04", "0.00001", "1e+006", "nan(ind)", "1.#QNAN"}) {
        EXPECT_FALSE(vsqinfo::is_writers_form(word)) << word;
    }
}

TEST(Checks, GuessTheStatementThatWasMeant) {
    const struct {
        const char* word;
        const char* wanted;
    } cases[] = {{"flag", "flags"},   {"surfase", "surface"}, {"transfrom", "transform"},
                 {"grroup", "group"}, {"group", ""},          {"fov", ""},
                 {"position", ""},    {"tarnsfrom", ""},      {"lihgt", "light"}};
    for (const auto& one : cases) {
        EXPECT_EQ(vsqinfo::likely_keyword(one.word), one.wanted) << one.word;
    }
}

}  // namespace
