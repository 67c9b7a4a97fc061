#pragma once

#include "standins/host/sdk/Materials/Mtl.h"
#include "standins/host/sdk/interval.h"
#include "standins/host/sdk/matrix3.h"
#include "standins/host/sdk/object.h"

/// A node of the host's scene: a name, a place and an object, in a tree.
class INode : public ReferenceTarget {
public:
    SClass_ID SuperClassID() override { return BASENODE_CLASS_ID; }

    /// Zero-terminated; valid until the node is renamed or deleted.
    virtual const MCHAR* GetName() = 0;

    /// From the node's space to the world's. `valid` is narrowed to the interval in which the
    /// matrix holds.
    virtual Matrix3 GetNodeTM(TimeValue t, Interval* valid = nullptr) = 0;

    /// From the object's space to the world's: the object offset, then the node's matrix.
    virtual Matrix3 GetObjTMAfterWSM(TimeValue t, Interval* valid = nullptr) = 0;

    /// The scene's root for a node at the top, null for the root itself.
    virtual INode* GetParentNode() = 0;
    virtual int NumberOfChildren() = 0;
    virtual INode* GetChildNode(int i) = 0;

    /// The state belongs to the node, and the next evaluation can replace it.
    virtual const ObjectState& EvalWorldState(TimeValue t, BOOL eval_hidden = TRUE) = 0;

    virtual int IsNodeHidden(BOOL for_renderer = FALSE) = 0;

    /// In the layout of a COLORREF, red in the lowest byte.
    virtual DWORD GetWireColor() = 0;

    /// Null if the node has none.
    virtual Mtl* GetMtl() = 0;
};
