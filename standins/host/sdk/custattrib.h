#pragma once

#include "standins/host/sdk/ref.h"

/// A group of parameters that was added to an object and isn't part of its class.
class CustAttrib : public ReferenceTarget {
public:
    SClass_ID SuperClassID() override { return CUST_ATTRIB_CLASS_ID; }

    virtual const MCHAR* GetName(bool localized) = 0;
};
