#pragma once

#include "standins/host/sdk/ref.h"

class CustAttrib;

/// The attributes of one object, in the order in which they were added.
class ICustAttribContainer : public ReferenceTarget {
public:
    SClass_ID SuperClassID() override { return REF_MAKER_CLASS_ID; }

    virtual int GetNumCustAttribs() = 0;
    virtual CustAttrib* GetCustAttrib(int i) = 0;
};
