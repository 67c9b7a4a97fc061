#pragma once

#include <cstdlib>
#include <string>

#ifdef _WIN32
#include <windows.h>

#include "platform/wide_text.h"
#endif

/// Sets a variable of this process and of those that it starts, and returns the previous value. An
/// empty value means that the variable isn't set.
inline std::string set_environment(const std::string& name, const std::string& value) {
#ifdef _WIN32
    const std::wstring wide_name = platform::wide_from_utf8(name);
    std::wstring before(32767, L'\0');
    before.resize(GetEnvironmentVariableW(wide_name.c_str(), before.data(), 32767));
    SetEnvironmentVariableW(wide_name.c_str(),
                            value.empty() ? nullptr : platform::wide_from_utf8(value).c_str());
    return platform::utf8_from_wide(before);
#else
    const char* const set = std::getenv(name.c_str());
    const std::string before = set != nullptr ? set : "";
    value.empty() ? unsetenv(name.c_str()) : setenv(name.c_str(), value.c_str(), 1);
    return before;
#endif
}

/// Gives a variable another value during the object's lifetime.
class EnvironmentVariable {
public:
    EnvironmentVariable(const std::string& name, const std::string& value)
        : name_(name), before_(set_environment(name, value)) {}
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
    ~EnvironmentVariable() { set_environment(name_, before_); }

private:
    std::string name_;
    std::string before_;
};
