#pragma once

#include "plugins/3dsmax/export/host.h"
#include "plugins/3dsmax/shell/command_ids.h"
#include "plugins/3dsmax/shell/resources.h"

constexpr ActionTableId kActionTableId = 0x7BAC66B7;
constexpr ActionContextId kActionContextId = 0x63812122;
constexpr auto kMenuContextId = static_cast<MenuContextId>(0x8B8F7707);

struct MenuAction {
    int command_id;
    int text_id;
};

/// The commands, in the order of both the action table and the menu.
constexpr MenuAction kMenuActions[] = {
    {kRenderCommand, IDS_RENDER},     {kUpdateCommand, IDS_UPDATE},
    {kExportCommand, IDS_EXPORT},     {kExportAnimationCommand, IDS_EXPORT_ANIMATION},
    {kSettingsCommand, IDS_SETTINGS},
};
