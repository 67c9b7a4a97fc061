#include "tools/vsqexport/plugin_library.h"

#include <stdexcept>

namespace vsqexport {

PluginLibrary::PluginLibrary(const std::string& path_utf8) : path_(path_utf8) {
    std::string reason;
    library_ = platform::DynamicLibrary::open(path_, &reason);
    if (!library_) {
        // The system's reason may already name the library.
        const bool names_it = reason.rfind(path_, 0) == 0;
        throw std::runtime_error(names_it ? reason : path_ + ": " + reason);
    }

    const auto version = find_function<ULONG()>("LibVersion");
    if (version() != VERSION_3DSMAX) {
        throw std::runtime_error(path_ + ": it was made for another release of the host");
    }
    const auto count = find_function<int()>("LibNumberClasses");
    const auto class_desc = find_function<ClassDesc*(int)>("LibClassDesc");
    class_desc_ = count() > 0 ? class_desc(0) : nullptr;
    if (class_desc_ == nullptr || class_desc_->SuperClassID() != GUP_CLASS_ID) {
        throw std::runtime_error(path_ + ": it holds no utility that the host could start");
    }
}

template <typename Function>
Function* PluginLibrary::find_function(const char* name) const {
    void* const found = library_->find(name);
    if (found == nullptr) {
        throw std::runtime_error(path_ + ": it is not a plug-in, it has no " + name);
    }
    return reinterpret_cast<Function*>(found);
}

}  // namespace vsqexport
