#pragma once

#include "standins/host/sdk/Materials/Mtl.h"
#include "standins/host/sdk/Materials/Texmap.h"
#include "standins/host/sdk/interval.h"

/// The host's Standard material. Here a single number is a time; in `Mtl` it selects a material.
class StdMat : public Mtl {
public:
    Class_ID ClassID() override { return Class_ID(DMTL_CLASS_ID, 0); }

    Color GetDiffuse(int number, BOOL back_face) override = 0;
    Color GetSpecular(int number, BOOL back_face) override = 0;
    float GetShininess(int number, BOOL back_face) override = 0;
    virtual Color GetDiffuse(TimeValue t) = 0;
    virtual Color GetSpecular(TimeValue t) = 0;
    virtual float GetShininess(TimeValue t) = 0;
    /// From 0 to 1, like the self-illumination.
    virtual float GetOpacity(TimeValue t) = 0;
    virtual float GetSelfIllum(TimeValue t) = 0;

    /// Slots are numbered as in `GetSubTexmap`.
    virtual BOOL MapEnabled(int slot) = 0;
};

/// A map that shows an image file.
class BitmapTex : public Texmap {
public:
    Class_ID ClassID() override { return Class_ID(BMTEX_CLASS_ID, 0); }

    /// The map owns the bitmap. Null if the file can't be loaded.
    virtual Bitmap* GetBitmap(TimeValue t) = 0;

    /// The path as the user entered it.
    virtual const MCHAR* GetMapName() = 0;
};
