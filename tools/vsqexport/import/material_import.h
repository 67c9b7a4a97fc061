#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include <assimp/scene.h>

#include "standins/host/memory/scene_builder.h"
#include "tools/vsqexport/import/distinct_names.h"
#include "tools/vsqexport/import/embedded_textures.h"
#include "tools/vsqexport/import/import_warning.h"
#include "tools/vsqexport/import/texture_files.h"

namespace vsqexport {

/// A model's materials as Standard materials of the host. Each is made when it is first asked for
/// and is then shared by its nodes. Textures become bitmap maps. Those inside the model are written
/// to files first; if that fails, they become maps that draw themselves.
class ModelMaterials {
public:
    /// Textures inside the model are written to `texture_folder`; an empty path means nowhere.
    /// `warnings` gets a line for each texture that can't be loaded. `model`, `scene` and
    /// `warnings` must outlive the object.
    ModelMaterials(const aiScene& model, const std::filesystem::path& model_path,
                   const std::filesystem::path& texture_folder, memhost::SceneBuilder& scene,
                   ImportWarnings& warnings);

    /// Null if the model has no material of that number.
    Mtl* get(unsigned index);

private:
    Mtl* make(const aiMaterial& source, unsigned index);
    std::string name_of(const aiMaterial& source, unsigned index);
    Texmap* map_of(const aiMaterial& source, aiTextureType type);
    Texmap* embedded_map(const aiTexture& texture, const std::string& name,
                         const Matrix3& map_from_mesh, int channel);
    Texmap* file_map(const std::string& name, const Matrix3& map_from_mesh, int channel);
    void warn(const std::string& warning);

    const aiScene& model_;
    memhost::SceneBuilder& scene_;
    ImportWarnings& warnings_;
    TextureFiles files_;
    EmbeddedTextures embedded_;
    DistinctNames names_;
    std::vector<Mtl*> made_;  // by index; null until asked for
    std::set<std::string> warned_;
};

}  // namespace vsqexport
