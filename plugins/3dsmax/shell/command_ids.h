#pragma once

/// The menu's commands, by the ids of their actions.
constexpr int kRenderCommand = 1035;
constexpr int kUpdateCommand = 1036;
constexpr int kSettingsCommand = 1037;
constexpr int kExportCommand = 1038;
constexpr int kExportAnimationCommand = 1040;
