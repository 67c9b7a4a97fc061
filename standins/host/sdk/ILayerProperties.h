#pragma once

#include "standins/host/sdk/ifnpub.h"
#include "standins/host/sdk/inode.h"
#include "standins/host/sdk/plugapi.h"
#include "standins/host/sdk/tab.h"

constexpr Interface_ID LAYERMANAGER_INTERFACE(0x77ff1709, 0x19186e96);

class ILayerProperties : public FPInterface {
public:
    /// Valid until the layer is renamed or deleted.
    virtual const MCHAR* getName() = 0;
    /// Replaces the contents of the table with the layer's nodes.
    virtual BOOL Nodes(Tab<INode*>& nodes) = 0;
};

/// The host returns it as the interface `LAYERMANAGER_INTERFACE`.
class IFPLayerManager : public FPInterface {
public:
    virtual int getCount() = 0;
    /// The first layer is the default layer. Null past the last one.
    virtual ILayerProperties* getLayer(int i) = 0;
};
