#include "tools/vsqpicture/picture_scene.h"

#include <algorithm>

namespace vsqpicture {

Matrix matrix_at(const Track& track, double timestamp) {
    constexpr std::size_t kNumbers = 16;
    const std::size_t keys = std::min(track.timestamps.size(), track.numbers.size() / kNumbers);
    if (keys == 0) {
        return kIdentity;
    }
    const auto first = track.timestamps.begin();
    const auto end = first + static_cast<std::ptrdiff_t>(keys);
    const auto behind = static_cast<std::size_t>(std::upper_bound(first, end, timestamp) - first);
    const std::size_t before = behind == 0 ? 0 : behind - 1;
    const std::size_t after = std::min(behind, keys - 1);
    const double span = track.timestamps[after] - track.timestamps[before];
    const double part = span > 0 ? (timestamp - track.timestamps[before]) / span : 0;
    Matrix matrix;
    for (std::size_t i = 0; i < kNumbers; ++i) {
        const double from = track.numbers[kNumbers * before + i];
        const double to = track.numbers[kNumbers * after + i];
        matrix[i] = part == 0 ? from : from + (to - from) * part;
    }
    return matrix;
}

std::vector<Matrix> PictureScene::world_matrices(double frame) const {
    std::vector<Matrix> world(nodes.size(), kIdentity);
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        const Node& node = nodes[i];
        Matrix local = node.matrix;
        if (node.track) {
            local = combined(matrix_at(*node.track, frame * kTimestampsPerFrame), local);
        }
        world[i] = combined(local, world[node.parent]);
    }
    return world;
}

}  // namespace vsqpicture
