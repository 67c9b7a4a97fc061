#include "plugins/3dsmax/export/frame_render_script.h"

#include <algorithm>
#include <cstdio>
#include <memory>

#include "platform/files.h"

namespace {

// The script in four pieces: up to the number of the last frame, up to the path of a scene file, up
// to the path of an image, and the rest.

constexpr char kUpToLastFrame[] =
    R"script(import os
def cleanExt(ext):
    while ext.startswith("."):
        ext = ext[1:]
    return ext
def main():
    values = [("oext", qor.DIALOG_TEXT, "Output image format:", "png"),
              ("width", qor.DIALOG_INTEGER, "Render width:", 500, (1, 10000)),
              ("height", qor.DIALOG_INTEGER, "Render height:", 500, (1, 10000)),
              ("max_samples", qor.DIALOG_INTEGER, "Max Render Samples:", 32, (0, 10000)),
              ("max_time", qor.DIALOG_INTEGER, "Max Render Time (Seconds):", 0, (0, 100000)),
              ("cam", qor.DIALOG_TEXT, "Use camera. Leave blank for current:", qor.getCamera())]
    opts = qor.getInputDialog(title = "Render 3ds max frames",
                              desc = "",
                              values = values)
    if not opts: return
    if len(opts["oext"]) == 0:
        raise Exception("Output extension cannot be empty!")
    oext = cleanExt(opts["oext"])
    if opts["max_samples"] == 0 and opts["max_time"] == 0:
      raise Exception("Use either max samples or max time!")
    if opts["max_samples"] != 0 and opts["max_time"] != 0:
      raise Exception("Use either max samples or max time!")
    start = 1
    end = )script";

constexpr char kUpToScenePath[] =
    R"script(
    cam = opts["cam"]
    io = qor.getImportOptions()
    io['adjust_camera_look_at'] = False
    io['adjust_environment'] = False
    io['import_type'] = 1
    io['merge'] = True
    io['camera_import'] = True
    io['new_import'] = False
    ro = qor.getRenderOptions()
    ro.setAddToQueue(True)
    if opts["max_samples"] > 0:
      ro.setMaxSamplesRendering(opts["max_samples"])
    if opts["max_time"] > 0:
      ro.setMaxTimeRendering(opts["max_time"])
    for i in range (start, end+1):
        path = ")script";

constexpr char kUpToImagePath[] =
    R"script(" + str(i).zfill(4) + ".vsq"
        print("Importing {}".format(path))
        if not qor.importFile(path, False, True, io):
          raise Exception("Error in import! User cancelled?")
        if len(cam) != 0:
          qor.setCamera(cam)
        qor.setAnimationFrame(i)
        path = ")script";

constexpr char kRest[] =
    R"script(" + str(i).zfill(5) + "." + oext
        print("Rendering {}".format(path))
        if not qor.renderImage(path, opts["width"], opts["height"], ro):
          raise Exception("Error in Render! User cancelled?")
main()
)script";

}  // namespace

bool WriteFrameRenderScript(const std::string& base, int frames) {
    // A backslash would start an escape sequence in the script's strings.
    std::string prefix = base;
    std::replace(prefix.begin(), prefix.end(), '\\', '/');

    std::unique_ptr<std::FILE, platform::CloseStream> file(platform::open_file(base + ".py", "w"));
    if (file == nullptr) {
        return false;
    }
    const std::string script = kUpToLastFrame + std::to_string(frames) + kUpToScenePath + prefix +
                               kUpToImagePath + prefix + kRest;
    const bool is_written = std::fputs(script.c_str(), file.get()) >= 0;
    return std::fclose(file.release()) == 0 && is_written;
}
