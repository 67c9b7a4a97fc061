#pragma once

#include "standins/host/sdk/Materials/Mtl.h"
#include "standins/host/sdk/interval.h"
#include "standins/host/sdk/matrix3.h"
#include "standins/host/sdk/object.h"

/// A node in the tree of the host's scene. It has a name, a transform and an object.
class INode : public ReferenceTarget {
public:
    SClass_ID SuperClassID() override { return BASENODE_CLASS_ID; }

    /// Null-terminated; valid until the node is renamed or deleted.
    virtual const MCHAR* GetName() = 0;

    /// Transforms from the node's space to world space. Narrows `valid` to the interval in which
    /// the matrix holds.
    virtual Matrix3 GetNodeTM(TimeValue t, Interval* valid = nullptr) = 0;

    /// Transforms from the object's space to world space: the object offset, then the node's
    /// matrix.
    virtual Matrix3 GetObjTMAfterWSM(TimeValue t, Interval* valid = nullptr) = 0;

    /// The scene's root for a top-level node, null for the root itself.
    virtual INode* GetParentNode() = 0;
    virtual int NumberOfChildren() = 0;
    virtual INode* GetChildNode(int i) = 0;

    /// The node owns the state, and its next evaluation can replace it.
    virtual const ObjectState& EvalWorldState(TimeValue t, BOOL eval_hidden = TRUE) = 0;

    virtual int IsNodeHidden(BOOL for_renderer = FALSE) = 0;

    /// A COLORREF, with red in the lowest byte.
    virtual DWORD GetWireColor() = 0;

    /// Null if the node has none.
    virtual Mtl* GetMtl() = 0;
};
