#include <CLI/CLI.hpp>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "tools/vsqinfo/display_text.h"
#include "tools/vsqpicture/picture_commands.h"
#include "tools/vsqpicture/picture_session.h"

namespace {

struct Arguments {
    std::vector<std::string> scenes;
    std::string out;
    std::string size = "640x360";
    std::string ids;
    bool commands = false;
    bool sheet = false;
    vsqpicture::PictureRequest request;
};

// Both numbers of "640x360". False if they aren't two positive numbers.
bool read_size(const std::string& text, int& width, int& height) {
    constexpr int kLargest = 16384;
    int end = 0;
    return std::sscanf(text.c_str(), "%dx%d%n", &width, &height, &end) == 2 &&
           static_cast<std::size_t>(end) == text.size() && width > 0 && height > 0 &&
           width <= kLargest && height <= kLargest;
}

void write_text_file(const std::string& path, const std::string& text) {
    std::ofstream stream(std::filesystem::u8path(path), std::ios::binary);
    stream << text;
    stream.close();
    if (!stream) {
        throw std::runtime_error(path + ": the names can't be written");
    }
}

void draw_file(const Arguments& arguments) {
    vsqpicture::SceneBuilder builder;
    for (const std::string& scene : arguments.scenes) {
        try {
            builder.add(scene);
        } catch (const std::exception& error) {
            throw std::runtime_error(vsqinfo::display_text(scene) + ": " + error.what());
        }
    }
    const std::string title =
        std::filesystem::u8path(arguments.scenes.front()).filename().u8string();
    const vsqpicture::Picture picture = vsqpicture::draw(builder.scene(), title, arguments.request);
    for (const std::string& note : picture.notes) {
        std::cerr << "vsqpicture: not drawn: " << note << '\n';
    }
    vsqpicture::write_png(picture.image, arguments.out);
    if (!arguments.ids.empty()) {
        write_text_file(arguments.ids, picture.ids);
    }
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Draws what a scene file shows.", "vsqpicture");
    app.set_version_flag("--version", "vsqpicture " VSQ_VERSION);
    Arguments arguments;
    vsqpicture::PictureRequest& request = arguments.request;
    std::vector<std::string> files;
    app.add_option("FILES", files,
                   "Scene file, further files that change it, and the picture to write (.png)");
    app.add_option("--camera", request.camera,
                   "Name of the camera; by default the first one, or a view of the whole scene");
    app.add_option("--view", request.view, "Show the whole scene without perspective")
        ->check(CLI::IsMember({"front", "right", "top", "iso", "all"}));
    app.add_option("--size", arguments.size, "Width and height in pixels")->capture_default_str();
    app.add_option("--samples", request.options.samples, "Samples for each pixel")
        ->check(CLI::Range(1, 65536))
        ->capture_default_str();
    app.add_option("--frame", request.frame, "Frame, counted from the first of the range");
    app.add_option("--seed", request.options.seed, "Start of the random numbers");
    app.add_option("--threads", request.options.threads, "Threads; 0 is one for each core");
    app.add_option("--exposure", request.options.exposure,
                   "Stops from 1 candela per square metre as white; by default automatic");
    app.add_option("--ids", arguments.ids,
                   "Draw each object in a colour of its own, and write the names to this file");
    app.add_flag("--transparent", request.options.transparent,
                 "Leave pixels clear where nothing is");
    app.add_flag("--sheet", arguments.sheet, "Put the pictures FILES side by side in the last one");
    app.add_flag("--commands", arguments.commands, "Read commands as JSON, one on each line");
    try {
        app.parse(argc, argv);
        if (!arguments.commands && files.size() < 2) {
            throw CLI::ValidationError("FILES", "a scene and a picture are needed");
        }
        if (!read_size(arguments.size, request.options.width, request.options.height)) {
            throw CLI::ValidationError("--size", "'" + arguments.size + "' isn't like 640x360");
        }
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }
    if (arguments.commands) {
        vsqpicture::run_commands(std::cin, std::cout);
        return 0;
    }
    arguments.out = files.back();
    files.pop_back();
    arguments.scenes = files;
    request.ids = !arguments.ids.empty();
    try {
        if (arguments.sheet) {
            vsqpicture::write_png(vsqpicture::contact_sheet(files), arguments.out);
        } else {
            draw_file(arguments);
        }
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "vsqpicture: " << error.what() << '\n';
        return 1;
    }
}
