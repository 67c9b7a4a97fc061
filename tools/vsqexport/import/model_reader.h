#pragma once

#include <string>

#include <assimp/commonMetaData.h>
#include <assimp/scene.h>

namespace vsqexport {

inline constexpr const char* kColladaReader = "Collada Importer";
inline constexpr const char* k3dsReader = "Discreet 3DS Importer";
inline constexpr const char* kFbxReader = "Autodesk FBX Importer";
inline constexpr const char* kGltf2Reader = "glTF2 Importer";

/// The name of the assimp reader that a model comes from; empty if the model doesn't say.
inline std::string reader_of(const aiScene& model) {
    aiString reader;
    if (model.mMetaData) {
        model.mMetaData->Get(AI_METADATA_SOURCE_FORMAT, reader);
    }
    return reader.C_Str();
}

}  // namespace vsqexport
