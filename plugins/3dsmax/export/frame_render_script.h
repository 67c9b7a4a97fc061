#pragma once

#include <string>

/// Writes a script that the user can run in the renderer to render the frames of an exported
/// animation. `base` is the path of the frames without number and extension, in UTF-8; the script's
/// path is `base` + ".py". `frames` is the number of the last frame, counted from 0. The script
/// starts at frame 1, so this is also how many frames it renders. False if the file can't be
/// written completely.
bool WriteFrameRenderScript(const std::string& base, int frames);
