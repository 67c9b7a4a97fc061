#include "standins/host/app/export_command.h"

#include <exception>

#include "platform/message_box.h"
#include "plugins/3dsmax/export/scene_exporter.h"

namespace app {

namespace {

// Takes the bar down on every way out.
class ProgressShown {
public:
    explicit ProgressShown(Interface* host) : host_(host) {
        host_->ProgressStart(
            L"Exporting", TRUE, [](LPVOID) -> DWORD { return 0; }, nullptr);
    }
    ProgressShown(const ProgressShown&) = delete;
    ProgressShown& operator=(const ProgressShown&) = delete;
    ~ProgressShown() { host_->ProgressEnd(); }

private:
    Interface* host_;
};

}  // namespace

bool run_export_command(Interface* host, const std::shared_ptr<Qor::Options>& options,
                        const std::string& path) {
    const ProgressShown progress(host);
    try {
        SceneExporter exporter(host, host->GetRootNode(), options, {});
        return exporter.Run(path, false, true, false);
    } catch (const std::exception& failure) {
        platform::show_message_box(host->GetMAXHWnd(), failure.what(), "Error",
                                   platform::kMessageBoxError);
        return false;
    }
}

}  // namespace app
