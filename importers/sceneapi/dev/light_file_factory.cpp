#include "importers/sceneapi/dev/light_file_factory.h"

#include <cerrno>
#include <stdexcept>

#include "importers/sceneapi/dev/qorscene_api_file.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "platform/files.h"

namespace qor {

namespace {

// Other output of the process would get between the bytes of the scene, so it is redirected to
// standard error. The export continues even if that or the switch to binary mode fails.
std::FILE* take_standard_output() {
    std::FILE* stream = platform::duplicate_standard_output();
    if (stream == nullptr) {
        return nullptr;
    }
    if (!platform::redirect_standard_output_to_error()) {
        std::perror("duplicating stderr to stdout");
    }
    if (!platform::set_binary_mode(stream)) {
        std::perror("setting binary mode on file");
    }
    return stream;
}

}  // namespace

LightFileFactory::LightFileFactory(const std::string& path) {
    stream_.reset(path == "-" ? take_standard_output() : platform::open_file(path, "wb+"));
    if (!stream_) {
        std::perror("opening file");
        throw std::runtime_error("could not open file: \"" + path + "\"");
    }
    api_ = std::make_unique<qorScene_api_file>(stream_.get(), true);
}

LightFileFactory::~LightFileFactory() {
    try {
        LightFileFactory::close();
    } catch (...) {
        // `close` has reported it on standard error.
    }
}

qorScene_api* LightFileFactory::get_api() {
    return api_.get();
}

void LightFileFactory::write_header(qorSceneapi_oo& scene) {
    const std::uint32_t number = id_ == 0 ? 1u : (id_ * 1234567u + 1234567u) & 0x7fffffffu;
    char header[4096];
    std::snprintf(header, sizeof header,
                  "//---quoria:dal:7---\n"
                  "//---import:dal:1---\n"
                  "//---id:%u---\n"
                  "// This is a Velmora scene file\n\n",
                  static_cast<unsigned>(number));
    scene.get_api()->write_text("%s", header);
}

void LightFileFactory::close() {
    if (!stream_) {
        return;
    }
    // A failed write is reported in the same way as a failed close.
    const int reason = api_->flush() ? 0 : errno;
    api_.reset();
    const bool lost_bytes = std::ferror(stream_.get()) != 0;
    const bool failed_to_close = std::fclose(stream_.release()) != 0;
    if (reason == 0 && !lost_bytes && !failed_to_close) {
        return;
    }
    if (reason != 0) {
        errno = reason;
    }
    std::perror("closing file");
    throw std::runtime_error("could not close file");
}

}  // namespace qor
