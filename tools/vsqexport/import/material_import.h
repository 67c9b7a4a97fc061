#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <assimp/scene.h>

#include "standins/host/memory/scene_builder.h"
#include "tools/vsqexport/import/distinct_names.h"
#include "tools/vsqexport/import/import_warning.h"
#include "tools/vsqexport/import/material_values.h"
#include "tools/vsqexport/import/model_textures.h"

namespace vsqexport {

/// A model's materials as Standard materials of the host. Each is made when it is first asked for
/// and is then shared by its nodes.
class ModelMaterials {
public:
    /// Images that the import makes and those inside the model are written to `texture_folder`; an
    /// empty path means nowhere. `warnings` gets a line for each texture that can't be loaded.
    /// `model`, `scene` and `warnings` must outlive the object.
    ModelMaterials(const aiScene& model, const std::filesystem::path& model_path,
                   const std::filesystem::path& texture_folder, memhost::SceneBuilder& scene,
                   ImportWarnings& warnings);

    /// Null if the model has no material of that number.
    Mtl* get(unsigned index);

    /// Whether a mesh needs coordinates for that material, whether or not the file has them.
    bool needs_coordinates(unsigned index) const;

    /// Adds a warning for each kind of loss of the materials so far.
    void warn() const;

private:
    Mtl* make(const aiMaterial& source, const std::string& name);
    std::string name_of(const aiMaterial& source, unsigned index);
    std::optional<TextureUse> texture(const aiMaterial& source, aiTextureType type) const;
    std::optional<TextureUse> diffuse_texture(const aiMaterial& source) const;
    TextureMeans means_of(const aiMaterial& source);
    Texmap* diffuse_map(const aiMaterial& source, const MaterialValues& values);
    Texmap* opacity_map(const aiMaterial& source, const MaterialValues& values);
    Texmap* bump_map(const aiMaterial& source, const std::string& name);
    void lose(const std::string& name, const std::string& what);

    const aiScene& model_;
    memhost::SceneBuilder& scene_;
    ImportWarnings& warnings_;
    std::string reader_;
    ModelTextures textures_;
    DistinctNames names_;
    std::vector<Mtl*> made_;                                  // by index; null until asked for
    std::map<std::string, std::vector<std::string>> losses_;  // names of materials by what is lost
};

}  // namespace vsqexport
