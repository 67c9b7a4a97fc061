#include "standins/host/app/session.h"

#include <gtest/gtest.h>

#include "standins/host/app/command_words.h"
#include "standins/host/memory/host_text.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/thrown_text.h"
#include "tools/vsqinfo/vsq_reader.h"

namespace {

using memhost::SceneBuilder;

// Takes the host's events down, as "hide Lid; ".
class Heard : public INodeEventCallback {
public:
    Heard() : key_(GetISceneEventManager()->RegisterCallback(this)) {}
    ~Heard() override { GetISceneEventManager()->UnRegisterCallback(key_); }

    std::string take() { return std::exchange(events_, {}); }

    void Added(NodeKeyTab& nodes) override { hear("add", nodes); }
    void Deleted(NodeKeyTab& nodes) override { hear("delete", nodes); }
    void ControllerOtherEvent(NodeKeyTab& nodes) override { hear("move", nodes); }
    void NameChanged(NodeKeyTab& nodes) override { hear("name", nodes); }
    void HideChanged(NodeKeyTab& nodes) override { hear("hide", nodes); }

private:
    void hear(const char* event, NodeKeyTab& nodes) {
        events_ += event;
        for (int i = 0; i < nodes.Count(); ++i) {
            INode* node = NodeEventNamespace::GetNodeByKey(nodes[i]);
            events_ += node ? " " + memhost::utf8_from_units(node->GetName()) : " nobody";
        }
        events_ += "; ";
    }

    ISceneEventManager::CallbackKey key_;
    std::string events_;
};

class SessionTest : public testing::Test {
protected:
    SessionTest() {
        lid_.child(L"T\u00f6n").hidden();
        scene_.node(L"Left Arm");
        scene_.node(L"Lid").child(L"5\" disc");
        scene_.host().events().deliver();
    }

    SceneBuilder scene_;
    memhost::NodeBuilder lid_ = scene_.node(L"Lid").transform(memhost::rotation_z(90));
    TemporaryFolder settings_;
    app::PluginCommands plugin_{scene_.host(), settings_.path().u8string()};
    app::Session session_{scene_.host(), plugin_, "demo:none"};
};

TEST_F(SessionTest, TellsOfEditsAndSoDoTheHostsEvents) {
    Heard heard;
    const struct {
        const char* line;
        const char* answer;
        const char* events;
    } lines[] = {
        {"", "", ""},
        {"nodes", "  Lid\n    T\u00f6n (hidden)\n  Left Arm\n  Lid\n    5\" disc", ""},
        {"unhide T\u00f6n", "'T\u00f6n' is shown", "hide T\u00f6n; "},
        {" hide \t\"Left Arm\"\r", "'Left Arm' is hidden", "hide Left Arm; "},
        {"move Lid 1 -2.5 3e1", "'Lid' stands at 1 -2.5 3e1", "move Lid; "},
        {"rename \"5\"\" disc\" \"a \"\"b\"\"\"", "'5\" disc' is now 'a \"b\"'", "name a \"b\"; "},
        {"delete Lid", "'Lid' is deleted", "delete nobody; "},
        {"frame 12", "frame 12", ""},
        {"nodes", "  Left Arm (hidden)\n  Lid\n    a \"b\"\n  T\u00f6n", ""},
        {"quit", "", ""},
    };
    for (const auto& line : lines) {
        EXPECT_FALSE(session_.is_over());
        EXPECT_EQ(session_.carry_out(line.line), line.answer);
        EXPECT_EQ(heard.take(), line.events) << line.line;
    }
    EXPECT_TRUE(session_.is_over());
    EXPECT_EQ(scene_.host().time(), 12 * scene_.host().ticks_per_frame());
}

TEST_F(SessionTest, MovesANodeInItsParentsSpaceAsItIsTurned) {
    session_.carry_out("move T\u00f6n 1 0 0");
    session_.carry_out("move Lid 0 0 5");
    const Matrix3 world = lid_.node().children()[0]->GetNodeTM(0);
    EXPECT_NEAR(world.GetTrans().y, 1, 1e-6);
    EXPECT_NEAR(world.GetTrans().z, 5, 1e-6);
}

TEST_F(SessionTest, RefusesAWrongCommandInOneLineAndChangesNothing) {
    const TemporaryFolder folder;
    const std::pair<std::string, std::string> lines[] = {
        {"HIDE Lid", "no command is named 'HIDE' (help lists what there is)"},
        {"\"\"", "no command is named '' (help lists what there is)"},
        {"hide", "hide takes NODE"},
        {"hide Left Arm", "hide takes NODE"},
        {"update now", "update takes nothing"},
        {"hide \"Left Arm", "a quotation mark has no partner"},
        {"hide \"Scene Root\"", "no node is named 'Scene Root' (nodes lists what there is)"},
        {"delete \"a\x1b\"", "no node is named 'a\\x1b' (nodes lists what there is)"},
        {"move Lid 1 2 three", "'three' is no coordinate"},
        {"move Lid 1 2 inf", "'inf' is no coordinate"},
        {"move Lid 1e9999 2 3", "'1e9999' is no coordinate"},
        {"frame 1.5", "'1.5' is no frame"},
        {"frame 99999999999", "'99999999999' is no frame"},
        {"export -", "standard output is the session's own"},
        {"export \"\"", "the name of the scene file is empty"},
        {"animation -", "the name for an animation ends in .vsq, unlike '-'"},
    };
    Heard heard;
    for (const auto& [line, refusal] : lines) {
        const auto carry_out = [&, &wrong = line] { session_.carry_out(wrong); };
        EXPECT_EQ(thrown_text<std::exception>(carry_out), refusal) << line;
    }
    EXPECT_EQ(heard.take(), "");
    EXPECT_EQ(session_.carry_out("export \"" + folder / "s.vsq" + "\""),
              "export: 0 objects, 0 cameras, 5 matrices of nodes written to " + folder / "s.vsq");
}

// A still has no motion, and the setting stays that way.
TEST_F(SessionTest, ExportsNoMotionBehindAnAnimation) {
    const TemporaryFolder folder;
    scene_.animation_frames(0, 1);
    scene_.node(L"Wheel").mesh(memhost::box_mesh(1, 1, 1)).motion([](TimeValue t) {
        return memhost::rotation_z(t);
    });
    const auto animations = [&] {
        session_.carry_out("export \"" + folder / "s.vsq" + "\"");
        return vsqinfo::read_vsq_file(folder / "s.vsq").animations;
    };
    EXPECT_EQ(animations(), 1u);
    EXPECT_EQ(session_.carry_out("animation \"" + folder / "a.vsq" + "\""),
              "animation: 2 frames, " + folder / "a0000.vsq" + " to " + folder / "a0001.vsq" +
                  ", and the script " + folder / "a.py");
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "a.vsq"));
    EXPECT_EQ(animations(), 0u);
}

}  // namespace
