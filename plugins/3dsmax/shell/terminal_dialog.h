#pragma once

#include <iosfwd>

#include "plugins/3dsmax/export/options.h"

/// The settings dialog on systems without windows. It asks for one setting after another. An empty
/// line keeps the value shown, an invalid line repeats the question, and the end of the input
/// cancels.
///
/// As in the window, a trackbar position that starts in the middle sets the radius multiplier. The
/// multiplier changes at once, the flags only when all questions have been answered. Returns true
/// in that case. Saves nothing.
bool AskForOptions(Qor::Options& options, std::istream& in, std::ostream& out);
