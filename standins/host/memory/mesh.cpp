#include "standins/host/sdk/mesh.h"

#include "standins/host/memory/strict_rules.h"

Mesh& Mesh::operator=(const Mesh& other) {
    copy_whole(other);
    if (this != &other && other.is_in_object_ &&
        memhost::host_obeys(memhost::StrictRule::kDroppedNormals)) {
        normals_.reset();
    }
    return *this;
}
