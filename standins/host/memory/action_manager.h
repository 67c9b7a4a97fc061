#pragma once

#include <map>
#include <string>
#include <utility>

#include "standins/host/sdk/max.h"

namespace memhost {

/// An action of a plug-in's table.
class MemoryAction final : public ActionItem {
public:
    MemoryAction(ActionTableId table, int command, std::wstring text)
        : table_(table), command_(command), text_(std::move(text)) {}

    ActionTableId table() const { return table_; }
    int command() const { return command_; }
    /// The text that a menu shows.
    const std::wstring& text() const { return text_; }

private:
    ActionTableId table_;
    int command_;
    std::wstring text_;
};

/// The plug-ins' actions, and the callbacks that carry them out.
class MemoryActionManager final : public IActionManager {
public:
    /// Adds the tables of a plug-in's class, as the host does before or after it starts the
    /// plug-in. The plug-in owns the tables, which must outlive the host.
    void add_tables(ClassDesc& plugin_class);

    /// Carries out an action, as a menu item or a key does. False if the action's table has no
    /// active callback, or if the callback declines.
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
