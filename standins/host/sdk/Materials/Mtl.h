#pragma once

#include "standins/host/sdk/Materials/MtlBase.h"
#include "standins/host/sdk/color.h"

class Mtl : public MtlBase {
public:
    SClass_ID SuperClassID() override { return MATERIAL_CLASS_ID; }

    /// The values at the current time. `number` selects one of the materials of a multi-material.
    virtual Color GetDiffuse(int number = 0, BOOL back_face = FALSE) = 0;
    virtual Color GetSpecular(int number = 0, BOOL back_face = FALSE) = 0;
    virtual float GetShininess(int number = 0, BOOL back_face = FALSE) = 0;

    /// 0 unless the material is made up of others.
    virtual int NumSubMtls() { return 0; }
    /// Null for an empty slot.
    virtual Mtl* GetSubMtl(int) { return nullptr; }
};
