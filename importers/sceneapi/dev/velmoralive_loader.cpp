#include "importers/sceneapi/dev/velmoralive_loader.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "importers/sceneapi/dev/installation.h"
#include "importers/sceneapi/dev/log.h"
#include "platform/dynamic_library.h"
#include "platform/files.h"

namespace {

using live_library::Root;

class VelmoraLiveLoader {
public:
    bool open(int min_version, int max_version);
    Root& root() const { return *root_; }

private:
    std::optional<platform::DynamicLibrary> handle_;
    std::unique_ptr<Root> root_;  // made by the library, so destroyed first
};

// The only instance; null while the library isn't open. If nobody unloads it, it is never
// destroyed: the library may already be gone when statics are destroyed.
VelmoraLiveLoader* loader = nullptr;

// The library is in the installation or, for a renderer under development, in the working folder.
std::optional<platform::DynamicLibrary> open_library(const std::string& folder, int version) {
    const std::string base = version >= 6 ? "qorvelmoralive6_" : "qorvelmoralive";
    for (const std::string& place : {folder, std::string(".")}) {
        for (const char* ending : {"32.so", "64.so"}) {
            std::optional<platform::DynamicLibrary> library =
                platform::DynamicLibrary::open(place + platform::kSeparator + base + ending);
            if (library) {
                return library;
            }
        }
    }
    return std::nullopt;
}

bool VelmoraLiveLoader::open(int min_version, int max_version) {
    int version = 0;
    const std::string folder =
        qor::Installation::get().bin_folder(min_version, max_version, version);
    if (folder.empty()) {
        return false;
    }
    QOR_LOG(qor::kLogDebug4) << folder;

    handle_ = open_library(folder, version);
    if (!handle_) {
        QOR_LOG(qor::kLogWarning) << "NO shared handle";
        return false;
    }
    QOR_LOG(qor::kLogDebug4) << "initialize shared handle: " << handle_->handle();

    const auto initialize =
        reinterpret_cast<live_library::Initialize*>(handle_->find(live_library::kInitialize));
    root_.reset(initialize != nullptr ? initialize() : nullptr);
    QOR_LOG(qor::kLogDebug4) << "Velmora live: " << static_cast<const void*>(root_.get());
    return root_ != nullptr;
}

// Null if the library can't be opened.
Root* open_root(int min_version, int max_version) {
    if (loader == nullptr) {
        auto opened = std::make_unique<VelmoraLiveLoader>();
        if (!opened->open(min_version, max_version)) {
            return nullptr;
        }
        loader = opened.release();
    }
    return &loader->root();
}

}  // namespace

qorScene_api* qor_get_scene_api(int min_version, int max_version) {
    Root* root = open_root(min_version, max_version);
    return root != nullptr ? root->get_scene_api(min_version, max_version) : nullptr;
}

live_library::QueryApi* qor_get_query_api(int min_version, int max_version) {
    Root* root = open_root(min_version, max_version);
    QOR_LOG(qor::kLogDebug4) << "qor_get_query_api -> velmora_live_loader: "
                             << static_cast<const void*>(loader);
    return root != nullptr ? root->get_query_api(min_version, max_version) : nullptr;
}

void unload() {
    delete std::exchange(loader, nullptr);
}
