#pragma once

#include <stdexcept>
#include <string>

/// The text of the exception that an action throws, or "" if it throws none.
template <typename Exception = std::runtime_error, typename Action>
std::string thrown_text(const Action& action) {
    try {
        action();
        return "";
    } catch (const Exception& error) {
        return error.what();
    }
}
