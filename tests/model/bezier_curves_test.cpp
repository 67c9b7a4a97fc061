#include "model/bezier_curves.h"

#include <gtest/gtest.h>

#include "tests/support/emitted_calls.h"

namespace qor {
namespace {

TEST(BezierCurves, LeavesOutUnsetParameters) {
    BezierCurves curves("bare");
    curves.set_order(0);
    curves.set_fit_to_cubic(true);
    EXPECT_EQ(emitted_text([&curves](qorSceneapi_oo& scene) { curves.emit(scene); }),
              "object \"bare\" {\ngeometry \"qor_curves\" {\n\"radius\" 1,\n\"fitToCubic\" on,\n"
              "\"p\" [ ] ,\n\"nvertices\" [ ] ,\n}\n}\n");
    curves.add_curve(1);
    curves.add_point(1, 2, 3);
    curves.add_point_radius(0.25f);
    curves.add_point_color(0, 0.5f, 1);
    EXPECT_EQ(curves.data_size(), 4u * (3 + 1 + 1 + 3));
}

}  // namespace
}  // namespace qor
