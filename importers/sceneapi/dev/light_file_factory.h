#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "importers/sceneapi/dev/light_factory.h"
#include "platform/files.h"

class qorScene_api_file;

namespace qor {

/// Writes a scene to a `.vsq` file; each factory writes one file.
class LightFileFactory final : public LightFactory {
public:
    /// Opens the file for writing and replaces an existing one. `path` is UTF-8. "-" means standard
    /// output; anything else that the process prints then goes to standard error. Throws
    /// `std::runtime_error` with the path if the file can't be opened.
    explicit LightFileFactory(const std::string& path);

    LightFileFactory(const LightFileFactory&) = delete;
    LightFileFactory& operator=(const LightFileFactory&) = delete;

    /// Closes the file if it is still open. A failure only prints a line to standard error; a
    /// caller that must know about it calls `close` first.
    ~LightFileFactory() override;

    /// Null after `close`.
    qorScene_api* get_api() override;

    void write_header(qorSceneapi_oo& scene) override;

    /// Throws `std::runtime_error` if the file couldn't be closed or some of its bytes couldn't be
    /// written, for example because the disk is full. The file is closed in any case.
    void close() override;

    /// The number from which the header's id line is made.
    void set_id(std::uint32_t id) { id_ = id; }

private:
    std::unique_ptr<std::FILE, platform::CloseStream> stream_;
    std::unique_ptr<qorScene_api_file> api_;  // writes to `stream_`, so it is destroyed first
    std::uint32_t id_ = 0;
};

}  // namespace qor
