#include "tools/vsqpicture/scene_builder.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "tools/vsqinfo/vsq_listener.h"
#include "tools/vsqinfo/vsq_reader.h"
#include "tools/vsqinfo/vsq_tokens.h"

namespace vsqpicture {
namespace {

std::vector<double> numbers_of(std::string_view value) {
    std::vector<double> numbers;
    while (!value.empty()) {
        const std::size_t end = std::min(value.find(' '), value.size());
        const std::string_view word = value.substr(0, end);
        const bool is_switch = vsqinfo::classify_value(word) == vsqinfo::ValueWord::kSwitch;
        numbers.push_back(is_switch ? (word == "on" ? 1 : 0) : vsqinfo::number_value(word));
        value.remove_prefix(std::min(end + 1, value.size()));
    }
    return numbers;
}

// An index or count of a file; anything that isn't one becomes an index beyond every array.
std::uint32_t index_of(double number) {
    return number >= 0 && number < 4294967295.0 ? static_cast<std::uint32_t>(number) : 4294967295u;
}

bool holds_indices(std::string_view array) {
    constexpr std::string_view kNames[] = {"triangles", "triangles_uv", "triangles_norm",
                                           "nvertices"};
    return std::find(std::begin(kNames), std::end(kNames), array) != std::end(kNames);
}

}  // namespace

// Reads one file into the builder's scene.
class SceneBuilder::Reader final : public vsqinfo::VsqListener {
public:
    explicit Reader(SceneBuilder& builder) : builder_(builder), scene_(builder.scene_) {}

    void block_begins(const vsqinfo::VsqBlock& block) override;
    void block_ends() override;
    void matrix(const Matrix& matrix, bool replaces, vsqinfo::FilePlace) override;
    void statement(const vsqinfo::VsqStatement& statement) override;
    void parameter(const vsqinfo::VsqParameter& parameter) override;
    bool array_begins(const vsqinfo::VsqArray& array) override;
    void array_numbers(const vsqinfo::VsqNumbers& numbers) override;

private:
    struct Open {
        std::string keyword;
        std::string type;
        std::string name;
        ShaderPtr shader;
        bool has_matrix = false;
    };

    bool is_in(std::string_view keyword) const {
        return !open_.empty() && open_.back().keyword == keyword;
    }

    void begin_group(const std::string& name);
    void begin_object(const std::string& name);
    void begin_camera(const std::string& name);
    void begin_shader(const vsqinfo::VsqBlock& block);
    void end_geometry();
    void end_animation();
    void end_object();
    void set_parameter(Shader& shader, const vsqinfo::VsqParameter& parameter);
    void set_surface(ShaderPtr shader);

    SceneBuilder& builder_;
    PictureScene& scene_;
    std::vector<Open> open_;
    std::unordered_map<std::int64_t, ShaderPtr> shaders_;
    std::map<std::string, ShaderPtr> materials_;
    std::vector<std::size_t> node_path_ = {0};
    std::map<std::pair<std::size_t, std::string>, std::size_t> seen_nodes_;
    std::map<std::pair<std::size_t, std::string>, std::size_t> seen_objects_;
    std::map<std::string, std::size_t> seen_cameras_;

