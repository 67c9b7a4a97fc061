#pragma once

#include <optional>
#include <string>

#include "platform/dynamic_library.h"
#include "standins/host/sdk/max.h"

namespace vsqexport {

/// A plug-in's library, loaded and checked as by the host. It is unloaded with the object.
class PluginLibrary {
public:
    /// Throws `std::runtime_error` with one line if the library can't be loaded, isn't a plug-in
    /// for the host, or was made for another release of it.
    explicit PluginLibrary(const std::string& path_utf8);

    /// The first class in the library, which owns it.
    ClassDesc& class_desc() const { return *class_desc_; }

private:
    template <typename Function>
    Function* find_function(const char* name) const;

    std::string path_;
    std::optional<platform::DynamicLibrary> library_;
    ClassDesc* class_desc_ = nullptr;
};

}  // namespace vsqexport
