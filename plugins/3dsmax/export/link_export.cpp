#include <exception>
#include <memory>
#include <string>
#include <utility>

#include "importers/sceneapi/dev/installation.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "importers/sceneapi/dev/repeat_link_factory.h"
#include "platform/message_box.h"
#include "plugins/3dsmax/export/group_flags.h"
#include "plugins/3dsmax/export/scene_exporter.h"

// Every failure to reach the renderer or to send to it shows the same message.
void SceneExporter::ExportOverLink(const std::string& path) {
    auto link = std::make_unique<qor::RepeatLinkFactory>();
    const qor::RepeatLinkFactory& link_to_ask = *link;
    link->set_min_version(qor::kSceneRenderer);
    link->set_max_version(qor::kSceneRenderer);
    link->set_scene_name(path);
    link->set_connect_any(true);
    factory_ = std::move(link);

    bool sent = false;
    try {
        sent = SendOverLink();
        if (!sent && notes_ != nullptr) {
            const std::string& error = link_to_ask.error();
            NotesOf(nullptr).add(Note::kLinkFailed,
                                 error.substr(0, error.find_last_not_of(" \n") + 1));
        }
    } catch (const std::exception& failure) {
        NoteBrokenLink(failure.what());
    } catch (...) {
        NoteBrokenLink("unknown reason");
    }
    if (!sent) {
        platform::show_message_box(
            host_->GetMAXHWnd(),
            "Could not connect to a existing Velmora instance or launch a new.", "Error",
            platform::kMessageBoxError);
    }
    scene_.reset();
    factory_.reset();
}

void SceneExporter::NoteBrokenLink(const char* reason) {
    if (notes_ != nullptr) {
        NotesOf(nullptr).add(Note::kLinkBroken,
                             std::string(reason) + "; " + std::to_string(nodes_done_) + " of " +
                                 std::to_string(node_count_) + " nodes had been sent");
    }
}

// False if no renderer can be reached.
bool SceneExporter::SendOverLink() {
    scene_ = std::make_unique<qor::qorSceneapi_oo>(*factory_);
    if (scene_->get_api() == nullptr) {
        return false;
    }
    ExportPass(!update_, true, update_ ? kLinkFlag : kLinkFlag | kWholeSceneFlag);
    return true;
}
