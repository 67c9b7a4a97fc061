#pragma once

namespace vsqexport {

/// True if standard input comes from a terminal, where a person types.
bool input_is_terminal();

/// True if standard error goes to a terminal, where a person reads.
bool error_output_is_terminal();

}  // namespace vsqexport
