#include "model/bezier_curves.h"

#include <gtest/gtest.h>

#include "model/diffuse.h"
#include "tests/support/emitted_calls.h"

namespace qor {
namespace {

using Calls = std::vector<std::string>;

Calls calls_of(BezierCurves& curves) {
    return emitted_calls([&curves](qorSceneapi_oo& scene) { curves.emit(scene); });
}

TEST(BezierCurves, WritesEveryArrayInTheOrderOfTheBlock) {
    BezierCurves curves("Hair");
    curves.add_point_color(0, 0.5f, 1);
    curves.add_curve(1);
    curves.add_point_radius(0.25f);
    curves.add_point(1, 2, 3);
    curves.set_fit_to_cubic(true);
    curves.set_order(4);
    curves.set_radius(0.5f);
    curves.set_material(std::make_shared<Diffuse>("curve"));
    EXPECT_EQ(
        calls_of(curves),
        (Calls{"begin_object Hair", "begin_geometry qor_curves", "radius 0.500000", "order 4",
               "fitToCubic on", "p 1.000000 2.000000 3.000000 (vec3 x1)", "nvertices 1",
               "pr 0.250000", "pcol 0.000000 0.500000 1.000000 (vec3 x1)", "end_geometry",
               "begin_material curve", "begin_shader - qor_diffuse",
               "diffuse 0.750000 0.500000 0.500000", "current_shader", "end_shader",
               "assign_shader 0 qor_diffuse", "set_flags 4096", "end_material", "end_object"}));
    EXPECT_EQ(curves.data_size(), 4u * (3 + 1 + 1 + 3));
}

// Points and counts stand in the block in any case, and the rest only if it is set.
TEST(BezierCurves, LeavesOutWhatItHasNot) {
    BezierCurves curves("bare");
    curves.set_order(0);
    EXPECT_EQ(calls_of(curves), (Calls{"begin_object bare", "begin_geometry qor_curves",
                                       "radius 1.000000", "fitToCubic off", "p  (vec3 x0)",
                                       "nvertices ", "end_geometry", "end_object"}));
}

}  // namespace
}  // namespace qor
