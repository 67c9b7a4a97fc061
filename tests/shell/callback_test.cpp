#include "plugins/3dsmax/shell/callback.h"

#include <gtest/gtest.h>

#include "platform/message_box.h"
#include "plugins/3dsmax/shell/command_ids.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/registry_entries.h"

namespace {

using Events = INodeEventCallback;
using memhost::SceneBuilder;
using Nodes = std::set<INode*>;

Callback callback_of(SceneBuilder& scene) {
    return Callback(&scene.host(), std::make_shared<Qor::Options>(&scene.host()));
}

Events::NodeKeyTab keys_of(std::vector<Animatable*> animatables) {
    Events::NodeKeyTab keys;
    for (Animatable* animatable : animatables) {
        AnimHandle key = Animatable::GetHandleByAnim(animatable);
        keys.Append(1, &key);
    }
    return keys;
}

TEST(Callback, RecordsTheNodesOfEventsThatAffectTheScene) {
    const std::pair<std::vector<memhost::NodeEvent>, bool> kinds[] = {
        {{&Events::Added, &Events::Deleted, &Events::HideChanged, &Events::LinkChanged,
          &Events::LayerChanged, &Events::GroupChanged, &Events::HierarchyOtherEvent,
          &Events::GeometryChanged, &Events::TopologyChanged, &Events::MappingChanged,
          &Events::ModelStructured, &Events::ModelOtherEvent, &Events::MaterialStructured,
          &Events::MaterialOtherEvent, &Events::ControllerStructured,
          &Events::ControllerOtherEvent},
         true},
        {{&Events::NameChanged, &Events::WireColorChanged, &Events::RenderPropertiesChanged,
          &Events::DisplayPropertiesChanged, &Events::UserPropertiesChanged,
          &Events::PropertiesOtherEvent, &Events::SubobjectSelectionChanged,
          &Events::SelectionChanged, &Events::FreezeChanged, &Events::DisplayOtherEvent,
          &Events::ExtentionChannelChanged},
         false},
    };
    SceneBuilder scene;
    INode* parent = &scene.node(L"parent").node();
    INode* child = &memhost::NodeBuilder(scene.host().root()).child(L"child").node();
    for (const auto& [events, is_recorded] : kinds) {
        const Nodes wanted = is_recorded ? Nodes({parent, child}) : Nodes();
        for (size_t i = 0; i < events.size(); ++i) {
            Callback callback = callback_of(scene);
            Events::NodeKeyTab keys = keys_of({parent, child, parent});
            (callback.*events[i])(keys);
            EXPECT_EQ(callback.changed_nodes(), wanted) << "event " << i;
        }
    }
}

TEST(Callback, RecordsNullForKeysWithoutANode) {
    SceneBuilder scene;
    memhost::MemoryNode& gone = scene.node(L"gone").node();
    Events::NodeKeyTab keys = keys_of({&gone, &scene.make<memhost::StandardMaterial>(L"m")});
    scene.host().delete_node(gone);
    Callback callback = callback_of(scene);
    callback.Deleted(keys);
    EXPECT_EQ(callback.changed_nodes(), Nodes({nullptr}));
}

// Converting it throws what isn't a standard exception.
class BrokenObject final : public GeomObject {
public:
    Class_ID ClassID() override { throw 5; }
};

TEST(Callback, ForgetsTheChangedNodesOnceACommandHasEnded) {
    const RegistryEntries no_renderer({});
    const TemporaryFolder folder;
    const std::string target = folder / "s.vsq";
    const std::string missing = folder / "missing" + "/s.vsq";
    const std::string no_link =
        "Error: Could not connect to a existing Velmora instance or launch a new.";
    const struct {
        const char* what;
        int command;
        std::string answer;  // to the save dialog
        bool cancelled, forgets, shows_bar;
        std::string told;
        bool breaks = false, refuses_bar = false;
    } cases[] = {
        {"an export", kExportCommand, target, false, true, true, ""},
        {"a cancelled export", kExportCommand, target, true, true, true, ""},
        {"no file chosen", kExportCommand, "", false, false, false, ""},
        {"a file that can't be created", kExportCommand, missing, false, false, true,
         "Error: could not open file: \"" + missing + "\""},
        {"an unknown failure", kExportCommand, target, false, false, true,
         "Error: The command failed for an unknown reason.", true},
        {"an export while another bar is open", kExportCommand, folder / "b", false, true, false,
         "", false, true},
        {"a render without a renderer", kRenderCommand, "", false, true, true, no_link},
        {"an update without one", kUpdateCommand, "", false, true, true, no_link},
        {"an unknown command", 7, "", false, false, false, ""},
    };
    for (const auto& command : cases) {
        SCOPED_TRACE(command.what);
        std::string told;
        platform::set_message_box_handler(
            [&told](const std::string& text, const std::string& title, std::uint32_t style) {
                EXPECT_EQ(style, 16u);  // an error's
                told += title + ": " + text;
            });
        SceneBuilder scene;
        const auto built = scene.node(L"a");
        INode* node = &built.node();
        if (command.breaks) {
            built.make_object<BrokenObject>();
        }
        if (command.refuses_bar) {
            scene.host().strict().set(memhost::StrictRule::kProgressRefused);
        }
        scene.host().answer_save_dialog(command.answer);
        scene.host().cancel_at_poll(command.cancelled ? 1 : 0);
        Callback callback = callback_of(scene);
        Events::NodeKeyTab keys = keys_of({node});
        callback.HideChanged(keys);

        EXPECT_TRUE(callback.ExecuteAction(command.command));
        EXPECT_EQ(callback.changed_nodes(), command.forgets ? Nodes() : Nodes({node}));
        EXPECT_EQ(scene.host().progress().started, command.shows_bar ? 1 : 0);
        EXPECT_EQ(scene.host().progress().ended, command.shows_bar ? 1 : 0);
        EXPECT_EQ(told, command.told);
        if (command.shows_bar) {
            EXPECT_EQ(scene.host().progress().first_title, L"Export VSQ File.");
        }
        if (command.command == kExportCommand) {
            EXPECT_EQ(scene.host().save_dialog(),
                      (std::vector<std::wstring>{L"Vsq Export", L"Velmora Vsq(*.vsq)", L"*.vsq"}));
        }
    }
    platform::set_message_box_handler({});
    EXPECT_NE(file_contents(folder / "b"), "") << "without a bar";
}

// The host may send events while a command runs. Nodes may go between two commands, and new ones
// may get their addresses.
TEST(Callback, StandsEventsInTheMiddleOfACommand) {
    const TemporaryFolder folder;
    SceneBuilder scene;
    scene.animation_frames(0, 1);
    auto callback = callback_of(scene);
    for (int round = 0; round < 20; ++round) {
        auto& going = scene.node(L"going").mesh(memhost::box_mesh(1, 1, 1)).node();
        auto& staying = scene.node(L"staying").mesh(memhost::box_mesh(1, 1, 1)).node();
        int events = 0;
        scene.host().on_progress([&](int, const std::wstring&) {
            Events::NodeKeyTab keys = keys_of({&going, &staying});
            callback.GeometryChanged(keys);
            callback.Deleted(keys);
            ++events;
        });
        scene.host().answer_save_dialog(folder / "s.vsq");
        for (const int command : {kExportCommand, kExportAnimationCommand}) {
            EXPECT_TRUE(callback.ExecuteAction(command));
        }
        EXPECT_GT(events, 0);
        scene.host().on_progress({});
        Events::NodeKeyTab keys = keys_of({&going});
        callback.Added(keys);
        scene.host().delete_node(going);
        scene.host().delete_node(staying);
    }
    scene.node(L"last").mesh(memhost::box_mesh(1, 1, 1));
    EXPECT_TRUE(callback.ExecuteAction(kExportCommand));
    EXPECT_NE(file_contents(folder / "s.vsq").find("group \"last\""), std::string::npos);
}

}  // namespace
