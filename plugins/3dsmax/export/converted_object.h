#pragma once

#include "plugins/3dsmax/export/host.h"

/// An object converted to another of the host's types, or null. Deletes the object that the host
/// made for the conversion. If no conversion was needed, the object still belongs to the node.
template <typename Type>
class ConvertedObject {
public:
    ConvertedObject() = default;

    /// `type` is the class id of `Type`. Holds null if `object` can't be converted.
    ConvertedObject(Object* object, TimeValue t, const Class_ID& type)
        : object_(object),
          converted_(object->CanConvertToType(type) ? object->ConvertToType(t, type) : nullptr) {}
    ConvertedObject(const ConvertedObject&) = delete;
    ConvertedObject& operator=(const ConvertedObject&) = delete;
    ~ConvertedObject() {
        if (converted_ != nullptr && converted_ != object_) {
            converted_->DeleteMe();
        }
    }

    Type* get() const { return static_cast<Type*>(converted_); }
    Type* operator->() const { return get(); }

private:
    Object* object_ = nullptr;  // owned by the node
    Object* converted_ = nullptr;
};
