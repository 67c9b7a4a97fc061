#pragma once

#include "standins/host/sdk/maxtypes.h"

class ActionTable;

/// The release of the host, of its interface and of its SDK that a plug-in was built for.
constexpr ULONG MAX_RELEASE = 25000;
constexpr ULONG MAX_API_NUM = 62;
constexpr ULONG MAX_SDK_REV = 0;
constexpr ULONG VERSION_3DSMAX = (MAX_RELEASE << 16) + (MAX_API_NUM << 8) + MAX_SDK_REV;

using SClass_ID = ULONG;

constexpr SClass_ID BASENODE_CLASS_ID = 0x1;
constexpr SClass_ID GEOMOBJECT_CLASS_ID = 0x10;
constexpr SClass_ID CAMERA_CLASS_ID = 0x20;
constexpr SClass_ID LIGHT_CLASS_ID = 0x30;
constexpr SClass_ID SHAPE_CLASS_ID = 0x40;
constexpr SClass_ID HELPER_CLASS_ID = 0x50;
constexpr SClass_ID PARAMETER_BLOCK2_CLASS_ID = 0x82;
constexpr SClass_ID REF_MAKER_CLASS_ID = 0x100;
constexpr SClass_ID MATERIAL_CLASS_ID = 0xc00;
constexpr SClass_ID TEXMAP_CLASS_ID = 0xc10;
constexpr SClass_ID GUP_CLASS_ID = 0x10e0;
constexpr SClass_ID CUST_ATTRIB_CLASS_ID = 0x1160;

/// Ids of a parameter in its block and of a block in its owner. They aren't indices.
using ParamID = short;
using BlockID = short;

/// Identifies a class among those of one superclass.
class Class_ID {
public:
    constexpr Class_ID() = default;
    constexpr Class_ID(ULONG a, ULONG b) : a_(a), b_(b) {}

    constexpr ULONG PartA() const { return a_; }
    constexpr ULONG PartB() const { return b_; }
    constexpr bool operator==(const Class_ID& other) const {
        return a_ == other.a_ && b_ == other.b_;
    }
    constexpr bool operator!=(const Class_ID& other) const { return !(*this == other); }

private:
    ULONG a_ = 0;
    ULONG b_ = 0;
};

/// Identifies an interface of the host.
class Interface_ID {
public:
    constexpr Interface_ID() = default;
    constexpr Interface_ID(ULONG a, ULONG b) : a_(a), b_(b) {}

    constexpr ULONG PartA() const { return a_; }
    constexpr ULONG PartB() const { return b_; }
    constexpr bool operator==(const Interface_ID& other) const {
        return a_ == other.a_ && b_ == other.b_;
    }
    constexpr bool operator!=(const Interface_ID& other) const { return !(*this == other); }

private:
    ULONG a_ = 0;
    ULONG b_ = 0;
};

/// Part A of the ids of the host's own classes. Part B is 0.
constexpr ULONG TRIOBJ_CLASS_ID = 0x9;
constexpr ULONG SPLINESHAPE_CLASS_ID = 0xa;
constexpr ULONG DMTL_CLASS_ID = 0x2;
constexpr ULONG BMTEX_CLASS_ID = 0x240;
constexpr ULONG TARGET_CLASS_ID = 0x1020;
constexpr ULONG OMNI_LIGHT_CLASS_ID = 0x1011;

constexpr Class_ID BONE_OBJ_CLASSID(0x28bf6e8d, 0x2ecca840);

/// Describes a class of a plug-in to the host, and makes its objects.
class ClassDesc {
public:
    ClassDesc() = default;
    ClassDesc(const ClassDesc&) = delete;
    ClassDesc& operator=(const ClassDesc&) = delete;
    virtual ~ClassDesc() = default;

    virtual int IsPublic() = 0;
    virtual void* Create(BOOL loading = FALSE) = 0;
    virtual const MCHAR* ClassName() = 0;
    virtual const MCHAR* NonLocalizedClassName() = 0;
    virtual SClass_ID SuperClassID() = 0;
    virtual Class_ID ClassID() = 0;
    virtual const MCHAR* Category() = 0;

    virtual int NumActionTables() { return 0; }
    virtual ActionTable* GetActionTable(int) { return nullptr; }
};
