#include <gtest/gtest.h>

#include <limits>

#include "tests/support/exported_scene.h"

namespace {

using memhost::PlainObject;
using memhost::SceneBuilder;

const std::string kIdentity = "transform 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1\n";

std::string moved_to(const std::string& x) {
    return "transform 1 0 0 0 0 1 0 0 0 0 1 0 " + x + " 0 0 1\n";
}

TEST(NodeWalk, ChildrenComeBeforeTheMatrixOfTheirParent) {
    SceneBuilder scene;
    const auto arm = scene.node(L"arm").at(1, 0, 0);
    arm.child(L"hand").at(2, 0, 0);
    arm.child(L"ring").at(3, 0, 0);
    scene.node(L"arm");
    EXPECT_EQ(exported_nodes(scene),
              "\ngroup \"arm\" {\n"
              "\ngroup \"hand\" {\n" +
                  moved_to("2") +
                  "}\n"
                  "\ngroup \"ring\" {\n" +
                  moved_to("3") + "}\n" + moved_to("1") +
                  "}\n"
                  "\ngroup \"arm\" {\n" +
                  kIdentity + "}\n");
}

TEST(NodeWalk, AnEmptySceneIsOneEmptyGroup) {
    SceneBuilder scene;
    EXPECT_EQ(exported_nodes(scene), "");
    EXPECT_EQ(scene.host().progress().percents, (std::vector<int>{100}));
}

// A node without an object is a group and nothing else; a hidden one keeps its place.
TEST(NodeWalk, NodesWithoutAnObjectHaveNoMatrix) {
    SceneBuilder scene;
    scene.node(L"none").at(1, 0, 0).without_object().child(L"below").at(2, 0, 0);
    scene.node(L"hidden").at(3, 0, 0).hidden();
    scene.node(L"hidden none").at(4, 0, 0).hidden().without_object();
    EXPECT_EQ(exported_nodes(scene), "\ngroup \"none\" {\n\ngroup \"below\" {\n" + moved_to("2") +
                                         "}\n}\n\ngroup \"hidden\" {\n" + moved_to("3") +
                                         "}\n\ngroup \"hidden none\" {\n" + moved_to("4") + "}\n");
}

// Whatever a node holds, it has its group and matrix; and none of these has anything to write yet.
TEST(NodeWalk, ObjectsOfEveryKindHaveTheirPlace) {
    const std::pair<SClass_ID, Class_ID> kinds[] = {
        {GEOMOBJECT_CLASS_ID, Class_ID(1, 2)}, {GEOMOBJECT_CLASS_ID, Class_ID(TARGET_CLASS_ID, 0)},
        {LIGHT_CLASS_ID, Class_ID(1, 2)},      {SHAPE_CLASS_ID, Class_ID(1, 2)},
        {HELPER_CLASS_ID, Class_ID(1, 2)},
    };
    for (const auto& [superclass, class_id] : kinds) {
        SceneBuilder scene;
        auto object = std::make_unique<PlainObject>(superclass, class_id);
        object->set_deformable(true).set_validity(Interval(0, 0));
        scene.node(L"n").object(std::move(object));
        EXPECT_EQ(exported_nodes(scene), "\ngroup \"n\" {\n" + kIdentity + "}\n") << superclass;
    }
}

TEST(NodeWalk, PlacesAreThoseOfTheHostsTime) {
    SceneBuilder scene;
    scene.time(800);
    const auto cart = scene.node(L"cart").motion(
        [](TimeValue t) { return memhost::translation(static_cast<float>(t), 0, 0); });
    cart.child(L"load").at(7, 0, 0);
    EXPECT_EQ(exported_nodes(scene), "\ngroup \"cart\" {\n\ngroup \"load\" {\n" + moved_to("7") +
                                         "}\n" + moved_to("800") + "}\n");
}

TEST(NodeWalk, NamesOfAllKinds) {
    const std::string long_name(5000, 'n');
    const std::pair<std::wstring, std::string> names[] = {
        {L"a\"b\nc", "xX6122620a63"},
        {L"\u00e9", "xXe9"},
        // Of what goes beyond one byte the low one is left.
        {L"\u0141x", "\"Ax\""},
        {L"", "\"\""},
        {std::wstring(5000, L'n'), "\"" + long_name.substr(0, 1023) + "\""},
    };
    for (const auto& [name, text] : names) {
        SceneBuilder scene;
        scene.node(name);
        EXPECT_EQ(exported_nodes(scene), "\ngroup " + text + " {\n" + kIdentity + "}\n");
    }
}

// Below a singular place nothing is lost, and what is no number is written as that. The host's
// product with the root's matrix spreads it over the row.
TEST(NodeWalk, SingularAndInvalidMatrices) {
    SceneBuilder scene;
    Matrix3 flat;
    flat.SetRow(2, Point3(0, 0, 0));
    scene.node(L"flat").transform(flat).child(L"below").at(2, 0, 0);
    Matrix3 invalid;
    invalid.SetRow(3, Point3(std::numeric_limits<float>::quiet_NaN(), 0, 0));
    scene.node(L"invalid").transform(invalid);
    EXPECT_EQ(exported_nodes(scene),
              "\ngroup \"flat\" {\n\ngroup \"below\" {\n"
              "transform 1 0 0 0 0 1 0 0 0 0 0 0 2 0 0 1\n}\n"
              "transform 1 0 0 0 0 1 0 0 0 0 0 0 0 0 0 1\n}\n"
              "\ngroup \"invalid\" {\n"
              "transform 1 0 0 0 0 1 0 0 0 0 1 0 nan nan nan 1\n}\n");
}

// Far deeper than the host's stack could bear as recursion.
TEST(NodeWalk, AChainOfAnyDepth) {
    constexpr int kDepth = 100000;
    SceneBuilder scene;
    auto node = scene.node(L"n");
    for (int i = 1; i < kDepth; ++i) {
        node = node.child(L"n");
    }
    std::string wanted;
    for (int i = 0; i < kDepth; ++i) {
        wanted += "\ngroup \"n\" {\n";
    }
    for (int i = 0; i < kDepth; ++i) {
        wanted += kIdentity + "}\n";
    }
    EXPECT_TRUE(exported_nodes(scene) == wanted);
}

TEST(NodeWalk, ProgressGoesByNodesAndEndsAtAHundred) {
    SceneBuilder scene;
    scene.node(L"a").child(L"b");
    scene.node(L"c");
    exported(scene);
    EXPECT_EQ(scene.host().progress().percents, (std::vector<int>{25, 50, 75, 100}));
    EXPECT_EQ(scene.host().progress().title, L"c");
}

// A cancel is asked for before each child; what is open then is completed and closed.
TEST(NodeWalk, ACancelLeavesAWellFormedScene) {
    const std::string a_open = "\ngroup \"a\" {\n";
    const std::string b = "\ngroup \"b\" {\n" + kIdentity + "}\n";
    const std::string c = "\ngroup \"c\" {\n" + kIdentity + "}\n";
    const std::string a_closed = kIdentity + "}\n";
    const std::string d = "\ngroup \"d\" {\n" + kIdentity + "}\n";
    const std::pair<int, std::string> cancels[] = {
        {1, ""},
        {2, a_open + a_closed},
        {3, a_open + b + a_closed},
        {4, a_open + b + c + a_closed},
        {5, a_open + b + c + a_closed + d},
    };
    for (const auto& [poll, nodes] : cancels) {
        SceneBuilder scene;
        const auto a = scene.node(L"a");
        a.child(L"b");
        a.child(L"c");
        scene.node(L"d");
        scene.host().cancel_at_poll(poll);
        EXPECT_EQ(exported_nodes(scene), nodes) << "cancelled at poll " << poll;
    }
}

}  // namespace
