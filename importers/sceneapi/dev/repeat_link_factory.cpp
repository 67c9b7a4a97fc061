#include "importers/sceneapi/dev/repeat_link_factory.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <thread>

#include "importers/sceneapi/dev/installation.h"
#include "importers/sceneapi/dev/live_library.h"
#include "importers/sceneapi/dev/log.h"
#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/scene_tree_search.h"
#include "importers/sceneapi/dev/velmoralive_loader.h"
#include "importers/sceneapi/dev/xml_nesting.h"

namespace qor {

namespace {

// The third argument of `connect`: for a port that may belong to any program, and for the port of a
// known renderer.
constexpr std::int32_t kSweepArgument = 1;
constexpr std::int32_t kKnownArgument = 4;

// Limits for the registered ports. A range far beyond them would block the host for hours.
constexpr std::int32_t kLowestPort = 1;
constexpr std::int32_t kHighestPort = 0xffff;

bool is_found(const RendererInstance& instance) {
    return instance.version_major != 0;
}

// If the log can't be written either, the failure can't be reported at all.
void log_failure(const char* step, const char* reason) noexcept {
    try {
        QOR_LOG(kLogError) << "live library: " << step << " failed: " << reason;
    } catch (...) {
    }
}

// A text that is nested too deep for the XML library counts as not given.
const char* parseable(const char* xml, const char* what) {
    if (xml == nullptr || !IsNestedTooDeep(xml)) {
        return xml;
    }
    QOR_LOG(kLogWarning) << "live library: the " << what
                         << " is ignored, since it is nested too deep";
    return nullptr;
}

// If the versions are equal, the first one stays.
void keep_newer(RendererInstance& best, const RendererInstance& candidate) {
    if (candidate.version_major > best.version_major) {
        best = candidate;
    }
}

}  // namespace

qorScene_api* RepeatLinkFactory::get_api() {
    error_.clear();
    std::string reason;
    if (api_ == nullptr && !connect(reason)) {
        error_ = "Failed to connect. " + reason;
    }
    return api_;
}

bool RepeatLinkFactory::connect(std::string& reason) {
    live_library::QueryApi* query = qor_get_query_api(min_version_, max_version_);
    if (query == nullptr) {
        reason = "Could not get a query api. Please check your Velmora installation.\n";
        return false;
    }
    return attach(find_or_launch(*query, reason), reason);
}

// Returns an empty record if no renderer could be started, or if it wasn't ready in time.
RendererInstance RepeatLinkFactory::find_or_launch(live_library::QueryApi& query,
                                                   std::string& reason) {
    RendererInstance instance = choose_instance(query);
    if (is_found(instance)) {
        return instance;
    }
    if (!Installation::get().launch(min_version_, max_version_)) {
        // Nobody sees this reason: `attach` still tries the registered ports and sets its own.
        reason = "Unabled to launch Velmora. Please check your Velmora installation.";
        return {};
    }
    for (std::uint32_t look = 1; look < retries_ && !is_found(instance); ++look) {
        instance = choose_instance(query);
        std::this_thread::sleep_for(std::chrono::milliseconds(retry_wait_ms_));
    }
    return instance;
}

RendererInstance RepeatLinkFactory::choose_instance(live_library::QueryApi& query) {
    RendererInstance best_empty;
    RendererInstance best_of_any;
    RendererInstance best_with_scene;
    for (const RendererInstance& instance : ReadInstances(
             parseable(query.instances_xml(), "list of renderers"), min_version_, max_version_)) {
        if (instance.livelink_port < 0 || !query.connect(instance.process_id)) {
            continue;
        }
        if (const char* tree = parseable(query.scene_xml(), "scene tree of a renderer")) {
            const SceneTreeFindings findings =
                SearchSceneTree(tree, scene_name_, instance.version_major);
            if (findings.is_empty) {
                keep_newer(best_empty, instance);
            }
            if (connect_any_) {
                keep_newer(best_of_any, instance);
            }
            if (findings.holds_scene) {
                keep_newer(best_with_scene, instance);
            }
        }
        query.disconnect();
    }

    found_scene_ = is_found(best_with_scene);
    if (found_scene_) {
        return best_with_scene;
    }
    return best_of_any.version_major > 0 ? best_of_any : best_empty;
}

bool RepeatLinkFactory::attach(const RendererInstance& instance, std::string& reason) {
    api_ = qor_get_scene_api(min_version_, max_version_);
    if (api_ == nullptr) {
        reason = "Could not get a scene api. Please check your Velmora installation.\n";
        return false;
    }
    api_->set_id(id_);
    const bool connected = instance.livelink_port < 1
                               ? sweep_ports()
                               : api_->connect("localhost", instance.livelink_port, kKnownArgument);
    if (!connected) {
        reason =
            "Could not connect on any known port. Please check your Velmora installation and Live "
            "Link settings.";
        api_ = nullptr;
        return false;
    }
    connected_port_ = instance.livelink_port;
    return true;
}

bool RepeatLinkFactory::sweep_ports() {
    using Status = Installation::PortStatus;
    std::int32_t first = -1;
    std::int32_t last = -1;
    const Status status =
        Installation::get().live_link_ports(kOldestRenderer, kNewestRenderer, first, last);
    if (status != Status::kBothRead && status != Status::kNoLastPort) {
        return false;
    }
    last = std::min(last, kHighestPort);
    for (std::int32_t port = std::max(first, kLowestPort); port <= last; ++port) {
        if (api_->connect("127.0.0.1", port, kSweepArgument)) {
            return true;
        }
    }
    return false;
}

// The closed-source library may throw, but that must not crash the host after a finished export.
void RepeatLinkFactory::disconnect() noexcept {
    if (api_ == nullptr) {
        return;
    }
    const auto in_library = [](const char* step, auto&& call) {
        try {
            call();
        } catch (const std::exception& failure) {
            log_failure(step, failure.what());
        } catch (...) {
            log_failure(step, "unknown reason");
        }
    };
    in_library("disconnect", [this] { api_->disconnect(); });
    in_library("unload", [] { unload(); });
    api_ = nullptr;
}

}  // namespace qor
