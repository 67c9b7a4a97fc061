#pragma once

#include <map>
#include <memory>

#include "standins/host/sdk/maxtypes.h"
#include "standins/host/sdk/strclass.h"

using ActionTableId = DWORD;
using ActionContextId = DWORD;

/// A command, with the ids of the string resources that describe it. Category 0 means none.
struct ActionDescription {
    int mCmdID;
    int mDescriptionResourceID;
    int mShortNameResourceID;
    int mCategoryResourceID;
};

/// Carries out the actions of a table.
class ActionCallback {
public:
    ActionCallback() = default;
    ActionCallback(const ActionCallback&) = delete;
    ActionCallback& operator=(const ActionCallback&) = delete;
    virtual ~ActionCallback() = default;

    virtual BOOL ExecuteAction(int) { return FALSE; }
};

/// An action of a table. Menus and keys refer to it.
class ActionItem {
public:
    ActionItem() = default;
    ActionItem(const ActionItem&) = delete;
    ActionItem& operator=(const ActionItem&) = delete;
    virtual ~ActionItem() = default;
};

/// The actions that a plug-in offers.
class ActionTable {
public:
    /// Reads the texts of the `count` descriptions from the module's string resources.
    ActionTable(ActionTableId id, ActionContextId context_id, MSTR& name, HACCEL default_keys,
                int count, ActionDescription* descriptions, HINSTANCE module);
    ActionTable(const ActionTable&) = delete;
    ActionTable& operator=(const ActionTable&) = delete;
    virtual ~ActionTable();

    ActionTableId GetId() const { return id_; }

    /// The table owns the action. Null if the table has no such command.
    ActionItem* GetAction(int command_id);

private:
    ActionTableId id_;
    std::map<int, std::unique_ptr<ActionItem>> items_;  // by command id
};

class IActionManager {
public:
    virtual ~IActionManager() = default;

    /// From now on `callback` carries out the table's actions. The caller keeps ownership of it.
    virtual int ActivateActionTable(ActionCallback* callback, ActionTableId id) = 0;
    /// Null if no plug-in has such a table.
    virtual ActionTable* FindTable(ActionTableId id) = 0;
    virtual BOOL RegisterActionContext(ActionContextId id, const MCHAR* name) = 0;
};
