#include <exception>
#include <string>
#include <utility>

#include "platform/message_box.h"
#include "plugins/3dsmax/export/scene_exporter.h"
#include "plugins/3dsmax/shell/callback.h"
#include "plugins/3dsmax/shell/command_ids.h"
#include "plugins/3dsmax/shell/report_delivery.h"

namespace {

// Shows the host's progress bar and removes it on every way out. If the host shows no bar, because
// one is already open, none is removed.
class ProgressShown {
public:
    explicit ProgressShown(Interface* host)
        : host_(host),
          is_shown_(host->ProgressStart(
              L"Export VSQ File.", TRUE, [](LPVOID) -> DWORD { return 0; }, nullptr)) {}
    ProgressShown(const ProgressShown&) = delete;
    ProgressShown& operator=(const ProgressShown&) = delete;
    ~ProgressShown() {
        if (is_shown_) {
            host_->ProgressEnd();
        }
    }

private:
    Interface* host_;
    bool is_shown_;
};

// Asks the user for a file; false if the user cancels. The path is UTF-8.
bool ask_for_path(Interface* host, std::string& path) {
    MSTR title(L"Vsq Export");
    MSTR filename;
    MSTR initial_dir;
    FilterList filters;
    filters.Append(L"Velmora Vsq(*.vsq)");
    filters.Append(L"*.vsq");
    if (!GetCOREInterface8()->DoMaxSaveAsDialog(host->GetMAXHWnd(), title, filename, initial_dir,
                                                filters)) {
        return false;
    }
    const auto utf8 = filename.ToUTF8();
    path = utf8.data();
    return true;
}

}  // namespace

struct Callback::ExportingCommand {
    int id;
    const char* name;  // in the report
    bool update;
    bool to_file;
    bool animation;
};

Callback::Callback(Interface* host, std::shared_ptr<Qor::Options> options)
    : host_(host), options_(std::move(options)) {}

BOOL Callback::ExecuteAction(int id) {
    try {
        CarryOut(id);
    } catch (const std::exception& failure) {
        platform::show_message_box(host_->GetMAXHWnd(), failure.what(), "Error",
                                   platform::kMessageBoxError);
    } catch (...) {
        platform::show_message_box(host_->GetMAXHWnd(), "The command failed for an unknown reason.",
                                   "Error", platform::kMessageBoxError);
    }
    return TRUE;
}

void Callback::CarryOut(int id) {
    if (id == kSettingsCommand) {
        options_->ShowDialog();
        return;
    }
    constexpr ExportingCommand kExportingCommands[] = {
        {kRenderCommand, "render", false, false, false},
        {kUpdateCommand, "update", true, false, false},
        {kExportCommand, "export", false, true, false},
        {kExportAnimationCommand, "animation", false, true, true},
    };
    for (const ExportingCommand& command : kExportingCommands) {
        if (command.id == id) {
            Export(command);
            return;
        }
    }
}

// An exception keeps the changed nodes, since they haven't been sent.
void Callback::Export(const ExportingCommand& command) {
    std::string path;
    if (command.to_file && !ask_for_path(host_, path)) {
        return;
    }
    ExportNotes notes;
    const ReportDelivery at_the_end(notes, command.name);
    try {
        RunExporter(command, path, notes);
    } catch (const std::exception& failure) {
        notes.add(Note::kExportFailed, nullptr, failure.what(), path);
        throw;
    } catch (...) {
        notes.add(Note::kExportFailed, nullptr, "unknown reason", path);
        throw;
    }
    changedNodes_.clear();
}

void Callback::RunExporter(const ExportingCommand& command, const std::string& path,
                           ExportNotes& notes) {
    SceneExporter exporter(host_, host_->GetRootNode(), options_, changedNodes_, &notes);
    const ProgressShown progress(host_);
    exporter.Run(path, command.update, command.to_file, command.animation);
}
