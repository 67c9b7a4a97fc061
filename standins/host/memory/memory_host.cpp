#include "standins/host/memory/memory_host.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "standins/host/memory/host_text.h"
#include "standins/host/memory/mesh_objects.h"
#include "standins/host/memory/splines.h"

namespace memhost {
namespace {

// The hosts that exist, in the order in which they were made.
std::vector<MemoryHost*>& live_hosts() {
    static std::vector<MemoryHost*> hosts;
    return hosts;
}

}  // namespace

MemoryHost::MemoryHost() {
    nodes_.push_back(std::make_unique<MemoryNode>(*this, nullptr, L"Scene Root"));
    live_hosts().push_back(this);
    TheManager = &bitmaps_;
}

MemoryHost::~MemoryHost() {
    std::vector<MemoryHost*>& hosts = live_hosts();
    hosts.erase(std::find(hosts.begin(), hosts.end(), this));
    TheManager = hosts.empty() ? nullptr : &hosts.back()->bitmaps();
    const int conversions =
        ConvertibleObject::live_conversions() + ConvertibleShape::live_conversions();
    if (hosts.empty() && conversions != 0) {
        std::fprintf(stderr, "%d converted objects were never deleted\n", conversions);
        std::abort();
    }
}

MemoryHost* MemoryHost::current() {
    return live_hosts().empty() ? nullptr : live_hosts().back();
}

MemoryNode& MemoryHost::add_node(MemoryNode& parent, const std::wstring& name) {
    nodes_.push_back(std::make_unique<MemoryNode>(*this, &parent, name));
    events_.note(&INodeEventCallback::Added, *nodes_.back());
    return *nodes_.back();
}

void MemoryHost::delete_node(MemoryNode& node) {
    const auto found = std::find_if(nodes_.begin() + 1, nodes_.end(),
                                    [&node](const auto& owned) { return owned.get() == &node; });
    if (found != nodes_.end()) {
        events_.note(&INodeEventCallback::Deleted, node);
        node.leave_tree();
        nodes_.erase(found);
    }
}

void MemoryHost::set_unit(int type, float scale) {
    unit_type_ = type;
    unit_scale_ = scale;
}

void MemoryHost::add_asset_folder(MaxSDK::AssetManagement::AssetType type,
                                  const std::wstring& folder) {
    asset_folders_[type].push_back(units_from_wide(folder));
}

void MemoryHost::set_config_folder(const std::wstring& folder) {
    config_folder_ = units_from_wide(folder);
}

void MemoryHost::on_progress(std::function<void(int, const std::wstring&)> callback) {
    on_progress_ = std::move(callback);
}

void MemoryHost::SetTime(TimeValue t, BOOL) {
    if (on_time_) {
        on_time_(t);
    }
    time_ = t;
    ++times_set_;
}

const MCHAR* MemoryHost::GetDir(int which) {
    return which == APP_PLUGCFG_DIR ? config_folder_.c_str() : L"";
}

int MemoryHost::GetAssetDirCount(MaxSDK::AssetManagement::AssetType type) {
    return static_cast<int>(asset_folders_[type].size());
}

const MCHAR* MemoryHost::GetAssetDir(int i, MaxSDK::AssetManagement::AssetType type) {
    return asset_folders_[type].at(static_cast<std::size_t>(i)).c_str();
}

bool MemoryHost::ProgressStart(const MCHAR* title, bool) {
    if (strict_.has(StrictRule::kProgressRefused)) {
        return false;
    }
    ++progress_.started;
    progress_.title = progress_.first_title = title ? title : L"";
    if (!strict_.has(StrictRule::kCancelStays)) {
        SetCancel(FALSE);
    }
    return true;
}

bool MemoryHost::ProgressStart(const MCHAR* title, bool disp_bar, LPTHREAD_START_ROUTINE, LPVOID) {
    return ProgressStart(title, disp_bar);
}

void MemoryHost::ProgressUpdate(int percent, bool, const MCHAR* title) {
    progress_.percents.push_back(percent);
    cancel_at_update_ = cancel_.load();
    if (title) {
        progress_.title = title;
    }
    if (on_progress_) {
        on_progress_(percent, progress_.title);
    }
}

void MemoryHost::ProgressEnd() {
    ++progress_.ended;
}

BOOL MemoryHost::GetCancel() {
    if (polls_before_cancel_ > 0 && --polls_before_cancel_ == 0) {
        cancel_.store(true);
    }
    const bool is_cancelled =
        strict_.has(StrictRule::kCancelAtUpdates) ? cancel_at_update_ : cancel_.load();
    answered_cancels_ += is_cancelled ? 1 : 0;
    return is_cancelled;
}

void MemoryHost::SetCancel(BOOL cancel) {
    cancel_.store(cancel != FALSE);
    cancel_at_update_ = cancel != FALSE;
}

ViewExp* MemoryHost::View::ToPointer() {
    return host_obeys(StrictRule::kViewNull) ? nullptr : this;
}

void MemoryHost::load_menu_file() {
    menus_.load_file();
    notifications_.broadcast(NOTIFY_CUI_MENUS_POST_LOAD);
}

DWORD MemoryHost::start_plugin(ClassDesc& plugin_class, GUP& plugin) {
    const bool actions_are_late = strict_.has(StrictRule::kLateActions);
    const bool menus_are_late = strict_.has(StrictRule::kLateMenus);
    if (!actions_are_late) {
        actions_.add_tables(plugin_class);
    }
    if (menus_are_late) {
        load_menu_file();
    }
    const DWORD result = plugin.Start();
    if (actions_are_late) {
        actions_.add_tables(plugin_class);
    }
    if (actions_are_late || menus_are_late) {
        load_menu_file();
    }
    return result;
}

void MemoryHost::answer_save_dialog(const std::string& path_utf8) {
    save_path_ = units_from_utf8(path_utf8);
}

bool MemoryHost::DoMaxSaveAsDialog(HWND, const MSTR& title, MSTR& filename, MSTR&,
                                   FilterList& filters) {
    save_dialog_ = filters.texts();
    save_dialog_.insert(save_dialog_.begin(), title.data());
    filename = MSTR(save_path_.c_str());
    return !save_path_.empty();
}

}  // namespace memhost

BitmapManager* TheManager = nullptr;

Interface* GetCOREInterface() {
    return memhost::MemoryHost::current();
}

Interface8* GetCOREInterface8() {
    return memhost::MemoryHost::current();
}

FPInterface* GetCOREInterface(Interface_ID id) {
    memhost::MemoryHost* host = memhost::MemoryHost::current();
    return host && id == LAYERMANAGER_INTERFACE ? &host->layers() : nullptr;
}

int GetTicksPerFrame() {
    const memhost::MemoryHost* host = memhost::MemoryHost::current();
    return host ? host->ticks_per_frame() : memhost::kDefaultTicksPerFrame;
}

BOOL GetSystemUnitInfo(int* type, float* scale) {
    const memhost::MemoryHost* host = memhost::MemoryHost::current();
    if (!host) {
        return FALSE;
    }
    *type = host->unit_type();
    *scale = host->unit_scale();
    return TRUE;
}
