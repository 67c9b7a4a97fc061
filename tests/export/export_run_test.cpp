#include <gtest/gtest.h>

#include "tests/support/exported_scene.h"

namespace {

using memhost::SceneBuilder;

// Everything before the nodes is compared byte by byte.
TEST(ExportRun, OpensWithTheImportOptions) {
    SceneBuilder scene;
    scene.unit(UNITS_CENTIMETERS);
    const std::string text = exported(scene);
    const size_t start = text.find("version 9");
    ASSERT_NE(start, std::string::npos);
    EXPECT_EQ(text.substr(start),
              "version 9\n\n"
              "load \"qorrtopt.so\" {\n"
              "\"import_mode\" on,\n"
              "\"import_merge_groups\" off,\n"
              "\"import_merge_objects\" on,\n"
              "\"import_up_vector\" 2,\n"
              "\"meter_scale\" 100,\n"
              "\"import_keep_original\" on,\n"
              "\"import_center_geometry\" off,\n"
              "\"import_snap_to_ground\" off,\n"
              "\"import_adjust_camera\" on,\n"
              "\"import_adjust_environment\" on,\n"
              "\"ext\" off,\n"
              "}\n"
              "\ngroup \"object\" {\n"
              "flags 0\n"
              "}\n");
}

}  // namespace
