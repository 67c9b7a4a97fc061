#pragma once

namespace vsqexport {

/// True if a person types standard input on a terminal.
bool input_is_terminal();

/// True if a person watches standard error on a terminal.
bool error_output_is_terminal();

}  // namespace vsqexport
