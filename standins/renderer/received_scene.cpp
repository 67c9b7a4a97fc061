#include "standins/renderer/received_scene.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "importers/sceneapi/dev/shader_buffer.h"
#include "standins/renderer/wire_format.h"

namespace velmora {

namespace {

// Set in the flags of a root group.
constexpr std::uint32_t kWholeSceneFlag = 0x400;

// Shaders nested in shaders could turn a few calls into more text than any disk holds. Real scenes
// repeat about as many bytes as they send.
constexpr std::uint64_t kFreeRepetition = 0x4000000;
constexpr std::uint64_t kMostRepetition = 64;

}  // namespace

ReceivedScene::ReceivedScene(std::string path)
    : path_(std::move(path)),
      stream_(platform::open_file(path_, "wb")),
      writer_(stream_.get(), groups_) {
    if (!stream_) {
        throw std::runtime_error("can't write " + path_);
    }
}

ReceivedScene::~ReceivedScene() {
    if (!is_finished_) {
        writer_.flush();
    }
}

bool ReceivedScene::finish(const std::string& lasting_path) {
    is_finished_ = true;
    const bool written = writer_.flush();
    const bool closed = std::fclose(stream_.release()) == 0;
    if (!written || !closed) {
        return false;
    }
    std::error_code error;
    std::filesystem::rename(std::filesystem::u8path(path_), std::filesystem::u8path(lasting_path),
                            error);
    return !error;
}

qorShaderHandle ReceivedScene::shader(std::uint64_t number) {
    if (number == 0 || number > writer_.shaders().size()) {
        return nullptr;
    }
    const qorShaderHandle shader = writer_.shaders()[static_cast<std::size_t>(number - 1)];
    repeated_ += static_cast<const ShaderBuffer*>(shader)->contents().size();
    if (writer_.is_building(shader) || repeated_ > kFreeRepetition + kMostRepetition * received_) {
        throw MalformedFrame();
    }
    return shader;
}

bool ReceivedScene::Writer::begin_group(const char* name, bool place) {
    ++depth_;
    if (depth_ <= GroupTree::kLevels) {
        path_.push_back(&path_.back()->child(name != nullptr ? name : ""));
    }
    return qorScene_api_file::begin_group(name, place);
}

void ReceivedScene::Writer::end_group() {
    if (depth_ > 0) {
        if (depth_ <= GroupTree::kLevels) {
            path_.pop_back();
        }
        --depth_;
    }
    qorScene_api_file::end_group();
}

bool ReceivedScene::Writer::begin_shader(const char* name, const char* type) {
    open_shaders_.push_back(name == nullptr);
    qorScene_api_file::begin_shader(name, type);
    if (name == nullptr) {
        shaders_.push_back(current_shader());
    }
    return true;
}

bool ReceivedScene::Writer::begin_shader_id(const char* type, std::int32_t id) {
    open_shaders_.push_back(false);
    return qorScene_api_file::begin_shader_id(type, id);
}

void ReceivedScene::Writer::end_shader() {
    if (!open_shaders_.empty()) {
        open_shaders_.pop_back();
    }
    qorScene_api_file::end_shader();
}

void ReceivedScene::Writer::set_flags(std::uint32_t flags) {
    if (depth_ == 1 && (flags & kWholeSceneFlag) != 0) {
        is_whole_ = true;
    }
    qorScene_api_file::set_flags(flags);
}

// Whether the shader is still open: a shader can't be written into itself.
bool ReceivedScene::Writer::is_building(qorShaderHandle shader) {
    const bool has_buffer =
        std::find(open_shaders_.begin(), open_shaders_.end(), true) != open_shaders_.end();
    return has_buffer && shader == current_shader();
}

}  // namespace velmora
