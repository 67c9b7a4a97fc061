#include <gmock/gmock.h>

#include <fstream>
#include <sstream>
#include <string>

#include "tests/support/temporary_folder.h"
#include "tests/support/thrown_text.h"
#include "tests/vsqinfo/scene_text.h"
#include "tools/vsqpicture/picture_commands.h"
#include "tools/vsqpicture/picture_session.h"

namespace {

using namespace scene_text;
using testing::HasSubstr;
using vsqpicture::PictureRequest;

const std::string kTriangle =
    "geometry \"triangles\" {\n\"vertices\" [ 0 0 0,1 0 0,0 0 1 ] ,\n\"triangles\" [ 0 1 2 ] "
    ",\n}\n";

std::string object(const std::string& content) {
    return "object \"o\" {\n" + kTriangle + "material \"m\" {\n" + content + "}\n}\n";
}

vsqpicture::Picture draw(const std::string& file, const PictureRequest& request) {
    const TemporaryFolder folder;
    std::ofstream(folder / "a.vsq", std::ios::binary) << file;
    vsqpicture::SceneBuilder builder;
    builder.add(folder / "a.vsq");
    return vsqpicture::draw(builder.scene(), "a", request);
}

PictureRequest tiny() {
    PictureRequest request;
    request.options.width = 24;
    request.options.height = 16;
    request.options.samples = 4;
    return request;
}

TEST(PictureInput, SaysWhatIsNotDrawn) {
    std::string nested = "surface \"qor_diffuse\" {\n";
    for (int i = 0; i < 400'000; ++i) {
        nested += i < 200'000 ? "\"a\" ! \"b\" {\n" : "},\n";
    }
    nested += "}\n";
    const struct {
        const char* note;
        std::string file;
    } cases[] = {
        {"texture gone.png: does not exist",
         in_root(object("surface \"qor_diffuse\" {\n\"diffuse\" ! \"texture2_rgb\" {\n"
                        "\"texture\" \"gone.png\",\n},\n}\n"))},
        {"surfaces of the type \"glass\"", in_root(object("surface \"glass\" {\n}\n"))},
        {"IES distributions; those lights shine equally to all sides",
         in_root(object("surface \"qor_ies_light\" {\n}\n") + object(""))},
        {"mesh file gone.qorT: does not exist",
         in_root(object("") + "object \"f\" {\ngeometry \"triangles\" {\n"
                              "\"file\" \"gone.qorT\",\n}\n}\n")},
        {"anything: the scene has no surfaces", in_root("")},
        {"instances of objects that aren't there",
         in_root(object("") + "object \"i\" {\ngeometry \"instance\" {\n\"id\" 9,\n}\n}\n")},
        {"shaders that nest too deeply (199004 times)", in_root(object(nested))},
        {"blocks \"light\"", in_root(object("") + "\nlight \"l\" {\n}\n")},
    };
    for (const auto& one : cases) {
        EXPECT_THAT(draw(one.file, tiny()).notes, testing::Contains(one.note));
    }
}

TEST(PictureInput, DrawsAMissingTextureAsALoudChecker) {
    PictureRequest request = tiny();
    request.view = "front";
    const vsqpicture::Picture picture = draw(
        in_root("object \"o\" {\ngeometry \"triangles\" {\n\"vertices\" [ 0 0 0,1 0 0,0 0 1 ] ,\n"
                "\"triangles\" [ 0 1 2 ] ,\n\"uv_tex\" [ 0 0,1 0,0 1 ] ,\n}\nmaterial \"m\" {\n"
                "surface \"qor_diffuse\" {\n\"diffuse\" ! \"texture2_rgb\" {\n"
                "\"texture\" \"gone.png\",\n},\n}\n}\n}\n"),
        request);
    int magenta = 0, black = 0;
    for (size_t i = 0; i < picture.image.pixels.size(); i += 4) {
        const std::uint8_t* const p = &picture.image.pixels[i];
        magenta += p[0] > 100 && p[1] < 30 && p[2] > 100 ? 1 : 0;
        black += p[0] < 30 && p[1] < 30 && p[2] < 30 ? 1 : 0;
    }
    EXPECT_GT(magenta, 10);
    EXPECT_GT(black, 10);
}

TEST(PictureInput, IsRefusedInOneLine) {
    PictureRequest request = tiny();
    request.camera = "Side";
    const std::string cameras = in_root("\ncamera \"Front\" {\n}\n\ncamera xX546fe9 {\n}\n");
    EXPECT_THAT(thrown_text([&] { draw(cameras, request); }),
                HasSubstr("no camera 'Side' (it has: Front, To\\xe9)"));
    EXPECT_THAT(thrown_text([&] { draw(cameras.substr(0, 150), request); }), HasSubstr("offset "));
}

// What one file defines, another can change: matrix and object of a group, and cameras.
TEST(PictureInput, MergesWhatFurtherFilesChange) {
    const TemporaryFolder folder;
    const auto scene = [](const char* x, const std::string& content) {
        return in_root("\ngroup \"a\" {\n" + content + "transform 1 0 0 0 0 1 0 0 0 0 1 0 " + x +
                       " 0 0 1\n}\n\ngroup \"a\" {\n}\n");
    };
    vsqpicture::SceneBuilder builder;
    for (const std::string& file :
         {scene("1", object("") + object("")), scene("5", ""), scene("5", object(""))}) {
        std::ofstream(folder / "a.vsq", std::ios::binary) << file;
        builder.add(folder / "a.vsq");
    }
    const std::string cut = scene("9", object("") + object(""));
    std::ofstream(folder / "a.vsq", std::ios::binary) << cut.substr(0, cut.size() - 2);
    EXPECT_THAT(thrown_text([&] { builder.add(folder / "a.vsq"); }), HasSubstr("offset "));
    ASSERT_EQ(builder.scene().nodes.size(), 4u);  // the top level, the root and two of one name
    EXPECT_EQ(builder.scene().nodes[2].objects.size(), 2u);
    EXPECT_EQ(builder.scene().nodes[2].matrix[12], 5);
}

// Each is in a file that the reader accepts.
TEST(PictureInput, MayHavePlacesThatNoRayReaches) {
    const std::string triangle = object("");
    for (const char* number : {"nan", "inf", "3e38", "-1e19"}) {
        const std::string lens = "\ncamera \"c\" {\nposition 0 -5 0\ndirection 0 0 -1\nup 0 1 0\n";
        const std::string far =
            "transform 1 0 0 0 0 1 0 0 0 0 1 0 " + std::string(number) + " 0 0 1\n";
        std::string vertices = triangle;
        vertices.replace(vertices.find("0 0 0,"), 1, number);
        for (const std::string& content :
             {lens + far + "}\n" + triangle, vertices + triangle,
              "\ngroup \"g\" {\n" + triangle + far + "}\n" + triangle}) {
            EXPECT_FALSE(draw(in_root(content), tiny()).image.pixels.empty());
        }
    }
}

TEST(Picture, HasTheSameBytesForAnyNumberOfThreads) {
    PictureRequest request = tiny();
    std::vector<std::vector<std::uint8_t>> pictures;
    for (const unsigned threads : {1u, 2u, 5u}) {
        request.options.threads = threads;
        pictures.push_back(draw(in_root(object("")), request).image.pixels);
    }
    EXPECT_EQ(pictures[0], pictures[1]);
    EXPECT_EQ(pictures[0], pictures[2]);
    request.options.seed = 2;
    EXPECT_NE(draw(in_root(object("")), request).image.pixels, pictures[0]);
}

// The upper half of the sky is blue, the lower one red; the camera looks straight ahead.
TEST(Picture, ShowsAndTakesLightFromTheSkyOfItsCamera) {
    const TemporaryFolder folder;
    vsqpicture::Image halves(1, 2);
    halves.pixels = {0, 0, 255, 255, 255, 0, 0, 255};
    write_png(halves, folder / "sky.png");
    const auto scene = [](const std::string& sky) {
        return in_root("\ncamera \"c\" {\nfov 90\nreflection map \"qor_envmap\" {\n\"texture\" \"" +
                       sky + "\",\n}\ntransform 1 0 0 0 0 0 1 0 0 -1 0 0 0.3 -1 0.3 1\n}\n" +
                       object(""));
    };
    const vsqpicture::Image image =
        draw(scene(folder.path().generic_u8string() + "/sky.png"), tiny()).image;
    EXPECT_GT(image.at(2, 1)[2], image.at(2, 1)[0] + 100);
    EXPECT_GT(image.at(2, 14)[0], image.at(2, 14)[2] + 100);
    EXPECT_GT(image.at(12, 8)[0], 50) << "both colours light the wall";
    EXPECT_GT(image.at(12, 8)[2], 50);
    EXPECT_THAT(draw(scene("gone.hdr"), tiny()).notes,
                testing::Contains("sky gone.hdr: does not exist"));
    EXPECT_THAT(draw(scene("startup.hdr"), tiny()).notes, testing::IsEmpty());
}

// Without normals, the corners say which side is the front; a mirroring doesn't change that.
TEST(Picture, IsNotBlackWhereAMeshWithoutNormalsIsMirrored) {
    PictureRequest request = tiny();
    request.view = "front";
    request.options.transparent = true;
    const vsqpicture::Image image = draw(in_root("\ngroup \"g\" {\n" + object("") +
                                                 "transform -1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1\n}\n"),
                                         request)
                                        .image;
    EXPECT_EQ(image.at(15, 13)[3], 255);
    EXPECT_GT(image.at(15, 13)[1], 50);
}

TEST(Picture, LeavesPixelsClearIfWanted) {
    PictureRequest request = tiny();
    request.view = "front";
    request.options.transparent = true;
    const vsqpicture::Image image = draw(in_root(object("")), request).image;
    EXPECT_EQ(image.at(0, 0)[3], 0);
    EXPECT_EQ(image.at(8, 13)[3], 255);
}

TEST(PictureCommands, AnswerEachLine) {
    const TemporaryFolder folder;
    std::ofstream(folder / "a.vsq", std::ios::binary)
        << in_root("\ncamera \"c\" {\n}\n" + object(""));
    const std::string picture = folder / "a.png";
    std::istringstream in("{\"import\": \"" + folder.path().generic_u8string() +
                          "/a.vsq\"}\n{\"camera\": \"x\"}\n{\"picture\": \"" + picture +
                          "\"}\n{\"camera\": \"\"}\n{\"picture\": \"" + picture +
                          "\", \"width\": 8, \"height\": 8, \"samples\": 1}\n{\"sheet\": \"" +
                          picture + "\", \"pictures\": [\"" + picture + "\"]}\nnonsense\n");
    std::ostringstream out;
    vsqpicture::run_commands(in, out);
    EXPECT_THAT(out.str(), testing::MatchesRegex("\\{\"ok\":true,\"cameras\":\\[\"c\"\\]\\}\n"
                                                 "\\{\"ok\":true\\}\n"
                                                 "\\{\"ok\":false,\"error\":\".*no camera 'x'.*\n"
                                                 "\\{\"ok\":true\\}\n"
                                                 "\\{\"ok\":true,\"notes\":.*\n"
                                                 "\\{\"ok\":true\\}\n"
                                                 "\\{\"ok\":false,.*\n"));
}

}  // namespace
