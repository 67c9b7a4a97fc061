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

/// A scene that comes over one connection, on its way into a file.
class ReceivedScene {
public:
    /// Throws `std::runtime_error` if the file can't be opened. `path` is UTF-8.
    explicit ReceivedScene(std::string path);
    ReceivedScene(const ReceivedScene&) = delete;
    ReceivedScene& operator=(const ReceivedScene&) = delete;

    /// The file of a scene that wasn't finished stays under its first name.
    ~ReceivedScene();

    /// Makes the scene call of a frame. Throws `MalformedFrame` if it isn't one.
    void call(std::uint64_t operation, const char* arguments, std::uint64_t size);

    /// Closes the file and gives it its lasting name, which it doesn't get if some of it is lost:
    /// false then.
    bool finish(const std::string& lasting_path);

    const GroupTree& groups() const { return groups_; }

    /// True for a scene that takes the place of what the renderer holds.
    bool is_whole() const { return writer_.is_whole(); }

    // For the calls themselves.
    qorScene_api& writer() { return writer_; }
    /// The anonymous shader of that number, from 1 on; null for any other number.
    qorShaderHandle shader(std::uint64_t number);

private:
    /// Notes what the renderer has to know of the scene beside its text.
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
        std::vector<GroupTree*> path_;  // to the open group, as deep as it is of interest
        std::uint64_t depth_ = 0;
        std::vector<qorShaderHandle> shaders_;  // the anonymous ones
        std::vector<bool> open_shaders_;        // true for anonymous ones
        bool is_whole_ = false;
    };

    std::string path_;
    std::unique_ptr<std::FILE, platform::CloseStream> stream_;
    GroupTree groups_;
    Writer writer_;
    std::uint64_t received_ = 0;  // bytes of the calls so far
    std::uint64_t repeated_ = 0;  // bytes of shaders that were used
    bool is_finished_ = false;
};

}  // namespace velmora
