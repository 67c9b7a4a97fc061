#include "tools/vsqexport/import/mend_3ds_scene.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vsqexport {
namespace {

using Targets = std::map<std::string, std::vector<aiVectorKey>>;  // by camera; keys ascending

enum Chunk : std::uint16_t {
    kMain = 0x4D4D,
    kEditor = 0x3D3D,
    kObject = 0x4000,
    kCamera = 0x4700,
    kKeyframer = 0xB000,
    kCameraTarget = 0xB004,
    kNodeName = 0xB010,
    kPositionTrack = 0xB020,
};

// Removes a number from the front of a chunk's bytes; returns 0 if there are too few.
template <typename Number>
Number take(std::string_view& bytes) {
    Number number = 0;
    if (bytes.size() >= sizeof number) {
        std::memcpy(&number, bytes.data(), sizeof number);
    }
    bytes.remove_prefix(std::min(bytes.size(), sizeof number));
    return number;
}

std::string take_text(std::string_view& bytes) {
    const std::size_t end = std::min(bytes.find('\0'), bytes.size());
    const std::string text(bytes.substr(0, end));
    bytes.remove_prefix(std::min(bytes.size(), end + 1));
    return text;
}

aiVector3D take_vector(std::string_view& bytes) {
    const float x = take<float>(bytes);
    const float y = take<float>(bytes);
    const float z = take<float>(bytes);
    return {x, y, z};
}

std::vector<aiVectorKey> take_track(std::string_view bytes) {
    constexpr std::size_t kHead = 10;
    bytes.remove_prefix(std::min(bytes.size(), kHead));
    std::vector<aiVectorKey> keys;
    for (auto left = take<std::uint32_t>(bytes); left > 0 && !bytes.empty(); --left) {
        const double frame = take<std::uint32_t>(bytes);
        // Each bit announces one parameter of the curve at the key.
        for (auto bits = take<std::uint16_t>(bytes) & 0x1Fu; bits != 0; bits &= bits - 1) {
            take<float>(bytes);
        }
        keys.emplace_back(frame, take_vector(bytes));
    }
    std::stable_sort(keys.begin(), keys.end());
    return keys;
}

template <typename Visit>
void for_each_chunk(std::string_view bytes, const Visit& visit) {
    constexpr std::uint32_t kHead = 6;
    while (bytes.size() >= kHead) {
        std::string_view head = bytes;
        const auto id = take<std::uint16_t>(head);
        const auto length = take<std::uint32_t>(head);
        if (length < kHead || length > bytes.size()) {
            return;
        }
        visit(id, bytes.substr(kHead, length - kHead));
        bytes.remove_prefix(length);
    }
}

void read_object(std::string_view bytes, Targets& targets) {
    const std::string name = take_text(bytes);
    for_each_chunk(bytes, [&](std::uint16_t id, std::string_view camera) {
        if (id == kCamera) {
            take_vector(camera);  // the camera's position
            targets[name] = {aiVectorKey(0, take_vector(camera))};
        }
    });
}

void read_target_node(std::string_view bytes, Targets& targets) {
    std::string name;
    for_each_chunk(bytes, [&](std::uint16_t id, std::string_view content) {
        if (id == kNodeName) {
            name = take_text(content);
        } else if (id == kPositionTrack) {
            const std::vector<aiVectorKey> track = take_track(content);
            if (!track.empty()) {
                targets[name] = track;
            }
        }
    });
}

Targets read_targets(std::string_view file) {
    Targets targets;
    for_each_chunk(file, [&](std::uint16_t main_id, std::string_view main) {
        if (main_id != kMain) {
            return;
        }
        for_each_chunk(main, [&](std::uint16_t part, std::string_view content) {
            for_each_chunk(content, [&](std::uint16_t id, std::string_view bytes) {
                if (part == kEditor && id == kObject) {
                    read_object(bytes, targets);
                } else if (part == kKeyframer && id == kCameraTarget) {
                    read_target_node(bytes, targets);
                }
            });
        });
    });
    return targets;
}

aiVector3D value_at(const aiVectorKey* keys, std::size_t count, double time) {
    const aiVectorKey* end = keys + count;
    const aiVectorKey* next = std::upper_bound(
        keys, end, time, [](double t, const aiVectorKey& key) { return t < key.mTime; });
    if (next == keys || next == end) {
        return next == keys ? keys->mValue : (end - 1)->mValue;
    }
    const aiVectorKey& last = *(next - 1);
    const double part = (time - last.mTime) / (next->mTime - last.mTime);
    return last.mValue + (next->mValue - last.mValue) * static_cast<float>(part);
}

// Rotates the negative z axis to `direction` and keeps the y axis as high as possible; z is up in
// the file. The file places a camera's children in this frame.
aiMatrix3x3 aim(const aiVector3D& direction) {
    constexpr float kNoLength = 1e-6f;
    if (!(direction.Length() > kNoLength)) {
        return {};
    }
    const aiVector3D z = (-direction).Normalize();
    aiVector3D x = aiVector3D(0, 0, 1) ^ z;
    x = x.Length() > kNoLength ? x.Normalize() : aiVector3D(1, 0, 0);
    const aiVector3D y = z ^ x;
    return {x.x, y.x, z.x, x.y, y.y, z.y, x.z, y.z, z.z};
}

// In animations the reader rolls a camera around its x axis instead of its viewing direction.
aiQuaternion mended_roll(const aiQuaternion& roll) {
    return {roll.w, 0, 0, 0 - roll.x};
}

aiQuaternion roll_at(const aiNodeAnim& channel, double time) {
    const aiQuatKey* keys = channel.mRotationKeys;
    const aiQuatKey* end = keys + channel.mNumRotationKeys;
    const aiQuatKey* next = std::upper_bound(
        keys, end, time, [](double t, const aiQuatKey& key) { return t < key.mTime; });
    if (next == keys || next == end) {
        return next == keys ? keys->mValue : (end - 1)->mValue;
    }
    const aiQuatKey& last = *(next - 1);
    const double part = (time - last.mTime) / (next->mTime - last.mTime);
    aiQuaternion roll;
    aiQuaternion::Interpolate(roll, last.mValue, next->mValue, static_cast<float>(part));
    return roll;
}

aiVector3D place_of(const aiNode& node) {
    const aiMatrix4x4& m = node.mTransformation;
    return {m.a4, m.b4, m.c4};
}

void aim_node(aiNode& node, const aiVector3D& target) {
    const aiVector3D place = place_of(node);
    aiMatrix4x4 moved;
    aiMatrix4x4::Translation(place, moved);
    const aiMatrix3x3 roll(node.mTransformation);
    node.mTransformation = moved * aiMatrix4x4(aim(target - place) * roll);
}

// A moving camera or target gets a key at every frame, since its rotation isn't even between keys.
void aim_channel(aiNodeAnim& channel, const std::vector<aiVectorKey>& targets) {
    constexpr double kMostFrames = 108000;  // an hour at 30 a second
    if (channel.mNumPositionKeys == 0 || channel.mNumRotationKeys == 0) {
        return;
    }
    std::set<double> times;
    for (unsigned i = 0; i < channel.mNumRotationKeys; ++i) {
        times.insert(channel.mRotationKeys[i].mTime);
    }
    if (channel.mNumPositionKeys > 1 || targets.size() > 1) {
        const double end = std::max({channel.mPositionKeys[channel.mNumPositionKeys - 1].mTime,
                                     targets.back().mTime, *times.rbegin()});
        for (double frame = 0; frame <= std::min(end, kMostFrames); ++frame) {
            times.insert(frame);
        }
    }
    std::vector<aiQuatKey> keys;
    for (const double time : times) {
        const aiVector3D place = value_at(channel.mPositionKeys, channel.mNumPositionKeys, time);
        const aiVector3D target = value_at(targets.data(), targets.size(), time);
        keys.emplace_back(time,
                          aiQuaternion(aim(target - place)) * mended_roll(roll_at(channel, time)));
    }
    delete[] channel.mRotationKeys;
    channel.mNumRotationKeys = static_cast<unsigned>(keys.size());
    channel.mRotationKeys = new aiQuatKey[keys.size()];
    std::copy(keys.begin(), keys.end(), channel.mRotationKeys);
}

void aim_camera(const aiScene& model, aiNode& node, const std::vector<aiVectorKey>& targets) {
    aim_node(node, targets.front().mValue);
    for (unsigned a = 0; a < model.mNumAnimations; ++a) {
        const aiAnimation& animation = *model.mAnimations[a];
        for (unsigned i = 0; i < animation.mNumChannels; ++i) {
            if (animation.mChannels[i]->mNodeName == node.mName) {
                aim_channel(*animation.mChannels[i], targets);
            }
        }
    }
}

}  // namespace

void mend_3ds_scene(const aiScene& model, const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    const Targets all_targets = read_targets(bytes);
    const auto has_place = [](const aiNode* node) {
        return node && place_of(*node) != aiVector3D();
    };
    for (unsigned i = 0; i < model.mNumCameras; ++i) {
        aiCamera& camera = *model.mCameras[i];
        aiNode* node = model.mRootNode->FindNode(camera.mName);
        if (has_place(node)) {
            camera.mPosition = aiVector3D();
        }
        const auto targets = all_targets.find(camera.mName.C_Str());
        const bool has_aim = camera.mLookAt != aiVector3D(0, 0, 1);
        if (node && node->mParent == model.mRootNode && targets != all_targets.end() && !has_aim) {
            aim_camera(model, *node, targets->second);
            camera.mLookAt = aiVector3D(0, 0, -1);
        }
    }
    for (unsigned i = 0; i < model.mNumLights; ++i) {
        aiLight& light = *model.mLights[i];
        if (has_place(model.mRootNode->FindNode(light.mName))) {
            light.mPosition = aiVector3D();
        }
    }
}

}  // namespace vsqexport
