#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <memory>
#include <string>

#include "importers/sceneapi/dev/light_factory.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "plugins/3dsmax/export/frame_render_script.h"
#include "plugins/3dsmax/export/light_converter.h"
#include "plugins/3dsmax/export/scene_exporter.h"

namespace {

constexpr std::size_t kEndingLength = 4;  // of ".vsq"

std::string WithoutEnding(const std::string& path) {
    return path.substr(0, path.size() - std::min(path.size(), kEndingLength));
}

// "shot" becomes "shot0007.vsq". Numbers above 9999 have more digits.
std::string FramePath(const std::string& base, int number) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%04d", number);
    return base + digits + ".vsq";
}

}  // namespace

// Writes each frame as a scene file of its own, and a script that renders these files in turn.
void SceneExporter::ExportAnimation(const std::string& path) {
    const std::string base = WithoutEnding(path);
    const int last_frame = timing_.LastFrame();
    if (!WriteFrameRenderScript(base, last_frame)) {
        NotesOf(nullptr).add(Note::kFrameScriptNotWritten, {}, base + ".py");
    }

    // Each file is a still. The user's settings keep these values for later commands.
    options_->CameraAnimations = false;
    options_->TransformAnimations = false;

    // The progress bar runs once over all frames.
    const std::uint64_t frames = static_cast<std::uint64_t>(std::max(last_frame, 0)) + 1;
    node_count_ = static_cast<std::uint32_t>(
        std::min<std::uint64_t>(frames * node_count_, std::numeric_limits<std::uint32_t>::max()));

    int number = 0;
    for (const TimeValue t : timing_.Times()) {
        if (host_->GetCancel()) {
            NoteCancel(std::to_string(number) + " frames were reached");
            break;
        }
        ExportFrame(t, FramePath(base, number));
        ++number;
    }
}

void SceneExporter::ExportFrame(TimeValue t, const std::string& path) {
    host_->SetTime(t, TRUE);
    lights_ = std::make_unique<LightConverter>(options_, host_, notes_);
    timing_.time = t;
    OpenFile(path);
    const bool is_first = t == timing_.rangeStart;
    ExportPass(is_first, is_first, 0);
    CloseFile();
}
