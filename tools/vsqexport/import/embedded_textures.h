#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include <assimp/texture.h>

namespace vsqexport {

/// Writes the images inside a model to files, since scenes refer to images by their paths.
///
/// A file is named after the model and a number computed from its content, in plain ASCII. So an
/// image that several models or exports share is written once, and different images never get the
/// same name. Nothing that the model says becomes part of the path.
class EmbeddedTextures {
public:
    /// An empty folder means that nothing can be written.
    EmbeddedTextures(std::filesystem::path folder, const std::string& model_name_utf8);

    /// The path of the image's file, with the bytes or pixels of the model. Nothing if it can't be
    /// written.
    std::optional<std::filesystem::path> write(const aiTexture& texture);

    /// The same for the bytes of an image file. `extension` includes its dot.
    std::optional<std::filesystem::path> write(const std::string& bytes,
                                               const std::string& extension);

private:
    std::filesystem::path folder_;
    std::string prefix_;
};

}  // namespace vsqexport
