#include "standins/host/memory/memory_host.h"

#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "standins/host/memory/scene_builder.h"

using namespace memhost;
using testing::ElementsAre;

namespace {

TEST(MemoryHost, IsTheCoreInterfaceUntilItGoes) {
    EXPECT_EQ(GetCOREInterface(), nullptr);
    EXPECT_EQ(GetTicksPerFrame(), 160);
    int type = -1;
    float scale = -1;
    EXPECT_FALSE(GetSystemUnitInfo(&type, &scale));

    MemoryHost first;
    {
        MemoryHost second;
        second.set_unit(UNITS_MILES, 2.5f);
        second.set_ticks_per_frame(200);
        EXPECT_EQ(GetCOREInterface8(), &second);
        EXPECT_TRUE(GetSystemUnitInfo(&type, &scale));
        EXPECT_EQ(type, UNITS_MILES);
        EXPECT_EQ(scale, 2.5f);
        EXPECT_EQ(GetTicksPerFrame(), 200);
    }
    EXPECT_EQ(GetCOREInterface(), &first);

    // Also when they don't go in the order in which they came.
    std::optional<MemoryHost> third(std::in_place);
    MemoryHost fourth;
    third.reset();
    EXPECT_EQ(GetCOREInterface(), &fourth);
}

TEST(MemoryHost, HandsOutItsSettings) {
    using MaxSDK::AssetManagement::kPhotometricAsset;
    SceneBuilder scene;
    scene.frames_per_second(25).animation_frames(2, 10).time(77).config_folder("/settings");
    scene.asset_folder(kPhotometricAsset, "/a").asset_folder(kPhotometricAsset, L"/b");

    Interface& host = scene.host();
    EXPECT_EQ(host.GetAnimRange().Start(), 2 * 192);
    EXPECT_EQ(host.GetAnimRange().End(), 10 * 192);
    EXPECT_EQ(host.GetTime(), 77);
    EXPECT_STREQ(host.GetDir(APP_PLUGCFG_DIR), L"/settings");
    ASSERT_EQ(host.GetAssetDirCount(kPhotometricAsset), 2);
    EXPECT_STREQ(host.GetAssetDir(1, kPhotometricAsset), L"/b");
}

TEST(MemoryHost, RecordsProgress) {
    MemoryHost host;
    std::vector<std::wstring> shown;
    host.on_progress([&shown](int percent, const std::wstring& title) {
        shown.push_back(title + L" " + std::to_wstring(percent));
    });

    EXPECT_TRUE(host.ProgressStart(L"Exporting", true));
    host.ProgressUpdate(10, false, L"Box01");
    host.ProgressUpdate(50);
    host.ProgressEnd();
    EXPECT_TRUE(host.ProgressStart(L"Again", true, nullptr, nullptr));

    EXPECT_THAT(shown, ElementsAre(L"Box01 10", L"Box01 50"));
    EXPECT_THAT(host.progress().percents, ElementsAre(10, 50));
    EXPECT_EQ(host.progress().started, 2);
    EXPECT_EQ(host.progress().ended, 1);
    EXPECT_EQ(host.progress().title, L"Again");
}

TEST(MemoryHost, StaysCancelledUntilClearedOrStartedAnew) {
    MemoryHost host;
    EXPECT_FALSE(host.GetCancel());
    host.request_cancel();
    EXPECT_TRUE(host.GetCancel());
    EXPECT_TRUE(host.GetCancel());
    host.SetCancel(FALSE);
    EXPECT_FALSE(host.GetCancel());
    host.SetCancel(TRUE);
    host.ProgressStart(L"", true);
    EXPECT_FALSE(host.GetCancel());

    // A start doesn't undo what a test has planned.
    host.cancel_at_poll(2);
    host.ProgressStart(L"", true);
    EXPECT_FALSE(host.GetCancel());
    EXPECT_TRUE(host.GetCancel());
    EXPECT_TRUE(host.GetCancel());
}

TEST(MemoryHost, HandsOnTheChildrenOfADeletedNode) {
    SceneBuilder scene;
    const NodeBuilder top = scene.node(L"Top").at(1, 0, 0);
    const NodeBuilder gone = top.child(L"Gone").at(0, 5, 0);
    MemoryNode& left = gone.child(L"Left").at(0, 0, 1).node();
    MemoryNode& beside = top.child(L"Beside").node();
    EXPECT_EQ(left.GetNodeTM(0).GetTrans().y, 5);
    scene.host().delete_node(gone.node());
    EXPECT_EQ(left.GetNodeTM(0).GetTrans().y, 0);
    EXPECT_THAT(top.node().children(), ElementsAre(&beside, &left));
    EXPECT_EQ(left.GetParentNode(), &top.node());
    scene.host().delete_node(scene.host().root());
    EXPECT_EQ(scene.host().nodes().size(), 4u);
}

TEST(MemoryNode, ShowsTheTreeAndItsOwnState) {
    SceneBuilder scene;
    const NodeBuilder top = scene.node(L"Top").hidden().wire(1, 2, 3);
    MemoryNode& below = top.child(L"Below").without_object().node();
    const NodeBuilder shape = scene.node("Shape");
    auto object = std::make_unique<PlainObject>(SHAPE_CLASS_ID, Class_ID(7, 8));
    object->set_deformable(true).set_validity(Interval(3, 4));
    shape.object(std::move(object));

    INode* root = GetCOREInterface()->GetRootNode();
    ASSERT_EQ(root->NumberOfChildren(), 2);
    EXPECT_EQ(root->GetParentNode(), nullptr);
    EXPECT_EQ(root->EvalWorldState(0).obj, nullptr);
    EXPECT_EQ(root->GetChildNode(0)->GetParentNode(), root);
    EXPECT_EQ(root->GetChildNode(0)->GetChildNode(0), &below);

    EXPECT_EQ(top.node().GetWireColor(), 0x030201u);
    EXPECT_EQ(top.node().EvalWorldState(0).obj->SuperClassID(), HELPER_CLASS_ID);
    EXPECT_TRUE(top.node().IsNodeHidden(TRUE));
    EXPECT_FALSE(below.IsNodeHidden(TRUE)) << "a hidden parent hides itself alone";
    EXPECT_EQ(below.EvalWorldState(0).obj, nullptr);

    Object* evaluated = shape.node().EvalWorldState(0).obj;
    EXPECT_EQ(evaluated->SuperClassID(), SHAPE_CLASS_ID);
    EXPECT_EQ(evaluated->ClassID(), Class_ID(7, 8));
    EXPECT_TRUE(evaluated->IsDeformable());
    EXPECT_EQ(evaluated->ObjectValidity(0).End(), 4);
}

TEST(MemoryNode, NarrowsItsIntervalByEveryAncestor) {
    SceneBuilder scene;
    const NodeBuilder base =
        scene.node(L"Base").keys({{0, translation(1, 0, 0)}, {100, translation(2, 0, 0)}});
    const NodeBuilder arm =
        base.child(L"Arm").keys({{0, translation(0, 1, 0)}, {50, translation(0, 2, 0)}});
    const NodeBuilder hand = arm.child(L"Hand").at(0, 0, 1).offset(translation(0, 0, 5));
    MemoryNode& spinner = hand.child(L"Spinner")
                              .motion([](TimeValue t) { return translation(0, 0, t * 1.0f); })
                              .node();

    // The matrix of tick 60 serves 99 as well, and neither may serve 100.
    for (const TimeValue t : {60, 99}) {
        Interval valid = FOREVER;
        const Point3 place = hand.node().GetNodeTM(t, &valid).GetTrans();
        EXPECT_EQ(place.x, 1);
        EXPECT_EQ(place.y, 2);
        EXPECT_EQ(valid.Start(), 50);
        EXPECT_EQ(valid.End(), 99);
    }
    EXPECT_EQ(hand.node().GetNodeTM(100).GetTrans().x, 2);

    Interval narrow(70, 75);
    EXPECT_EQ(hand.node().GetObjTMAfterWSM(72, &narrow).GetTrans().z, 6);
    EXPECT_EQ(narrow.Start(), 70);
    EXPECT_EQ(narrow.End(), 75);

    Interval instant = FOREVER;
    EXPECT_EQ(spinner.GetNodeTM(72, &instant).GetTrans().z, 73);
    EXPECT_EQ(instant.Start(), 72);
    EXPECT_EQ(instant.End(), 72);
    EXPECT_EQ(spinner.GetNodeTM(73).GetTrans().z, 74);
}

TEST(MemoryNode, ForgetsAMatrixWhenAnAncestorMoves) {
    SceneBuilder scene;
    const NodeBuilder parent = scene.node(L"Parent").at(1, 0, 0);
    MemoryNode& child = parent.child(L"Child").at(0, 1, 0).node();
    EXPECT_EQ(child.GetNodeTM(0).GetTrans().x, 1);
    parent.at(5, 0, 0);
    EXPECT_EQ(child.GetNodeTM(0).GetTrans().x, 5);
}

// Deep enough to overflow the stack if anything recursed, and so long that a walk which didn't
// remember matrices would not come to its end.
TEST(MemoryNode, CopesWithAChainOfAnyDepth) {
    constexpr int kDepth = 200000;
    SceneBuilder scene;
    std::vector<MemoryNode*> chain;
    NodeBuilder node = scene.node(L"0").at(1, 0, 0);
    for (int i = 1; i < kDepth; ++i) {
        chain.push_back(&node.node());
        node = node.child(L"n").at(1, 0, 0);
    }
    EXPECT_EQ(node.node().GetNodeTM(0).GetTrans().x, kDepth);

    node.at(2, 0, 0);
    for (std::size_t i = 0; i < chain.size(); ++i) {
        ASSERT_EQ(chain[i]->GetNodeTM(0).GetTrans().x, static_cast<float>(i + 1));
    }
    EXPECT_EQ(node.node().GetNodeTM(0).GetTrans().x, kDepth + 1);
}

}  // namespace
