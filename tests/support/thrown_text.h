#pragma once

#include <stdexcept>
#include <string>

/// What an action throws says, or "" if it throws nothing.
template <typename Exception = std::runtime_error, typename Action>
std::string thrown_text(const Action& action) {
    try {
        action();
        return "";
    } catch (const Exception& error) {
        return error.what();
    }
}
