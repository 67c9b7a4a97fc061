#pragma once

#include "plugins/3dsmax/export/host.h"

/// A mesh of the host, copied to work on. Its specified normals are read from the original, since
/// it differs from release to release whether a copy has them.
struct CopiedMesh {
    CopiedMesh() = default;

    /// Borrows the normals of `original`.
    explicit CopiedMesh(Mesh& original)
        : mesh(original), specified_normals(original.GetSpecifiedNormals()) {}

    /// The same into the storage that is there.
    void Assign(Mesh& original) {
        mesh = original;
        specified_normals = original.GetSpecifiedNormals();
    }

    Mesh mesh;
    MeshNormalSpec* specified_normals = nullptr;  ///< the original's; null if it has none
};
