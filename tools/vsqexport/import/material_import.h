#pragma once

#include <set>
#include <string>
#include <vector>

#include <assimp/scene.h>

#include "standins/host/memory/scene_builder.h"
#include "tools/vsqexport/import/import_warning.h"
#include "tools/vsqexport/import/texture_files.h"

namespace vsqexport {

/// A model's materials as Standard materials of the host. Each is made when it is first asked for
/// and is then shared by its nodes. Texture files become bitmap maps, and textures inside the model
/// become procedural maps.
class ModelMaterials {
public:
    /// `warnings` gets a line for each texture that can't be loaded. `model`, `scene` and
    /// `warnings` must outlive the object.
    ModelMaterials(const aiScene& model, const std::filesystem::path& model_folder,
                   memhost::SceneBuilder& scene, ImportWarnings& warnings);

    /// Null if the model has no material of that number.
    Mtl* get(unsigned index);

private:
    Mtl* make(const aiMaterial& source, unsigned index);
    Texmap* map_of(const aiMaterial& source, aiTextureType type);
    Texmap* embedded_map(const aiTexture& texture, const std::string& name, int channel);
    Texmap* file_map(const std::string& name, const Matrix3& map_from_mesh, int channel);
    void warn(const std::string& warning);

    const aiScene& model_;
    memhost::SceneBuilder& scene_;
    ImportWarnings& warnings_;
    TextureFiles files_;
    std::vector<Mtl*> made_;  // by index; null until asked for
    std::set<std::string> warned_;
};

}  // namespace vsqexport
