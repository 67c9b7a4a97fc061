#pragma once

#include <string>

#include "standins/host/sdk/max.h"

namespace app {

/// A plug-in's library, found and checked as the host does it. It stays loaded until the process
/// ends, as in the host.
class PluginLibrary {
public:
    /// Throws `std::runtime_error` with one line if there is no such library, if it isn't one of
    /// the host's, or if it was made for another release.
    explicit PluginLibrary(const std::string& path_utf8);

    /// The first class in it.
    ClassDesc& class_desc() const { return *class_desc_; }

private:
    template <typename Function>
    Function* find_function(const char* name) const;

    std::string path_;
    void* handle_;
    ClassDesc* class_desc_ = nullptr;
};

/// The folder of the program that runs, as UTF-8.
std::string own_folder();

/// The system's own part of loading: null on failure, with the reason in `reason`.
void* load_library(const std::string& path_utf8, std::string& reason);
void* find_in_library(void* library, const char* name);

}  // namespace app
