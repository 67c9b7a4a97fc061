#include "tools/vsqexport/import/unshown_parts.h"

#include <string>

namespace vsqexport {
namespace {

// How many things of a kind the meshes have, and how many meshes have some.
struct Count {
    unsigned long long things = 0;
    unsigned meshes = 0;
    std::string first_mesh;

    void add(unsigned long long count, const aiMesh& mesh) {
        if (count == 0) {
            return;
        }
        if (meshes == 0) {
            first_mesh = mesh.mName.C_Str();
        }
        things += count;
        ++meshes;
    }

    void warn(const char* code, const std::string& what, ImportWarnings& warnings) const {
        if (meshes > 0) {
            const std::string others =
                meshes > 1 ? " and " + std::to_string(meshes - 1) + " more" : "";
            warnings.push_back({code, "the mesh \"" + first_mesh + "\"" + others + ": " +
                                          std::to_string(things) + " " + what});
        }
    }
};

unsigned long long faces_with(const aiMesh& mesh, unsigned corners) {
    unsigned long long count = 0;
    for (unsigned f = 0; f < mesh.mNumFaces; ++f) {
        count += mesh.mFaces[f].mNumIndices == corners;
    }
    return count;
}

}  // namespace

void report_unshown_parts(const aiScene& model, ImportWarnings& warnings) {
    Count points, lines, colors, sets;
    for (unsigned i = 0; i < model.mNumMeshes; ++i) {
        const aiMesh& mesh = *model.mMeshes[i];
        points.add(mesh.mNumFaces == 0 ? mesh.mNumVertices : faces_with(mesh, 1), mesh);
        lines.add(faces_with(mesh, 2), mesh);
        colors.add(mesh.HasVertexColors(0) ? mesh.mNumVertices : 0, mesh);
        const unsigned all_sets = mesh.GetNumUVChannels();
        sets.add(all_sets > 1 ? all_sets - 1 : 0, mesh);
    }
    points.warn("import-points", "points are left out", warnings);
    lines.warn("import-lines", "lines are left out", warnings);
    colors.warn("import-vertex-colours", "colours of vertices are left out", warnings);
    sets.warn("import-uv-sets",
              "further sets of texture coordinates: a material sends only the one of its maps",
              warnings);
}

}  // namespace vsqexport
