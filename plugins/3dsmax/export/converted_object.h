#pragma once

#include "plugins/3dsmax/export/host.h"

/// An object as another type of the host's, or null. What the host made for the conversion is
/// deleted with it; an object that is of that type already stays the node's.
template <typename Type>
class ConvertedObject {
public:
    ConvertedObject() = default;

    /// Null if `object` can't become a `type`, which is the class of `Type`.
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
    Object* object_ = nullptr;  // the node's
    Object* converted_ = nullptr;
};
