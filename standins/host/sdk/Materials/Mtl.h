#pragma once

#include "standins/host/sdk/Materials/MtlBase.h"
#include "standins/host/sdk/color.h"

class Mtl : public MtlBase {
public:
    SClass_ID SuperClassID() override { return MATERIAL_CLASS_ID; }

    /// Of the present time. The number says which of a node's materials is asked for.
    virtual Color GetDiffuse(int number = 0, BOOL back_face = FALSE) = 0;
    virtual Color GetSpecular(int number = 0, BOOL back_face = FALSE) = 0;
    virtual float GetShininess(int number = 0, BOOL back_face = FALSE) = 0;

    /// 0 for a material that stands for itself.
    virtual int NumSubMtls() { return 0; }
    /// Null for an empty place.
    virtual Mtl* GetSubMtl(int) { return nullptr; }
};
