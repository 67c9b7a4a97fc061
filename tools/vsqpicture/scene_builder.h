#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <tuple>

#include "tools/vsqpicture/picture_scene.h"

namespace vsqpicture {

/// Makes a `PictureScene` of scene files.
///
///     SceneBuilder builder;
///     builder.add("shot0000.vsq");
///     builder.add("shot0001.vsq");  // brings what changes
///     const PictureScene& scene = builder.scene();
///
/// What a further file has replaces what has the same place and name: groups by their path, objects
/// and cameras by their name, and those of one name by their order. All else stays.
class SceneBuilder {
public:
    /// Reads the scene file at `path`, which is UTF-8. Throws `vsqinfo::MalformedFile` or
    /// `vsqinfo::UnreadableFile`; the scene then stays as it was.
    void add(const std::string& path);

    const PictureScene& scene() const { return scene_; }
    PictureScene& scene() { return scene_; }

private:
    class Reader;

    PictureScene scene_;
    // The node of that name in that parent; those of one name count from 0.
    std::map<std::tuple<std::size_t, std::string, std::size_t>, std::size_t> nodes_;
};

}  // namespace vsqpicture
