#pragma once

#include <cstdint>
#include <vector>

namespace qor {

/// A running renderer.
struct RendererInstance {
    std::int32_t version_major = 0;  ///< 0 in an empty record
    std::int32_t version_minor = 0;
    std::int64_t process_id = 0;
    std::int32_t livelink_port = 0;
};

/// Returns the instances in an XML text whose major version is between the two limits, both
/// included, in the order of the text. Returns none if `xml` is null or isn't well-formed.
std::vector<RendererInstance> ReadInstances(const char* xml, int min_version, int max_version);

}  // namespace qor
