#include <gtest/gtest.h>

#include "tests/support/exported_scene.h"

namespace {

using memhost::SceneBuilder;

// The contents of the root group of a scene that is exported by layers.
std::string exported_layers(SceneBuilder& scene) {
    Qor::Options options(&scene.host());
    options.Layers = true;
    const std::string text = exported(scene, options);
    const std::string opening = "\ngroup \"object\" {\nflags 1\n";
    const size_t start = text.find(opening);
    EXPECT_NE(start, std::string::npos);
    return text.substr(start + opening.size(), text.size() - start - opening.size() - 2);
}

std::string group(const std::string& name, const std::string& content) {
    return "\ngroup \"" + name + "\" {\nflags 1\n" + content + "}\n";
}

std::string moved_to(const std::string& x) {
    return "transform 1 0 0 0 0 1 0 0 0 0 1 0 " + x + " 0 0 1\n";
}

TEST(LayerExport, WritesNodesSideBySideInTheGroupsOfTheirLayers) {
    SceneBuilder scene;
    scene.layer(L"void");
    scene.layer(L"dark").set_hidden();
    // The order in a layer is that of joining the layer, not that of the tree or of creation.
    const auto arm = scene.node(L"arm").at(1, 0, 0);
    const auto hand = arm.child(L"hand").at(2, 0, 0);
    hand.child(L"ring").at(4, 0, 0).layer(L"gold");
    hand.layer(L"gold");
    hand.child(L"nail").at(8, 0, 0);
    scene.node(L"glove").hidden();
    scene.node(L"no object").without_object();
    scene.node(L"shade").layer(L"dark");

    std::vector<std::wstring> titles;
    scene.host().on_progress([&](int, const std::wstring& title) { titles.push_back(title); });
    scene.host().cancel_at_poll(1);  // which never comes
    EXPECT_EQ(exported_layers(scene),
              group("0", group("arm", moved_to("1")) + group("nail", moved_to("11")) +
                             group("glove", "") + group("no object", "")) +
                  group("void", "") + group("dark", group("shade", "")) +
                  group("gold", group("ring", moved_to("7")) + group("hand", moved_to("3"))));
    EXPECT_EQ(scene.host().progress().percents, (std::vector<int>{14, 28, 42, 57, 71, 85, 100}));
    EXPECT_EQ(titles, (std::vector<std::wstring>{L"arm", L"nail", L"glove", L"no object", L"shade",
                                                 L"ring", L"hand"}));

    // A deleted node leaves its layer, and its children stay in theirs.
    scene.host().delete_node(hand.node());
    scene.host().delete_node(arm.node());
    scene.layer(L"dark").set_hidden(false);
    EXPECT_EQ(
        exported_layers(scene),
        group("0", group("nail", moved_to("8")) + group("glove", "") + group("no object", "")) +
            group("void", "") + group("dark", group("shade", moved_to("0"))) +
            group("gold", group("ring", moved_to("4"))));
}

// A node that moves only with its parent gets a motion of its own.
TEST(LayerExport, WritesMotionInWorldSpace) {
    SceneBuilder scene;
    scene.animation_ticks(0, 160);
    scene.node(L"cart")
        .motion([](TimeValue t) { return memhost::translation(t / 160.0f, 0, 0); })
        .child(L"load")
        .mesh(memhost::box_mesh(1, 1, 1));
    const std::string text = exported_layers(scene);
    EXPECT_NE(text.find("\nanimation \"fbx_animation_2\" \"load3ds_animation\" {"),
              std::string::npos)
        << text;
}

}  // namespace
