#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "standins/host/memory/action_manager.h"
#include "standins/host/memory/bitmap_manager.h"
#include "standins/host/memory/layers.h"
#include "standins/host/memory/memory_node.h"
#include "standins/host/memory/menu_manager.h"
#include "standins/host/memory/notifications.h"
#include "standins/host/memory/scene_events.h"
#include "standins/host/memory/script_runner.h"
#include "standins/host/memory/strict_rules.h"
#include "standins/host/sdk/max.h"

namespace memhost {

/// 30 frames per second.
constexpr int kDefaultTicksPerFrame = TIME_TICKSPERSEC / 30;

/// What the host's progress bar has received since the host was made.
struct ProgressRecord {
    int started = 0;
    int ended = 0;
    std::wstring first_title;
    std::wstring title;         // the latest one, from the start or from an update
    std::vector<int> percents;  // one per update
};

/// A host that holds its scene in memory: nodes, time, units, folders, progress and cancelling.
///
/// A new host becomes the core interface. When it is destroyed, the previous one becomes the core
/// interface again. Tests build their scenes with a `SceneBuilder`, not with this class.
class MemoryHost final : public Interface8 {
public:
    /// Starts like the genuine host: with an empty scene at tick 0, frames 0 to 100 at 30 frames
    /// per second, and inches as the unit.
    MemoryHost();
    ~MemoryHost() override;

    /// The newest of the existing hosts, or null.
    static MemoryHost* current();

    MemoryNode& root() { return *nodes_.front(); }

    /// Adds a node after its parent's other children. It lives until it is deleted.
    MemoryNode& add_node(MemoryNode& parent, const std::wstring& name);

    /// The node's children move to the end of its parent's children and keep their local matrices.
    /// The root can't be deleted.
    void delete_node(MemoryNode& node);

    /// Every node of the scene, in the order in which they were made. The root is the first.
    const std::vector<std::unique_ptr<MemoryNode>>& nodes() const { return nodes_; }

    /// Makes a material or a map from `arguments`. It lives as long as the host, and any number of
    /// nodes and materials can share it.
    template <typename T, typename... Arguments>
    T& make(Arguments&&... arguments) {
        auto made = std::make_unique<T>(std::forward<Arguments>(arguments)...);
        T& reference = *made;
        materials_.push_back(std::move(made));
        return reference;
    }

    /// `TheManager` points to this while the host is the core interface.
    MemoryBitmapManager& bitmaps() { return bitmaps_; }

    SceneEvents& events() { return events_; }
    MemoryLayers& layers() { return layers_; }

    MemoryActionManager& actions() { return actions_; }
    MemoryMenuManager& menus() { return menus_; }
    Notifications& notifications() { return notifications_; }

    /// Runs the scripts that are passed to the host.
    ScriptRunner& scripts() { return scripts_; }

    /// In ticks. Both ends are included.
    void set_animation_range(const Interval& ticks) { animation_range_ = ticks; }
    void set_ticks_per_frame(int ticks) { ticks_per_frame_ = ticks; }
    int ticks_per_frame() const { return ticks_per_frame_; }

    /// One unit of the scene is `scale` times the unit `type`, one of `UNITS_...`.
    void set_unit(int type, float scale = 1.0f);
    int unit_type() const { return unit_type_; }
    float unit_scale() const { return unit_scale_; }

    void add_asset_folder(MaxSDK::AssetManagement::AssetType type, const std::wstring& folder);
    /// Sets the folder for settings files, `GetDir(APP_PLUGCFG_DIR)`. The other folders have empty
    /// names.
    void set_config_folder(const std::wstring& folder);

    const ProgressRecord& progress() const { return progress_; }
    /// `callback` is called for each `ProgressUpdate`, with the title that the bar shows then.
    void on_progress(std::function<void(int percent, const std::wstring& title)> callback);

    /// None at first, except for those of `strict_rules_of_environment`.
    StrictRules& strict() { return strict_; }
    const StrictRules& strict() const { return strict_; }

    /// Starts a plug-in that has been loaded, and makes its actions and the user's menus known in
    /// the order that the host's rules want. Returns what the plug-in's `Start` does.
    DWORD start_plugin(ClassDesc& plugin_class, GUP& plugin);

    /// Sets the file that the save dialog returns. If it is empty, as it is at first, the user
    /// cancels the dialog.
    void answer_save_dialog(const std::string& path_utf8);
    /// What the save dialog showed last: its title and its filter's text and pattern.
    const std::vector<std::wstring>& save_dialog() const { return save_dialog_; }

