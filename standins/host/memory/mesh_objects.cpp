#include "standins/host/memory/mesh_objects.h"

#include <atomic>

namespace memhost {
namespace {

std::atomic<int> live_conversion_count{0};

class Conversion final : public TriObject {
public:
    explicit Conversion(const Mesh& mesh) {
        GetMesh() = mesh;
        ++live_conversion_count;
    }
    ~Conversion() override { --live_conversion_count; }
};

// Of the points themselves, not of their box's corners, which a turned node would widen.
Box3 box_of(const Mesh& mesh, const Matrix3& world_from_object) {
    Box3 box;
    for (int i = 0; i < mesh.numVerts; ++i) {
        box += mesh.verts[i] * world_from_object;
    }
    return box;
}

}  // namespace

void MeshObject::GetWorldBoundBox(TimeValue t, INode* node, ViewExp*, Box3& box) {
    box = box_of(GetMesh(), node->GetObjTMAfterWSM(t));
}

int ConvertibleObject::live_conversions() {
    return live_conversion_count;
}

int ConvertibleObject::CanConvertToType(Class_ID type) {
    return type == Class_ID(TRIOBJ_CLASS_ID, 0);
}

Object* ConvertibleObject::ConvertToType(TimeValue, Class_ID type) {
    return CanConvertToType(type) ? new Conversion(mesh_) : nullptr;
}

void ConvertibleObject::GetWorldBoundBox(TimeValue t, INode* node, ViewExp*, Box3& box) {
    box = box_of(mesh_, node->GetObjTMAfterWSM(t));
}

}  // namespace memhost
