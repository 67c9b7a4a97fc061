#pragma once

#include "standins/host/sdk/plugapi.h"

class ICustAttribContainer;
class IParamBlock2;

/// A key that leads to a part of the scene for as long as that is there; 0 leads nowhere.
using AnimHandle = ULONG_PTR;

/// The root of everything that the host's scene is made of.
class Animatable {
public:
    Animatable() = default;
    Animatable(const Animatable&) = delete;
    Animatable& operator=(const Animatable&) = delete;

    /// Null if it is gone.
    static Animatable* GetAnimByHandle(AnimHandle handle);
    static AnimHandle GetHandleByAnim(Animatable* animatable);

    virtual SClass_ID SuperClassID() = 0;
    virtual Class_ID ClassID() { return Class_ID(); }
    /// True for the object's own class and for those that it derives from.
    virtual BOOL IsSubClassOf(Class_ID id) { return id == ClassID(); }

    virtual int NumParamBlocks() { return 0; }
    /// By place, unlike the next.
    virtual IParamBlock2* GetParamBlock(int) { return nullptr; }

    /// Null if there is no block of that id.
    virtual IParamBlock2* GetParamBlockByID(BlockID) { return nullptr; }

    /// Null as long as nobody has added an attribute.
    virtual ICustAttribContainer* GetCustAttribContainer() { return nullptr; }

protected:
    virtual ~Animatable() = default;
};
