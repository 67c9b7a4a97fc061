#include "standins/host/memory/action_manager.h"

#include "standins/host/memory/module_strings.h"
#include "standins/host/memory/strict_rules.h"

namespace memhost {

void MemoryActionManager::add_tables(ClassDesc& plugin_class) {
    for (int i = 0; i < plugin_class.NumActionTables(); ++i) {
        if (ActionTable* table = plugin_class.GetActionTable(i)) {
            tables_[table->GetId()] = table;
        }
    }
}

bool MemoryActionManager::execute(const MemoryAction& action) {
    const auto found = activations_.find(action.table());
    return found != activations_.end() && found->second.callback->ExecuteAction(action.command());
}

int MemoryActionManager::activations(ActionTableId id) const {
    const auto found = activations_.find(id);
    return found == activations_.end() ? 0 : found->second.count;
}

int MemoryActionManager::ActivateActionTable(ActionCallback* callback, ActionTableId id) {
    if (tables_.count(id) == 0 || callback == nullptr) {
        return FALSE;
    }
    Activation& activation = activations_[id];
    activation.callback = callback;
    ++activation.count;
    return TRUE;
}

ActionTable* MemoryActionManager::FindTable(ActionTableId id) {
    const auto found = tables_.find(id);
    const bool finds = found != tables_.end() && !host_obeys(StrictRule::kFindTableNull);
    return finds ? found->second : nullptr;
}

BOOL MemoryActionManager::RegisterActionContext(ActionContextId id, const MCHAR* name) {
    return contexts_.emplace(id, name).second;
}

}  // namespace memhost

ActionTable::ActionTable(ActionTableId id, ActionContextId, MSTR&, HACCEL, int count,
                         ActionDescription* descriptions, HINSTANCE module)
    : id_(id) {
    for (int i = 0; i < count; ++i) {
        const ActionDescription& description = descriptions[i];
        items_[description.mCmdID] = std::make_unique<memhost::MemoryAction>(
            id, description.mCmdID,
            memhost::module_string(module, static_cast<UINT>(description.mShortNameResourceID)));
    }
}

ActionTable::~ActionTable() = default;

ActionItem* ActionTable::GetAction(int command_id) {
    const auto found = items_.find(command_id);
    return found == items_.end() ? nullptr : found->second.get();
}
