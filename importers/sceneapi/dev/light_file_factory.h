#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "importers/sceneapi/dev/light_factory.h"
#include "platform/files.h"

class qorScene_api_file;

namespace qor {

/// A scene that goes to a `.vsq` file, one file for each factory.
class LightFileFactory final : public LightFactory {
public:
    /// Opens the file for writing, replacing an old one. `path` is UTF-8; "-" stands for standard
    /// output, whose place standard error then takes. Throws `std::runtime_error` that names the
    /// path if it can't be opened.
    explicit LightFileFactory(const std::string& path);

    LightFileFactory(const LightFileFactory&) = delete;
    LightFileFactory& operator=(const LightFileFactory&) = delete;

    /// Closes what is still open. A failure of that can't be told from here beyond a line on
    /// standard error: a caller who has to know calls `close` first.
    ~LightFileFactory() override;

    /// Null after `close`.
    qorScene_api* get_api() override;

    void write_header(qorSceneapi_oo& scene) override;

    /// Throws `std::runtime_error` if the file couldn't be closed or some of its bytes couldn't be
    /// written, as on a full disk. The file is closed in any case.
    void close() override;

    /// The number that the header's id line is made from.
    void set_id(std::uint32_t id) { id_ = id; }

private:
    std::unique_ptr<std::FILE, platform::CloseStream> stream_;
    std::unique_ptr<qorScene_api_file> api_;  // on `stream_`, and gone before it
    std::uint32_t id_ = 0;
};

}  // namespace qor
