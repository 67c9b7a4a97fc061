#include <gtest/gtest.h>

#include <limits>

#include "tests/support/exported_scene.h"

namespace {

using memhost::SceneBuilder;

const std::string kIdentity = "transform 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1\n";

std::string moved_to(const std::string& x) {
    return "transform 1 0 0 0 0 1 0 0 0 0 1 0 " + x + " 0 0 1\n";
}

std::string group(const std::string& name, const std::string& content = kIdentity) {
    return "\ngroup \"" + name + "\" {\n" + content + "}\n";
}

// Matrices are read at the host's time.
TEST(NodeWalk, ChildrenComeBeforeTheMatrixOfTheirParent) {
    SceneBuilder scene;
    scene.time(800);
    const auto arm = scene.node(L"arm").motion(
        [](TimeValue t) { return memhost::translation(static_cast<float>(t), 0, 0); });
    arm.child(L"hand").at(2, 0, 0);
    arm.child(L"ring").at(3, 0, 0);
    scene.node(L"arm");
    EXPECT_EQ(exported_nodes(scene),
              group("arm",
                    group("hand", moved_to("2")) + group("ring", moved_to("3")) + moved_to("800")) +
                  group("arm"));
}

// A node without an object is only a group; a hidden one keeps its matrix.
TEST(NodeWalk, NodesWithoutAnObjectHaveNoMatrix) {
    SceneBuilder scene;
    scene.node(L"none").at(1, 0, 0).without_object().child(L"below").at(2, 0, 0);
    scene.node(L"hidden").at(3, 0, 0).hidden();
    scene.node(L"hidden none").at(4, 0, 0).hidden().without_object();
    EXPECT_EQ(exported_nodes(scene), group("none", group("below", moved_to("2"))) +
                                         group("hidden", moved_to("3")) +
                                         group("hidden none", moved_to("4")));
}

// Children of a node with a singular matrix are written. NaN is written too; the host's product
// with the root's matrix spreads it over the row.
TEST(NodeWalk, SingularAndInvalidMatrices) {
    SceneBuilder scene;
    scene.node(L"flat").transform(memhost::scaling(1, 1, 0)).child(L"below").at(2, 0, 0);
    scene.node(L"invalid").at(std::numeric_limits<float>::quiet_NaN(), 0, 0);
    EXPECT_EQ(exported_nodes(scene),
              group("flat", group("below", "transform 1 0 0 0 0 1 0 0 0 0 0 0 2 0 0 1\n") +
                                "transform 1 0 0 0 0 1 0 0 0 0 0 0 0 0 0 1\n") +
                  group("invalid", "transform 1 0 0 0 0 1 0 0 0 0 1 0 nan nan nan 1\n"));
}

// Recursion of this depth would overflow the host's stack.
TEST(NodeWalk, AChainOfAnyDepth) {
    constexpr int kDepth = 100000;
    SceneBuilder scene;
    auto node = scene.node(L"n");
    std::string opening;
    std::string closing;
    for (int i = 1; i <= kDepth; ++i) {
        node = i < kDepth ? node.child(L"n") : node;
        opening += "\ngroup \"n\" {\n";
        closing += kIdentity + "}\n";
    }
    EXPECT_TRUE(exported_nodes(scene) == opening + closing);
}

// The walk polls before each child. On a cancel, the open groups get their matrices and are closed.
// The fifth poll never comes.
TEST(NodeWalk, ACancelLeavesAWellFormedScene) {
    const std::string nodes_by_poll[] = {
        "",
        group("a"),
        group("a", group("b") + kIdentity),
        group("a", group("b") + group("c") + kIdentity),
        group("a", group("b") + group("c") + kIdentity) + group("d"),
    };
    const std::wstring titles[] = {L"Scene Root", L"a", L"b", L"c", L"d"};
    std::vector<int> percents;
    for (int poll = 1; poll <= 5; ++poll) {
        SceneBuilder scene;
        const auto a = scene.node(L"a");
        a.child(L"b");
        a.child(L"c");
        scene.node(L"d");
        scene.host().cancel_at_poll(poll);
        EXPECT_EQ(exported_nodes(scene), nodes_by_poll[poll - 1]) << "cancelled at poll " << poll;
        percents.push_back(20 * poll);
        EXPECT_EQ(scene.host().progress().percents, percents);
        EXPECT_EQ(scene.host().progress().title, titles[poll - 1]);
    }
}

}  // namespace
