#pragma once

#include <istream>
#include <ostream>

namespace vsqpicture {

/// Carries out commands, one JSON object a line, and answers each with one line:
///
///     {"import": "shot0000.vsq"}             a new scene
///     {"merge": "shot0001.vsq"}              what a file changes
///     {"camera": "Camera01"}                 of the pictures that follow; "" is the first one
///     {"picture": "a.png", "width": 96, "height": 64, "samples": 16, "frame": 0}
///     {"sheet": "all.png", "pictures": ["a.png", "b.png"]}
///
/// The answer is {"ok": true}, with "notes" if something couldn't be drawn and "cameras" after a
/// file was read, or {"ok": false, "error": "..."}. Returns at the end of the input.
void run_commands(std::istream& in, std::ostream& out);

}  // namespace vsqpicture
