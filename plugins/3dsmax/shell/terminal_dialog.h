#pragma once

#include <iosfwd>

#include "plugins/3dsmax/export/options.h"

/// The settings dialog where there are no windows: asks for one setting after the other. An empty
/// line keeps what is shown, a line that means nothing is asked for again, and the end of the input
/// cancels.
///
/// As in a window, the radius multiplier is given by the position of a trackbar that starts in its
/// middle, and a position is taken over at once; the flags are only once all is answered. True if
/// that came about. Saves nothing.
bool AskForOptions(Qor::Options& options, std::istream& in, std::ostream& out);
