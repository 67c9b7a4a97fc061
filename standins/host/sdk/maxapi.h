#pragma once

#include "standins/host/sdk/AssetManagement/AssetType.h"
#include "standins/host/sdk/ifnpub.h"
#include "standins/host/sdk/inode.h"
#include "standins/host/sdk/interval.h"
#include "standins/host/sdk/maxtypes.h"
#include "standins/host/sdk/plugapi.h"
#include "standins/host/sdk/strclass.h"

/// `which` of `Interface::GetDir` for the folder of the plug-ins' settings files.
constexpr int APP_PLUGCFG_DIR = 9;

/// A view of the scene.
class ViewExp {
public:
    ViewExp() = default;
    ViewExp(const ViewExp&) = delete;
    ViewExp& operator=(const ViewExp&) = delete;
    virtual ~ViewExp() = default;

    /// Null for a view that is gone.
    virtual ViewExp* ToPointer() { return this; }
    virtual bool IsAlive() { return true; }
};

class IActionManager;
class IMenuManager;

/// The host itself. All calls are made on its main thread.
class Interface {
public:
    Interface() = default;
    Interface(const Interface&) = delete;
    Interface& operator=(const Interface&) = delete;
    virtual ~Interface() = default;

    virtual TimeValue GetTime() = 0;
    virtual void SetTime(TimeValue t, BOOL redraw = TRUE) = 0;
    virtual Interval GetAnimRange() = 0;

    virtual INode* GetRootNode() = 0;
    virtual HWND GetMAXHWnd() const = 0;
    virtual ViewExp& GetActiveViewExp() = 0;

    /// Folder names come without a separator at the end or with one, and stay valid as long as the
    /// host's settings stay the same.
    virtual const MCHAR* GetDir(int which) = 0;
    virtual int GetAssetDirCount(MaxSDK::AssetManagement::AssetType type) = 0;
    virtual const MCHAR* GetAssetDir(int i, MaxSDK::AssetManagement::AssetType type) = 0;

    /// False if another progress is under way: then there is no `ProgressEnd` to call. Without
    /// `allow_cancel` the user can't cancel. The second form ignores all but the title.
    virtual bool ProgressStart(const MCHAR* title, bool allow_cancel = true) = 0;
    virtual bool ProgressStart(const MCHAR* title, bool disp_bar, LPTHREAD_START_ROUTINE fn,
                               LPVOID arg) = 0;
    /// Without a title the last one stays.
    virtual void ProgressUpdate(int percent, bool show_percent = true,
                                const MCHAR* title = nullptr) = 0;
    virtual void ProgressEnd() = 0;

    /// True once the user asked to stop, until `SetCancel(FALSE)` or the next `ProgressStart`.
    virtual BOOL GetCancel() = 0;
    virtual void SetCancel(BOOL cancel) = 0;

    virtual IActionManager* GetActionManager() = 0;
    virtual IMenuManager* GetMenuManager() = 0;
};

/// What a file dialog offers: descriptions and patterns by turns.
class FilterList {
public:
    void Append(const MCHAR*) {}
};

/// The same host; the number tells which release brought the operations.
class Interface8 : public Interface {
public:
    /// Asks the user for a file to write. False if there is to be none. `filename` and
    /// `initial_dir` say what the dialog starts with, and then what was chosen.
    virtual bool DoMaxSaveAsDialog(HWND parent, const MSTR& title, MSTR& filename,
                                   MSTR& initial_dir, FilterList& filters) = 0;
};

/// Null as long as there is no host.
Interface* GetCOREInterface();
Interface8* GetCOREInterface8();
/// To be cast to the class of the interface. Null if the host has none of that id.
FPInterface* GetCOREInterface(Interface_ID id);

/// 4800 by the frames in a second.
int GetTicksPerFrame();
