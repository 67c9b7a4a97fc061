#pragma once

#include <string>
#include <vector>

#include "standins/host/sdk/AssetManagement/AssetType.h"
#include "standins/host/sdk/ifnpub.h"
#include "standins/host/sdk/inode.h"
#include "standins/host/sdk/interval.h"
#include "standins/host/sdk/maxtypes.h"
#include "standins/host/sdk/plugapi.h"
#include "standins/host/sdk/strclass.h"

/// Selects the folder of the plug-ins' settings files in `Interface::GetDir`.
constexpr int APP_PLUGCFG_DIR = 9;

/// A view of the scene.
class ViewExp {
public:
    ViewExp() = default;
    ViewExp(const ViewExp&) = delete;
    ViewExp& operator=(const ViewExp&) = delete;
    virtual ~ViewExp() = default;

    /// Null if the view is gone.
    virtual ViewExp* ToPointer() { return this; }
    virtual bool IsAlive() { return true; }
};

class IActionManager;
class IMenuManager;

/// The host itself. Call it only on its main thread.
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

    /// Folder names may or may not end with a separator. They stay valid until the host's settings
    /// change.
    virtual const MCHAR* GetDir(int which) = 0;
    virtual int GetAssetDirCount(MaxSDK::AssetManagement::AssetType type) = 0;
    virtual const MCHAR* GetAssetDir(int i, MaxSDK::AssetManagement::AssetType type) = 0;

    /// False if another progress bar is active; don't call `ProgressEnd` then. The user can cancel
    /// only with `allow_cancel`. The second overload ignores everything but the title.
    virtual bool ProgressStart(const MCHAR* title, bool allow_cancel = true) = 0;
    virtual bool ProgressStart(const MCHAR* title, bool disp_bar, LPTHREAD_START_ROUTINE fn,
                               LPVOID arg) = 0;
    /// A null title keeps the last one.
    virtual void ProgressUpdate(int percent, bool show_percent = true,
                                const MCHAR* title = nullptr) = 0;
    virtual void ProgressEnd() = 0;

    /// True once the user has cancelled, until `SetCancel(FALSE)` or the next `ProgressStart`.
    virtual BOOL GetCancel() = 0;
    virtual void SetCancel(BOOL cancel) = 0;

    virtual IActionManager* GetActionManager() = 0;
    virtual IMenuManager* GetMenuManager() = 0;
};

/// The file types that a file dialog offers. Descriptions and patterns alternate.
class FilterList {
public:
    void Append(const MCHAR* text) { texts_.emplace_back(text); }
    /// For the in-memory host, which has no other way to see them.
    const std::vector<std::wstring>& texts() const { return texts_; }

private:
    std::vector<std::wstring> texts_;
};

/// The same host, with functions that release 8 added.
class Interface8 : public Interface {
public:
    /// Asks the user for a file to write. False if the user cancels. `filename` and `initial_dir`
    /// hold what the dialog shows first and receive what the user has chosen.
    virtual bool DoMaxSaveAsDialog(HWND parent, const MSTR& title, MSTR& filename,
                                   MSTR& initial_dir, FilterList& filters) = 0;
};

/// Null while there is no host.
Interface* GetCOREInterface();
Interface8* GetCOREInterface8();
/// Cast the result to the class of the interface. Null if the host has no interface with that id.
FPInterface* GetCOREInterface(Interface_ID id);

/// 4800 divided by the frames per second.
int GetTicksPerFrame();
