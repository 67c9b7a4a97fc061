#pragma once

#include <functional>
#include <memory>
#include <string>

#include "tools/vsqexport/word_completion.h"

namespace vsqexport {

/// Asks a person for lines that can be edited, with the lines of earlier sessions to go back to.
class LineEditor {
public:
    LineEditor() = default;
    LineEditor(const LineEditor&) = delete;
    LineEditor& operator=(const LineEditor&) = delete;
    virtual ~LineEditor() = default;

    /// Reads a line, without its line feed. False at the end of the input.
    virtual bool read(std::string& line) = 0;
};

/// Completes the part of a line that is left of the cursor.
using Completer = std::function<Completion(const std::string& line)>;

/// Returns null if lines can't be edited on this system, or if there is no terminal.
std::unique_ptr<LineEditor> open_line_editor(const char* prompt, Completer completer);

}  // namespace vsqexport
