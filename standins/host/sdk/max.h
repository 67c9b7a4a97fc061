#pragma once

/// The host view: what a plug-in calls of 3ds Max 2023, under the names and in the headers of the
/// host's SDK. Include this header and no other of the folder.

#include "standins/host/sdk/AssetManagement/AssetType.h"
#include "standins/host/sdk/animatable.h"
#include "standins/host/sdk/box3.h"
#include "standins/host/sdk/inode.h"
#include "standins/host/sdk/interval.h"
#include "standins/host/sdk/matrix3.h"
#include "standins/host/sdk/maxapi.h"
#include "standins/host/sdk/maxtypes.h"
#include "standins/host/sdk/object.h"
#include "standins/host/sdk/plugapi.h"
#include "standins/host/sdk/point3.h"
#include "standins/host/sdk/ref.h"
#include "standins/host/sdk/strclass.h"
#include "standins/host/sdk/tab.h"
#include "standins/host/sdk/units.h"
