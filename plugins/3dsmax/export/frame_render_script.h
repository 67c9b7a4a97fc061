#pragma once

#include <string>

/// Writes the script that renders the frames of an exported animation, for the user to run in the
/// renderer. `base` is the path of the frames without number and ending, UTF-8; the script's own is
/// that with ".py". `frames` is the number of the last frame, counted from 0, and so how many the
/// script renders: it starts at 1. Does nothing if the file can't be written.
void WriteFrameRenderScript(const std::string& base, int frames);
