#include "platform/message_box.h"

#include <utility>

#include "platform/host_function.h"
#include "platform/native_message_box.h"

namespace platform {

namespace {

MessageBoxHandler& handler() {
    static MessageBoxHandler the_handler;
    return the_handler;
}

}  // namespace

void show_message_box(void* parent, const std::string& text, const std::string& title,
                      std::uint32_t style) {
    if (handler()) {
        handler()(text, title, style);
    } else if (auto* show =
                   reinterpret_cast<HostMessageBox*>(find_host_function(kHostMessageBox))) {
        show(text.c_str(), title.c_str(), style);
    } else {
        show_native_message_box(parent, text, title, style);
    }
}

void set_message_box_handler(MessageBoxHandler new_handler) {
    handler() = std::move(new_handler);
}

}  // namespace platform
