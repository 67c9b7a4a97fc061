#pragma once

#include "standins/host/sdk/plugapi.h"

class ICustAttribContainer;
class IParamBlock2;

/// A key that identifies a part of the scene for as long as the part exists. 0 identifies nothing.
using AnimHandle = ULONG_PTR;

/// The base class of everything in the host's scene.
class Animatable {
public:
    Animatable() = default;
    Animatable(const Animatable&) = delete;
    Animatable& operator=(const Animatable&) = delete;

    /// Null if the object is gone.
    static Animatable* GetAnimByHandle(AnimHandle handle);
    static AnimHandle GetHandleByAnim(Animatable* animatable);

    virtual SClass_ID SuperClassID() = 0;
    virtual Class_ID ClassID() { return Class_ID(); }
    /// True for the object's own class and its base classes.
    virtual BOOL IsSubClassOf(Class_ID id) { return id == ClassID(); }

    virtual int NumParamBlocks() { return 0; }
    /// Takes an index, unlike `GetParamBlockByID`.
    virtual IParamBlock2* GetParamBlock(int) { return nullptr; }

    /// Null if there is no block with that id.
    virtual IParamBlock2* GetParamBlockByID(BlockID) { return nullptr; }

    /// Null until an attribute is added.
    virtual ICustAttribContainer* GetCustAttribContainer() { return nullptr; }

protected:
    virtual ~Animatable() = default;
};
