#pragma once

#include <optional>
#include <string>

namespace platform {

/// A library that is opened at run time and stays open as long as the object lives.
class DynamicLibrary {
public:
    /// Opens a library whose path may use "\\" as the separator on every system. Returns nullopt if
    /// it doesn't exist or can't be loaded. `reason`, unless it is null, then gets the system's
    /// reason in one line, which may begin with the path.
    static std::optional<DynamicLibrary> open(const std::string& path_utf8,
                                              std::string* reason = nullptr);

    DynamicLibrary(DynamicLibrary&& other) noexcept;
    DynamicLibrary& operator=(DynamicLibrary&& other) noexcept;
    ~DynamicLibrary();

    /// The address of an exported function, or null.
    void* find(const char* name) const;

    /// The system's own handle, for messages.
    void* handle() const { return handle_; }

private:
    explicit DynamicLibrary(void* handle) : handle_(handle) {}

    void* handle_;
};

}  // namespace platform