    /// Cancels, as the user does with Esc. Safe to call from any thread and from a signal handler.
    void request_cancel() { cancel_.store(true); }
    /// From its `count`th call on, counted from now, `GetCancel` returns true, so that a test can
    /// stop in the middle of a walk.
    void cancel_at_poll(int count) { polls_before_cancel_ = count; }

    /// Called by nodes. Every world matrix has to be computed again.
    void transforms_changed() { ++transform_version_; }

    /// A node's matrix or object is asked for at `t`. `computes` is true if it isn't known yet.
    void note_evaluation(TimeValue t, bool computes) {
        time_changes_ += t == evaluated_at_ ? 0u : 1u;
        evaluated_at_ = t;
        evaluations_ += computes ? 1u : 0u;
    }
    /// How often nodes were asked at another time than just before. A genuine host then evaluates
    /// what depends on the time anew.
    std::uint64_t time_changes() const { return time_changes_; }
    /// How many matrices of nodes were computed.
    std::uint64_t evaluations() const { return evaluations_; }
    std::uint64_t transform_version() const { return transform_version_; }

    /// How often `GetCancel` has returned true since the host was made. A caller that gets true
    /// stops.
    int answered_cancels() const { return answered_cancels_; }

    TimeValue time() const { return time_; }
    /// Calls `callback` with each time that is set from now on, before it holds.
    void on_time(std::function<void(TimeValue)> callback) { on_time_ = std::move(callback); }

    /// How often `SetTime` was called since the host was made.
    int times_set() const { return times_set_; }

    TimeValue GetTime() override { return time_; }
    void SetTime(TimeValue t, BOOL redraw = TRUE) override;
    Interval GetAnimRange() override { return animation_range_; }
    INode* GetRootNode() override { return &root(); }
    HWND GetMAXHWnd() const override { return nullptr; }
    ViewExp& GetActiveViewExp() override { return view_; }
    const MCHAR* GetDir(int which) override;
    int GetAssetDirCount(MaxSDK::AssetManagement::AssetType type) override;
    const MCHAR* GetAssetDir(int i, MaxSDK::AssetManagement::AssetType type) override;
    bool ProgressStart(const MCHAR* title, bool allow_cancel = true) override;
    bool ProgressStart(const MCHAR* title, bool disp_bar, LPTHREAD_START_ROUTINE fn,
                       LPVOID arg) override;
    void ProgressUpdate(int percent, bool show_percent = true,
                        const MCHAR* title = nullptr) override;
    void ProgressEnd() override;
    BOOL GetCancel() override;
    bool DoMaxSaveAsDialog(HWND parent, const MSTR& title, MSTR& filename, MSTR& initial_dir,
                           FilterList& filters) override;
    void SetCancel(BOOL cancel) override;
    IActionManager* GetActionManager() override { return &actions_; }
    IMenuManager* GetMenuManager() override { return &menus_; }

private:
    class View final : public ViewExp {
    public:
        ViewExp* ToPointer() override;
    };

    void load_menu_file();

    StrictRules strict_ = strict_rules_of_environment();
    MemoryLayers layers_;
    std::vector<std::unique_ptr<MemoryNode>> nodes_;  // the root first
    std::vector<std::unique_ptr<MtlBase>> materials_;
    MemoryBitmapManager bitmaps_;
    SceneEvents events_;
    MemoryActionManager actions_;
    MemoryMenuManager menus_{actions_};
    Notifications notifications_;
    ScriptRunner scripts_;
    TimeValue evaluated_at_ = TIME_NegInfinity;
    std::uint64_t time_changes_ = 0;
    std::uint64_t evaluations_ = 0;
    std::uint64_t transform_version_ = 1;  // a node that was never evaluated has 0
    View view_;
    TimeValue time_ = 0;
    int times_set_ = 0;
    int ticks_per_frame_ = kDefaultTicksPerFrame;
    Interval animation_range_{0, 100 * kDefaultTicksPerFrame};
    int unit_type_ = UNITS_INCHES;
    float unit_scale_ = 1.0f;
    std::map<MaxSDK::AssetManagement::AssetType, std::vector<std::wstring>> asset_folders_;
    std::wstring config_folder_;
    std::wstring save_path_;
    std::vector<std::wstring> save_dialog_;
    ProgressRecord progress_;
    std::function<void(int, const std::wstring&)> on_progress_;
    std::function<void(TimeValue)> on_time_;
    std::atomic<bool> cancel_{false};
    bool cancel_at_update_ = false;  // the cancel as the last update of the progress bar found it
    int polls_before_cancel_ = 0;    // 0 if no cancel is planned
    int answered_cancels_ = 0;

    static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets the cancel flag");
};

}  // namespace memhost
