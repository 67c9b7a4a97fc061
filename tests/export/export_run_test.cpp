#include <gtest/gtest.h>

#include <sstream>

#include "standins/host/memory/demo_scenes.h"
#include "tests/support/exported_scene.h"
#include "tools/vsqinfo/vsq_reader.h"

namespace {

using memhost::SceneBuilder;

vsqinfo::VsqSummary read_back(const std::string& text) {
    std::istringstream stream(text);
    return vsqinfo::read_vsq(stream);
}

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

// The reader has no code in common with the writer.
TEST(ExportRun, DemoScenesReadBack) {
    for (const memhost::DemoScene& demo : memhost::demo_scenes()) {
        SceneBuilder scene;
        demo.build(scene);
        const vsqinfo::VsqSummary summary = read_back(exported(scene));
        // There is a progress report for each node and the root, which has no group here. Deforming
        // meshes can have more groups.
        EXPECT_GE(summary.groups, scene.host().progress().percents.size() - 1) << demo.name;
        EXPECT_EQ(summary.root_name, "object");
    }
}

}  // namespace
