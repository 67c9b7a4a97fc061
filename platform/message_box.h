#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace platform {

/// The style of `show_message_box` that shows a stop icon.
constexpr std::uint32_t kMessageBoxError = 16;

/// Shows a message and waits until the user closes it. `parent` is the window that owns the message
/// box, or null. Texts are UTF-8.
void show_message_box(void* parent, const std::string& text, const std::string& title,
                      std::uint32_t style);

/// A program without windows can take over the message boxes of the libraries that it loads: it
/// exports a function of this type under this name. Every library in the process without its own
/// handler calls that function.
using HostMessageBox = void(const char* text, const char* title, std::uint32_t style);
constexpr char kHostMessageBox[] = "vsq_host_message_box";

/// Called by `show_message_box` instead of opening a window.
using MessageBoxHandler =
    std::function<void(const std::string& text, const std::string& title, std::uint32_t style)>;

/// Sets the handler for the program or library that this code is linked into; an empty handler
/// removes it. Without a handler, the program's exported function is called. If there is none, the
/// system's own message box opens; a system that has none prints the text to standard error.
void set_message_box_handler(MessageBoxHandler handler);

}  // namespace platform
