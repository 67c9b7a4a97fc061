#pragma once

#include "standins/host/sdk/color.h"
#include "standins/host/sdk/interval.h"
#include "standins/host/sdk/ref.h"
#include "standins/host/sdk/strclass.h"

class Texmap;

/// The type of a parameter's value.
enum ParamType2 {
    TYPE_FLOAT = 0,
    TYPE_INT = 1,
    TYPE_RGBA = 2,
    TYPE_STRING = 6,
    TYPE_TEXMAP = 15,
};

class ParamDef {
public:
    ParamID ID = 0;
    MCHAR* int_name = nullptr;  ///< not localised
    ParamType2 type = TYPE_FLOAT;
};

/// Named values of a material or of another part of the scene. Use only ids that `IndextoID`
/// returns. Reading a parameter as another type gives 0, black or null.
class IParamBlock2 : public ReferenceTarget {
public:
    SClass_ID SuperClassID() override { return PARAMETER_BLOCK2_CLASS_ID; }

    virtual int NumParams() = 0;
    virtual ParamID IndextoID(int i) = 0;
    /// Negative for an id that isn't in the block. None of the functions below checks its id.
    virtual int IDtoIndex(ParamID id) = 0;
    virtual ParamDef& GetParamDef(ParamID id) = 0;
    virtual ParamType2 GetParameterType(ParamID id) = 0;
    virtual MSTR GetLocalName(ParamID id, int tab_index = -1, bool localized = true) = 0;

    virtual float GetFloat(ParamID id, TimeValue t = 0, int tab_index = 0) = 0;
    virtual int GetInt(ParamID id, TimeValue t = 0, int tab_index = 0) = 0;
    virtual Color GetColor(ParamID id, TimeValue t = 0, int tab_index = 0) = 0;
    virtual Texmap* GetTexmap(ParamID id, TimeValue t = 0, int tab_index = 0) = 0;
    virtual const MCHAR* GetStr(ParamID id, TimeValue t = 0, int tab_index = 0) = 0;

    /// False, with 0 or null in `value`, for a parameter of another type. Narrows `valid` to the
    /// time around `t` in which the value holds.
    virtual BOOL GetValue(ParamID id, TimeValue t, float& value, Interval& valid,
                          int tab_index = 0) = 0;
    virtual BOOL GetValue(ParamID id, TimeValue t, int& value, Interval& valid,
                          int tab_index = 0) = 0;
    virtual BOOL GetValue(ParamID id, TimeValue t, Color& value, Interval& valid,
                          int tab_index = 0) = 0;
    virtual BOOL GetValue(ParamID id, TimeValue t, Texmap*& value, Interval& valid,
                          int tab_index = 0) = 0;
    virtual BOOL GetValue(ParamID id, TimeValue t, const MCHAR*& value, Interval& valid,
                          int tab_index = 0) = 0;
};
