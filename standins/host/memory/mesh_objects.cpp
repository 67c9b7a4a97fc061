#include "standins/host/memory/mesh_objects.h"

#include <atomic>

#include "standins/host/memory/guarded_memory.h"
#include "standins/host/memory/strict_rules.h"

namespace memhost {
namespace {

std::atomic<int> live_conversion_count{0};

class Conversion final : public TriObject, public GuardedMemory {
public:
    explicit Conversion(const Mesh& mesh) {
        GetMesh().copy_whole(mesh);
        ++live_conversion_count;
    }
    ~Conversion() override { --live_conversion_count; }
};

}  // namespace

TriObject* new_conversion(const Mesh& mesh) {
    return new Conversion(mesh);
}

// Transforms every point. Transforming only the corners of the object's own box would make the box
// of a rotated node too large.
Box3 world_box_of(const Mesh& mesh, INode& node, TimeValue t) {
    const Matrix3 world_from_object = node.GetObjTMAfterWSM(t);
    Box3 box;
    for (int i = 0; i < mesh.numVerts; ++i) {
        box += mesh.verts[i] * world_from_object;
    }
    return box;
}

void answer_box(Box3& box, const Box3& answer) {
    if (!host_obeys(StrictRule::kViewNull)) {
        box = answer;
    }
}

Object* converted_to_own_class(TriObject& object, Class_ID type) {
    if (!object.CanConvertToType(type) || host_obeys(StrictRule::kConvertNull)) {
        return nullptr;
    }
    return host_obeys(StrictRule::kConvertNewObject) ? new_conversion(object.GetMesh()) : &object;
}

void MeshObject::GetWorldBoundBox(TimeValue t, INode* node, ViewExp*, Box3& box) {
    answer_box(box, world_box_of(GetMesh(), *node, t));
}

int ConvertibleObject::live_conversions() {
    return live_conversion_count;
}

int ConvertibleObject::CanConvertToType(Class_ID type) {
    return type == Class_ID(TRIOBJ_CLASS_ID, 0);
}

Object* ConvertibleObject::ConvertToType(TimeValue, Class_ID type) {
    const bool converts = CanConvertToType(type) && !host_obeys(StrictRule::kConvertNull);
    return converts ? new_conversion(mesh_) : nullptr;
}

void ConvertibleObject::GetWorldBoundBox(TimeValue t, INode* node, ViewExp*, Box3& box) {
    answer_box(box, world_box_of(mesh_, *node, t));
}

}  // namespace memhost
