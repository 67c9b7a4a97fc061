#pragma once

#include "plugins/3dsmax/export/host.h"

/// A working copy of a host mesh. The specified normals are read from the original, because it
/// depends on the host's release whether a copy has them.
struct CopiedMesh {
    CopiedMesh() = default;

    /// Borrows the normals of `original`.
    explicit CopiedMesh(Mesh& original)
        : mesh(original), specified_normals(original.GetSpecifiedNormals()) {}

    /// Replaces the copy, reusing its storage. Borrows the normals of `original`.
    void Assign(Mesh& original) {
        mesh = original;
        specified_normals = original.GetSpecifiedNormals();
    }

    Mesh mesh;
    MeshNormalSpec* specified_normals = nullptr;  ///< the original's; null if it has none
};