    Object object_;
    bool in_object_ = false;
    Camera* camera_ = nullptr;
    // Of the geometry or animation that is being read.
    std::string array_;
    std::map<std::string, std::vector<double>> values_;  // parameters, and arrays of animations
    std::map<std::string, std::vector<float>> floats_;   // arrays of geometries
    std::map<std::string, std::vector<std::uint32_t>> indices_;
};

void SceneBuilder::add(const std::string& path) {
    // Copies share meshes, so this costs little.
    const PictureScene scene_before = scene_;
    const auto nodes_before = nodes_;
    try {
        Reader reader(*this);
        vsqinfo::read_vsq_file(path, &reader);
    } catch (...) {
        scene_ = scene_before;
        nodes_ = nodes_before;
        throw;
    }
}

void SceneBuilder::Reader::block_begins(const vsqinfo::VsqBlock& block) {
    // What is only defined isn't placed.
    const bool is_placed = !block.is_definition && !block.is_change;
    if (block.keyword == "group" && is_placed) {
        begin_group(block.name);
    } else if (block.keyword == "object" && is_placed) {
        begin_object(block.name);
    } else if (block.keyword == "camera" && is_placed) {
        begin_camera(block.name);
    } else if (block.keyword == "geometry" || block.keyword == "animation") {
        values_.clear();
        floats_.clear();
        indices_.clear();
    } else if (block.keyword == "light" ||
               (!is_placed && block.keyword != "shader" && block.keyword != "material")) {
        scene_.note("blocks \"" + std::string(is_placed ? "" : "#define ") +
                    std::string(block.keyword) + "\"");
    }
    open_.push_back({std::string(block.keyword), block.type, block.name, nullptr, false});
    if (block.keyword == "shader") {
        begin_shader(block);
    }
    if (!is_placed && (block.keyword == "group" || block.keyword == "object")) {
        open_.back().keyword = "defined " + open_.back().keyword;
    }
}

void SceneBuilder::Reader::begin_group(const std::string& name) {
    const std::size_t parent = node_path_.back();
    const std::size_t occurrence = seen_nodes_[{parent, name}]++;
    const auto [entry, is_new] =
        builder_.nodes_.emplace(std::make_tuple(parent, name, occurrence), scene_.nodes.size());
    if (is_new) {
        Node node;
        node.name = name;
        node.parent = parent;
        scene_.nodes.push_back(std::move(node));
    }
    node_path_.push_back(entry->second);
}

void SceneBuilder::Reader::begin_object(const std::string& name) {
    object_ = Object();
    object_.name = name;
    in_object_ = true;
}

void SceneBuilder::Reader::begin_camera(const std::string& name) {
    const std::size_t occurrence = seen_cameras_[name]++;
    std::size_t same = 0;
    camera_ = nullptr;
    for (Camera& camera : scene_.cameras) {
        if (camera.name == name && same++ == occurrence) {
            camera_ = &camera;
        }
    }
    if (!camera_) {
        scene_.cameras.emplace_back();
        camera_ = &scene_.cameras.back();
    }
    *camera_ = Camera();
    camera_->name = name;
    camera_->node = node_path_.back();
}

void SceneBuilder::Reader::begin_shader(const vsqinfo::VsqBlock& block) {
    const auto shader = std::make_shared<Shader>();
    shader->type = block.type;
    open_.back().shader = shader;
    if (block.number) {
        shaders_[*block.number] = shader;
        return;
    }
    if (block.is_definition || open_.size() < 2) {
        return;
    }
    // Shaders that own one another are released one inside the other.
    constexpr std::size_t kDeepest = 1000;
    if (open_.size() > kDeepest) {
        scene_.note("shaders that nest too deeply");
        return;
    }
    Open& around = open_[open_.size() - 2];
    if (around.shader) {
        if (block.name.empty()) {
            around.shader->layers.push_back(shader);
        } else {
            around.shader->inputs[block.name] = shader;
        }
    } else if (around.keyword == "material" && block.name == "surface") {
        set_surface(shader);
    }
}

void SceneBuilder::Reader::set_surface(ShaderPtr shader) {
    for (const Open& open : open_) {
        if (open.keyword == "material") {
            materials_[open.name] = shader;
        }
    }
    if (in_object_) {
        object_.surface = std::move(shader);
    }
}

void SceneBuilder::Reader::block_ends() {
    const std::string keyword = open_.back().keyword;
    if (keyword == "geometry") {
        end_geometry();
    } else if (keyword == "animation") {
        end_animation();
    } else if (keyword == "object") {
        end_object();
    } else if (keyword == "group") {
        node_path_.pop_back();
    } else if (keyword == "camera") {
        camera_ = nullptr;
    }
    open_.pop_back();
}

void SceneBuilder::Reader::matrix(const Matrix& matrix, bool replaces, vsqinfo::FilePlace) {
    Matrix* target = in_object_       ? &object_.matrix
                     : camera_        ? &camera_->matrix
                     : is_in("group") ? &scene_.nodes[node_path_.back()].matrix
                                      : nullptr;
    if (!target) {
        return;
    }
    if (!std::all_of(matrix.begin(), matrix.end(), [](double x) { return std::isfinite(x); })) {
        scene_.note("matrices with NaN or infinities");
        return;
    }
    const bool is_first = replaces || !open_.back().has_matrix;
    *target = is_first ? matrix : combined(*target, matrix);
    open_.back().has_matrix = true;
}

void SceneBuilder::Reader::statement(const vsqinfo::VsqStatement& statement) {
    if (statement.word == "id" && in_object_) {
        object_.id = statement.number;
    } else if (statement.word == "surface" && statement.number) {
        set_surface(shaders_[*statement.number]);
    } else if (statement.word == "material" && in_object_) {
        object_.surface = materials_[std::string(statement.text)];
    } else if (statement.word == "instance" || statement.word == "scale" ||
               statement.word == "rotate" || statement.word == "translate") {
        scene_.note("statements \"" + std::string(statement.word) + "\"");
    }
}

void SceneBuilder::Reader::parameter(const vsqinfo::VsqParameter& parameter) {
    const std::vector<double> numbers = parameter.form == vsqinfo::ValueForm::kWords
                                            ? numbers_of(parameter.value)
                                            : std::vector<double>();
    const std::string name(parameter.name);
    if (open_.back().shader) {
        set_parameter(*open_.back().shader, parameter);
        if (camera_ && name == "texture" && open_[open_.size() - 2].keyword == "camera") {
            camera_->sky = parameter.value;
        }
    } else if (is_in("geometry") && name == "file") {
        object_.mesh_file = parameter.value;
    } else if (is_in("geometry") || is_in("animation")) {
        values_[name] = numbers;
    } else if (is_in("load") && name == "meter_scale" && numbers.size() == 1 && numbers[0] > 0) {
        scene_.units_per_metre = numbers[0];
    } else if (camera_ && is_in("camera")) {
        if (name == "fov" && numbers.size() == 1) {
            camera_->fov_degrees = numbers[0];
        } else if (name == "clipping" && numbers.size() == 2) {
            camera_->clipping = numbers;
        } else if (name == "projection") {
            camera_->is_perspective = parameter.value == "perspective";
        }
    }
}

void SceneBuilder::Reader::set_parameter(Shader& shader, const vsqinfo::VsqParameter& parameter) {
    const std::string name(parameter.name);
    if (parameter.shader) {
        shader.inputs[name] = shaders_[*parameter.shader];
    } else if (parameter.form == vsqinfo::ValueForm::kText) {
        shader.texts[name] = parameter.value;
    } else if (parameter.form == vsqinfo::ValueForm::kWords) {
        shader.numbers[name] = numbers_of(parameter.value);
    }
}

bool SceneBuilder::Reader::array_begins(const vsqinfo::VsqArray& array) {
    array_ = array.name;
    return is_in("geometry") || is_in("animation") || (is_in("shader") && array_ == "shaders");
}

void SceneBuilder::Reader::array_numbers(const vsqinfo::VsqNumbers& numbers) {
    const double* const end = numbers.numbers + numbers.count;
    if (is_in("shader")) {
        for (const double* number = numbers.numbers; number != end; ++number) {
            open_.back().shader->layers.push_back(
                shaders_[static_cast<std::int64_t>(index_of(*number))]);
        }
    } else if (!is_in("geometry")) {
        values_[array_].insert(values_[array_].end(), numbers.numbers, end);
    } else if (holds_indices(array_)) {
        std::transform(numbers.numbers, end, std::back_inserter(indices_[array_]), index_of);
    } else {
        std::transform(numbers.numbers, end, std::back_inserter(floats_[array_]),
                       [](double number) { return static_cast<float>(number); });
    }
}

void SceneBuilder::Reader::end_geometry() {
    const std::string& type = open_.back().type;
    if (!in_object_) {
        return;
    }
    if (type == "triangles") {
        const auto mesh = std::make_shared<Mesh>();
        mesh->positions = std::move(floats_["vertices"]);
        mesh->triangles = std::move(indices_["triangles"]);
        mesh->normals = std::move(floats_["normals"]);
        mesh->normal_indices = std::move(indices_["triangles_norm"]);
        mesh->uvs = std::move(floats_["uv_tex"]);
        mesh->uv_indices = std::move(indices_["triangles_uv"]);
        mesh->colours = std::move(floats_["vcolors"]);
        object_.mesh = mesh;
    } else if (type == "qor_curves") {
        const auto curves = std::make_shared<Curves>();
        curves->points = std::move(floats_["p"]);
        curves->radii = std::move(floats_["pr"]);
        curves->colours = std::move(floats_["pcol"]);
        curves->strand_points = std::move(indices_["nvertices"]);
        const auto value = [this](const char* name, double otherwise) {
            const std::vector<double>& numbers = values_[name];
            return numbers.empty() ? otherwise : numbers[0];
        };
        curves->radius = value("radius", 1);
        curves->order = value("order", 4);
        object_.curves = curves;
    } else if (type == "instance" && !values_["id"].empty()) {
        object_.instance_of = static_cast<std::int64_t>(index_of(values_["id"][0]));
    } else {
        scene_.note("geometries of the kind " + vsqinfo::shown(type));
    }
}

void SceneBuilder::Reader::end_animation() {
    const std::string& type = open_.back().type;
    if (type == "fbx_animation_2" || type == "fbx_animation") {
        Track track{std::move(values_["timestamps"]), std::move(values_["matrices"])};
        if (camera_) {
            camera_->track = std::move(track);
        } else {
            scene_.nodes[node_path_.back()].track = std::move(track);
        }
    } else if (type == "deformable") {
        scene_.nodes[node_path_.back()].turns = std::move(values_["timestamps"]);
    } else if (type != "deformable_qortlib") {
        // The frames of the latter are in the mesh file itself.
        scene_.note("animations of the kind " + vsqinfo::shown(type));
    }
}

// A further file's object takes the place of the one with its name.
void SceneBuilder::Reader::end_object() {
    in_object_ = false;
    const std::size_t node = node_path_.back();
    std::size_t occurrence = seen_objects_[{node, object_.name}]++;
    std::vector<Object>& objects = scene_.nodes[node].objects;
    const auto place =
        std::find_if(objects.begin(), objects.end(), [this, &occurrence](const Object& object) {
            return object.name == object_.name && occurrence-- == 0;
        });
    if (place == objects.end()) {
        objects.push_back(std::move(object_));
    } else {
        *place = std::move(object_);
    }
}

}  // namespace vsqpicture
