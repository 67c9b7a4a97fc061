#include "tools/vsqexport/session.h"

#include <gtest/gtest.h>

#include "standins/host/memory/scene_builder.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/thrown_text.h"

namespace {

using memhost::SceneBuilder;

class SessionTest : public testing::Test {
protected:
    SessionTest() {
        lid_.child(L"T\u00f6n").hidden();
        scene_.node(L"Left Arm");
        scene_.node(L"Lid").child(L"5\" disc");
    }

    SceneBuilder scene_;
    memhost::NodeBuilder lid_ = scene_.node(L"Lid").transform(memhost::rotation_z(90));
    TemporaryFolder settings_;
    vsqexport::PluginCommands plugin_{scene_.host(), settings_.path().u8string()};
    vsqexport::Session session_{scene_.host(), plugin_, "demo:none"};
};

TEST_F(SessionTest, ReportsEdits) {
    const std::pair<const char*, const char*> lines[] = {
        {"", ""},
        {" #quit", ""},
        {"nodes", "  Lid\n    T\u00f6n (hidden)\n  Left Arm\n  Lid\n    5\" disc"},
        {"unhide T\u00f6n", "'T\u00f6n' is shown"},
        {" hide \t\"Left Arm\"\r", "'Left Arm' is hidden"},
        {"move Lid 1 -2.5 3e1", "'Lid' stands at 1 -2.5 3e1"},
        {"rename \"5\"\" disc\" \"a \"\"b\"\"\"", "'5\" disc' is now 'a \"b\"'"},
        {"delete Lid", "'Lid' is deleted"},
        {"frame 12 # it's 5\"", "frame 12"},
        {"nodes", "  Left Arm (hidden)\n  Lid\n    a \"b\"\n  T\u00f6n"},
        {"quit", ""},
    };
    for (const auto& [line, answer] : lines) {
        EXPECT_FALSE(session_.is_over());
        EXPECT_EQ(session_.carry_out(line), answer);
    }
    EXPECT_TRUE(session_.is_over());
    EXPECT_EQ(scene_.host().time(), 12 * scene_.host().ticks_per_frame());
}

TEST_F(SessionTest, MovesANodeInItsParentsSpaceAndKeepsItsRotation) {
    session_.carry_out("move T\u00f6n 1 0 0");
    session_.carry_out("move Lid 0 0 5");
    const Matrix3 world = lid_.node().children()[0]->GetNodeTM(0);
    EXPECT_NEAR(world.GetTrans().y, 1, 1e-6);
    EXPECT_NEAR(world.GetTrans().z, 5, 1e-6);
}

TEST_F(SessionTest, RefusesAWrongCommandInOneLineAndChangesNothing) {
    const TemporaryFolder folder;
    const std::pair<std::string, std::string> lines[] = {
        {"HIDE Lid", "no command is named 'HIDE' (help lists the commands)"},
        {"\"\"", "no command is named '' (help lists the commands)"},
        {"hide", "hide takes NODE"},
        {"hide \"#1\"", "no node is named '#1' (nodes lists the nodes)"},
        {"hide Lid#", "no node is named 'Lid#' (nodes lists the nodes)"},
        {"hide Left Arm", "hide takes NODE"},
        {"update now", "update takes nothing"},
        {"hide \"Left Arm", "a quotation mark is not closed"},
        {"hide \"Scene Root\"", "no node is named 'Scene Root' (nodes lists the nodes)"},
        {"delete \"a\x1b\"", "no node is named 'a\\x1b' (nodes lists the nodes)"},
        {"move Lid 1 2 three", "'three' is not a coordinate"},
        {"move Lid 1 2 inf", "'inf' is not a coordinate"},
        {"move Lid 1e9999 2 3", "'1e9999' is not a coordinate"},
        {"frame 1.5", "'1.5' is not a frame number"},
        {"frame 99999999999", "'99999999999' is not a frame number"},
        {"export -", "the session itself uses standard output"},
        {"export \"\"", "the name of the scene file is empty"},
        {"animation -", "the name of an animation must end in .vsq, not '-'"},
    };
    const std::string nodes = session_.carry_out("nodes");
    for (const auto& [line, refusal] : lines) {
        const auto carry_out = [&, &wrong = line] { session_.carry_out(wrong); };
        EXPECT_EQ(thrown_text<std::exception>(carry_out), refusal) << line;
    }
    EXPECT_EQ(session_.carry_out("nodes"), nodes);
    EXPECT_EQ(session_.carry_out("export \"" + folder / "s.vsq" + "\""),
              "export: 0 objects, 0 cameras, 5 matrices of nodes written to " + folder / "s.vsq");
    scene_.animation_frames(0, 1);
    EXPECT_EQ(session_.carry_out("animation \"" + folder / "a.vsq" + "\""),
              "animation: 2 frames, " + folder / "a0000.vsq" + " to " + folder / "a0001.vsq" +
                  ", and the script " + folder / "a.py");
}

TEST_F(SessionTest, CompletesCommandsAndNames) {
    scene_.node(L"#1 T\u00f6\u00f6");
    scene_.node(L"#1 T\u00f6\u00e4");
    scene_.node(L"Two\nlines");
    struct {
        const char* line;
        const char* text;  // in place of the last word
        size_t choices;
    } const rows[] = {
        {"", "", 15},
        {"un", "unhide ", 0},
        {"re", "ren", 2},
        {"d", "delete ", 0},
        {"x", "x", 0},
        {"move Le", "\"Left Arm\" ", 0},
        {"move Lid", "Lid ", 0},
        {"move \"L", "\"L", 2},
        {"move \"5", "\"5\"\" disc\" ", 0},
        {"hide \"", "\"", 6},
        {"hide \"#", "\"#1 T\u00f6", 2},
        {"hide Tw", "Tw", 0},
        {"rename T", "T\u00f6n ", 0},
        {"rename Lid T", "T", 0},
        {"move Lid 1 ", "", 0},
        {"export L", "L", 0},
        {"hide #", "", 0},
    };
    for (const auto& [line, text, choices] : rows) {
        const vsqexport::Completion completion = session_.complete(line);
        EXPECT_EQ(completion.text, text) << line;
        EXPECT_EQ(completion.choices.size(), choices) << line;
    }
}

}  // namespace
