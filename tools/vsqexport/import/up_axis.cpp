#include "tools/vsqexport/import/up_axis.h"

#include <string>

#include <assimp/commonMetaData.h>
#include <assimp/scene.h>

#include "standins/host/memory/placement.h"

namespace vsqexport {
namespace {

// Some of assimp's readers rotate the scene to Y up (3DS, ASE, COLLADA), and some pass on the
// file's up axis (FBX). These do neither. In the first two formats Z is always up, and the programs
// that write the others mostly have Z up, too.
constexpr const char* kReadersOfZUp[] = {"Blender 3D Importer", "3mf Importer",
                                         "Stereolithography (STL) Importer",
                                         "Stanford Polygon Library (PLY) Importer"};

int up_axis(const aiScene& model) {
    constexpr int kY = 1;
    constexpr int kZ = 2;
    if (!model.mMetaData) {
        return kY;
    }
    int axis = kY;
    if (model.mMetaData->Get("UpAxis", axis)) {
        return axis;
    }
    aiString reader;
    if (model.mMetaData->Get(AI_METADATA_SOURCE_FORMAT, reader)) {
        for (const char* z_up : kReadersOfZUp) {
            if (std::string(reader.C_Str()).rfind(z_up, 0) == 0) {
                return kZ;
            }
        }
    }
    return kY;
}

bool points_down(const aiScene& model) {
    int sign = 1;
    return model.mMetaData && model.mMetaData->Get("UpAxisSign", sign) && sign < 0;
}

// These rotations only exchange axes, so that no number is rounded.
Matrix3 turned_from(int up_axis) {
    switch (up_axis) {
        case 0:
            return Matrix3({0, 0, 1}, {1, 0, 0}, {0, 1, 0}, {0, 0, 0});
        case 2:
            return Matrix3();
        default:
            return Matrix3({1, 0, 0}, {0, 0, 1}, {0, -1, 0}, {0, 0, 0});
    }
}

}  // namespace

Matrix3 scene_from_model(const aiScene& model, std::optional<int> up) {
    if (up) {
        return turned_from(*up);
    }
    const Matrix3 turned = turned_from(up_axis(model));
    return points_down(model) ? turned * memhost::rotation_x(180) : turned;
}

}  // namespace vsqexport
