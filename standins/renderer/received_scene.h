#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "importers/sceneapi/dev/qorscene_api_file.h"
#include "platform/files.h"
#include "standins/renderer/group_tree.h"

namespace velmora {

/// A scene that arrives over a connection and is written to a file.
class ReceivedScene {
public:
    /// Throws `std::runtime_error` if the file can't be opened. `path` is UTF-8.
    explicit ReceivedScene(std::string path);
    ReceivedScene(const ReceivedScene&) = delete;
    ReceivedScene& operator=(const ReceivedScene&) = delete;

    /// The file of an unfinished scene stays, under the path given to the constructor.
    ~ReceivedScene();

    /// Performs the scene call in a frame. Throws `MalformedFrame` if the frame holds no valid
    /// call.
    void call(std::uint64_t operation, const char* arguments, std::uint64_t size);

    /// Closes the file and renames it to `lasting_path`. False if writing or renaming failed; the
    /// file then keeps its first name.
    bool finish(const std::string& lasting_path);

    const GroupTree& groups() const { return groups_; }

    /// True if the scene replaces everything that the renderer holds.
    bool is_whole() const { return writer_.is_whole(); }

    // Used by the scene calls.
    qorScene_api& writer() { return writer_; }
    /// The anonymous shader with that number; they count from 1. Null for any other number. Throws
    /// `MalformedFrame` for a shader that is still open, and if shaders repeat too much text.
    qorShaderHandle shader(std::uint64_t number);

private:
    /// Writes the scene's text and records what else the renderer needs to know about the scene.
    class Writer final : public qorScene_api_file {
    public:
        Writer(std::FILE* stream, GroupTree& groups)
            : qorScene_api_file(stream, true), path_{&groups} {}

        bool begin_group(const char* name, bool place) override;
        void end_group() override;
        bool begin_shader(const char* name, const char* type) override;
        bool begin_shader_id(const char* type, std::int32_t id) override;
        void end_shader() override;
        void set_flags(std::uint32_t flags) override;

        bool is_whole() const { return is_whole_; }
        const std::vector<qorShaderHandle>& shaders() const { return shaders_; }
        bool is_building(qorShaderHandle shader);

    private:
        std::vector<GroupTree*> path_;  // the root and the open groups, down to `kLevels`
        std::uint64_t depth_ = 0;
        std::vector<qorShaderHandle> shaders_;  // the anonymous ones
        std::vector<bool> open_shaders_;        // true for anonymous ones
        bool is_whole_ = false;
    };

    std::string path_;
    std::unique_ptr<std::FILE, platform::CloseStream> stream_;
    GroupTree groups_;
    Writer writer_;
    std::uint64_t received_ = 0;  // bytes of all calls so far
    std::uint64_t repeated_ = 0;  // bytes of shader text that calls have inserted
    bool is_finished_ = false;
};

}  // namespace velmora
