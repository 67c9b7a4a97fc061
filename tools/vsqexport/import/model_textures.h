#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>

#include <assimp/scene.h>

#include "standins/host/memory/image.h"
#include "standins/host/memory/scene_builder.h"
#include "tools/vsqexport/import/embedded_textures.h"
#include "tools/vsqexport/import/import_warning.h"
#include "tools/vsqexport/import/texture_files.h"

namespace vsqexport {

/// Where a texture lies on a mesh.
struct TexturePlace {
    int channel = 1;
    Matrix3 map_from_mesh;
};

/// A texture as a material names it: a path, or the name of one inside the model.
struct TextureUse {
    std::string name;
    TexturePlace place;
};

/// The texture of that type, or nothing.
std::optional<TextureUse> texture_of(const aiMaterial& source, aiTextureType type, bool is_gltf);

/// A model's textures as maps of the host. Images inside the model, and images that the import
/// makes, are written to files first; if that fails, they become maps that draw themselves.
class ModelTextures {
public:
    /// An empty `texture_folder` means that no images can be written. `warnings` gets a line for
    /// each texture that can't be loaded. `model`, `scene` and `warnings` must outlive the object.
    ModelTextures(const aiScene& model, const std::filesystem::path& model_path,
                  const std::filesystem::path& texture_folder, memhost::SceneBuilder& scene,
                  ImportWarnings& warnings);

    /// Null if the texture is inside the model and can't be loaded. A missing file still gets its
    /// map, as in the host, where the user can supply the file later.
    Texmap* map_of(const TextureUse& use);

    /// A map with an image that isn't in the model.
    Texmap* map_of(const memhost::Image& image, const TexturePlace& place);

    /// The pixels, or nothing if they can't be read. The last image is kept, since several
    /// questions are asked about one.
    const std::optional<memhost::Image>& image_of(const TextureUse& use);

private:
    Texmap* embedded_map(const aiTexture& texture, const TextureUse& use);
    Texmap* file_map(const TextureUse& use);
    std::optional<memhost::Image> read(const std::string& name);
    void warn(const std::string& warning);

    const aiScene& model_;
    memhost::SceneBuilder& scene_;
    ImportWarnings& warnings_;
    TextureFiles files_;
    EmbeddedTextures embedded_;
    std::set<std::string> warned_;
    std::string last_name_;
    std::optional<memhost::Image> last_image_;
};

}  // namespace vsqexport
