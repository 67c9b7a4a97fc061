#include <algorithm>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "importers/sceneapi/dev/light_file_factory.h"
#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "tests/support/temporary_folder.h"
#include "tools/vsqinfo/vsq_reader.h"

namespace {

// Writes a scene of nested blocks with any names and values, and counts what it writes.
class SceneWriter {
public:
    SceneWriter(FuzzInput& input, qor::qorSceneapi_oo& scene)
        : input_(input), scene_(scene), api_(*scene.get_api()) {}

    void write_group(const std::string& name, int depth) {
        scene_.begin_group(name);
        api_.set_flags(input_.take<std::uint32_t>());
        while (!input_.is_at_end()) {
            switch (input_.below(6)) {
                case 0:
                    if (depth < 40) {
                        ++groups;
                        write_group(input_.text(), depth + 1);
                    }
                    break;
                case 1:
                case 2:
                    write_object();
                    break;
                case 3:
                    scene_.transform(input_.take<qorMatrix>());
                    break;
                case 4:
                    api_.print_message(message().c_str());
                    break;
                default:
                    scene_.end_group();
                    return;
            }
        }
        scene_.end_group();
    }

    std::uint64_t groups = 0;
    std::uint64_t objects = 0;
    std::uint64_t triangles = 0;

private:
    void write_object() {
        ++objects;
        api_.begin_object(input_.text().c_str(), true);
        if (input_.below(3) > 0) {
            write_triangles();
        } else {
            api_.begin_geometry(input_.below(2) == 0 ? "instance" : "points");
            write_parameters();
            api_.end_geometry();
        }
        if (input_.below(2) == 0) {
            write_material();
        }
        api_.end_object();
    }

    void write_triangles() {
        api_.begin_geometry("triangles");
        const unsigned vertices = 1 + input_.below(20);
        std::vector<float> places(3 * vertices);
        for (float& place : places) {
            place = input_.take<float>();
        }
        std::vector<std::int32_t> corners(3 * input_.below(20));
        for (std::int32_t& corner : corners) {
            corner = static_cast<std::int32_t>(input_.below(vertices));
        }
        scene_.set_vec3_array("vertices", places);
        scene_.set_array("triangles", corners);
        triangles += corners.size() / 3;
        api_.end_geometry();
    }

    // A quote and a line feed would seem to end the message.
    std::string message() {
        std::string text = input_.text();
        std::replace(text.begin(), text.end(), '\n', ' ');
        return text;
    }

    void write_material() {
        api_.begin_material(input_.text().c_str(), true);
        const int shader = scene_.begin_shader("qor_diffuse");
        write_parameters();
        scene_.end_shader();
        api_.begin_shader(nullptr, input_.text().c_str());
        write_parameters();
        api_.end_shader();
        api_.assign_shader(static_cast<std::int32_t>(input_.below(4)), api_.current_shader());
        api_.assign_shader_id(0, shader);
        api_.end_material();
    }

    void write_parameters() {
        for (unsigned left = input_.below(5); left > 0; --left) {
            const std::string name = input_.text();
            switch (input_.below(6)) {
                case 0:
                    scene_.set_parameter(name.c_str(), input_.take<float>());
                    break;
                case 1:
                    scene_.set_parameter(name.c_str(), input_.take<double>());
                    break;
                case 2:
                    scene_.set_parameter(name.c_str(), input_.take<std::int32_t>());
                    break;
                case 3:
                    scene_.set_parameter(name.c_str(), input_.text());
                    break;
                case 4:
                    scene_.set_parameter(name.c_str(), input_.below(2) == 0);
                    break;
                default:
                    scene_.set_parameter(name.c_str(), input_.take<qorColor>());
            }
        }
    }

    FuzzInput& input_;
    qor::qorSceneapi_oo& scene_;
    qorScene_api& api_;
};

}  // namespace

// Whatever the writer writes, the reader accepts, and finds as much of everything.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TemporaryFolder folder;
    FuzzInput input(data, size);
    const std::string path = folder / "scene.vsq";
    qor::LightFileFactory factory(path);
    std::uint64_t groups = 0;
    std::uint64_t objects = 0;
    std::uint64_t triangles = 0;
    {
        qor::qorSceneapi_oo scene(factory);
        SceneWriter writer(input, scene);
        writer.write_group("object", 0);
        groups = writer.groups;
        objects = writer.objects;
        triangles = writer.triangles;
    }
    factory.close();
    try {
        const vsqinfo::VsqSummary summary = vsqinfo::read_vsq_file(path);
        require(summary.groups == groups, "the number of groups");
        require(summary.objects == objects, "the number of objects");
        require(summary.triangles == triangles, "the number of triangles");
    } catch (const vsqinfo::MalformedFile& error) {
        require(false, error.what());
    }
    return 0;
}
