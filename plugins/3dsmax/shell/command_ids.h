#pragma once

/// The ids of the menu's commands in the action table.
constexpr int kRenderCommand = 1035;
constexpr int kUpdateCommand = 1036;
constexpr int kSettingsCommand = 1037;
constexpr int kExportCommand = 1038;
constexpr int kExportAnimationCommand = 1040;
