#pragma once

#include <optional>
#include <string>

#include "platform/dynamic_library.h"
#include "standins/host/sdk/max.h"

namespace vsqexport {

/// A plug-in's library, found and checked as the host does it. It stays loaded while this lives.
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
    std::optional<platform::DynamicLibrary> library_;
    ClassDesc* class_desc_ = nullptr;
};

}  // namespace vsqexport
