#pragma once

#include "standins/host/sdk/mesh.h"
#include "standins/host/sdk/object.h"

/// An object that is stored as a triangle mesh.
class TriObject : public GeomObject {
public:
    TriObject() { mesh_.set_in_object(); }

    Class_ID ClassID() override { return Class_ID(TRIOBJ_CLASS_ID, 0); }
    int IsDeformable() override { return TRUE; }
    int CanConvertToType(Class_ID type) override { return type == Class_ID(TRIOBJ_CLASS_ID, 0); }
    Object* ConvertToType(TimeValue, Class_ID type) override {
        return CanConvertToType(type) ? this : nullptr;
    }

    Mesh& GetMesh() { return mesh_; }

private:
    Mesh mesh_;
};
