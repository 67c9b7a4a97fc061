#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace platform {

/// The stop icon, as a style of `show_message_box`.
constexpr std::uint32_t kMessageBoxError = 16;

/// Tells the user something and waits until it has been read. `parent` is the window that the box
/// stands in front of, or null. Texts are UTF-8.
void show_message_box(void* parent, const std::string& text, const std::string& title,
                      std::uint32_t style);

/// A program without windows that loads others as libraries takes their boxes too: it exports a
/// function of this type under this name, and whoever in the process has no handler calls that.
using HostMessageBox = void(const char* text, const char* title, std::uint32_t style);
constexpr char kHostMessageBox[] = "vsq_host_message_box";

/// What `show_message_box` does in place of opening a window.
using MessageBoxHandler =
    std::function<void(const std::string& text, const std::string& title, std::uint32_t style)>;

/// Sets the handler for the program or library that this is linked into; an empty one takes it
/// away. Without a handler the program's exported function is called. Without that the system's own
/// box opens or, where the system has none, the text goes to standard error.
void set_message_box_handler(MessageBoxHandler handler);

}  // namespace platform
