#pragma once

#include <map>
#include <string>
#include <utility>

#include "standins/host/sdk/max.h"

namespace memhost {

/// An action of any table.
class MemoryAction final : public ActionItem {
public:
    MemoryAction(ActionTableId table, int command, std::wstring text)
        : table_(table), command_(command), text_(std::move(text)) {}

    ActionTableId table() const { return table_; }
    int command() const { return command_; }
    /// What a menu shows.
    const std::wstring& text() const { return text_; }

private:
    ActionTableId table_;
    int command_;
    std::wstring text_;
};

/// The actions that plug-ins bring, and who carries them out.
class MemoryActionManager final : public IActionManager {
public:
    /// Takes up the tables of a plug-in's class, as the host does once it has loaded the plug-in.
    /// They are the plug-in's own, and have to outlive the host.
    void add_tables(ClassDesc& plugin_class);

    /// What a menu item and a key do. False if nobody has activated the action's table, or
    /// whoever has declines.
    bool execute(const MemoryAction& action);

    /// How often the table was activated.
    int activations(ActionTableId id) const;

    int ActivateActionTable(ActionCallback* callback, ActionTableId id) override;
    ActionTable* FindTable(ActionTableId id) override;
    BOOL RegisterActionContext(ActionContextId id, const MCHAR* name) override;

private:
    struct Activation {
        ActionCallback* callback = nullptr;
        int count = 0;
    };

    std::map<ActionTableId, ActionTable*> tables_;
    std::map<ActionTableId, Activation> activations_;
    std::map<ActionContextId, std::wstring> contexts_;
};

}  // namespace memhost
