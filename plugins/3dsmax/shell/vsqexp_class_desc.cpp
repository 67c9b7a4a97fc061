#include "plugins/3dsmax/shell/vsqexp_class_desc.h"

#include <iterator>

#include "plugins/3dsmax/shell/menu_actions.h"
#include "plugins/3dsmax/shell/string_resources.h"
#include "plugins/3dsmax/shell/vsqexp.h"

namespace {

ActionTable* make_action_table(MSTR& name) {
    // The 0 means no category.
    ActionDescription descriptions[std::size(kMenuActions)];
    for (std::size_t i = 0; i < std::size(kMenuActions); ++i) {
        const MenuAction& action = kMenuActions[i];
        descriptions[i] = {action.command_id, action.text_id, action.text_id, 0};
    }
    return new ActionTable(kActionTableId, kActionContextId, name, nullptr,
                           static_cast<int>(std::size(descriptions)), descriptions, module_handle);
}

}  // namespace

void* VSQExpClassDesc::Create(BOOL) {
    return new VSQExp;
}

const MCHAR* VSQExpClassDesc::ClassName() {
    return LoadStringResource(IDS_CLASS_NAME);
}

const MCHAR* VSQExpClassDesc::NonLocalizedClassName() {
    return LoadStringResource(IDS_CLASS_NAME);
}

const MCHAR* VSQExpClassDesc::Category() {
    return LoadStringResource(IDS_CATEGORY);
}

ActionTable* VSQExpClassDesc::GetActionTable(int) {
    if (action_table_ == nullptr) {
        MSTR name(LoadStringResource(IDS_MENU_TITLE));
        action_table_ = make_action_table(name);
        GetCOREInterface()->GetActionManager()->RegisterActionContext(kActionContextId,
                                                                      name.data());
    }
    return action_table_;
}

VSQExpClassDesc* GetVSQExpClassDesc() {
    static VSQExpClassDesc description;
    return &description;
}
