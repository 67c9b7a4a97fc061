#include "tools/vsqpicture/picture_commands.h"

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <utility>

#include "tools/vsqinfo/display_text.h"
#include "tools/vsqpicture/picture_session.h"

namespace vsqpicture {
namespace {

using Json = nlohmann::ordered_json;

class Commands {
public:
    Json carry_out(const Json& command) {
        Json answer = {{"ok", true}};
        if (command.contains("import")) {
            SceneBuilder imported;
            answer["cameras"] = read(imported, command.at("import"));
            builder_ = std::move(imported);
            box_.reset();
        } else if (command.contains("merge")) {
            answer["cameras"] = read(builder_, command.at("merge"));
        } else if (command.contains("camera")) {
            camera_ = command.at("camera").get<std::string>();
        } else if (command.contains("picture")) {
            answer["notes"] = picture(command);
        } else if (command.contains("sheet")) {
            write_png(contact_sheet(command.at("pictures").get<std::vector<std::string>>()),
                      command.at("sheet"));
        } else {
            throw std::runtime_error("this is no command");
        }
        return answer;
    }

private:
    static Json read(SceneBuilder& builder, const std::string& path) {
        try {
            builder.add(path);
        } catch (const std::exception& error) {
            throw std::runtime_error(vsqinfo::display_text(path) + ": " + error.what());
        }
        Json cameras = Json::array();
        for (const Camera& camera : builder.scene().cameras) {
            cameras.push_back(vsqinfo::display_text(camera.name));
        }
        return cameras;
    }

    Json picture(const Json& command) {
        PictureRequest request;
        request.camera = camera_;
        request.box = box_;
        request.frame = command.value("frame", 0.0);
        request.options.width = command.value("width", request.options.width);
        request.options.height = command.value("height", request.options.height);
        request.options.samples = command.value("samples", request.options.samples);
        if (request.options.width < 1 || request.options.height < 1 ||
            request.options.samples < 1) {
            throw std::runtime_error("a picture needs a size and samples");
        }
        const Picture picture = draw(builder_.scene(), "", request);
        box_ = box_.value_or(picture.box);
        write_png(picture.image, command.at("picture"));
        return picture.notes;
    }

    SceneBuilder builder_;
    std::string camera_;
    std::optional<SceneBox> box_;  // of the first picture, so that the view doesn't move
};

}  // namespace

void run_commands(std::istream& in, std::ostream& out) {
    Commands commands;
    for (std::string line; std::getline(in, line);) {
        Json answer;
        try {
            answer = commands.carry_out(Json::parse(line));
        } catch (const std::exception& error) {
            answer = {{"ok", false}, {"error", error.what()}};
        }
        out << answer.dump(-1, ' ', false, Json::error_handler_t::replace) << std::endl;
    }
}

}  // namespace vsqpicture
