#pragma once

#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "importers/sceneapi/dev/numeric_locale.h"
#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/scene_text_output.h"
#include "platform/files.h"

class ShaderBuffer;

/// The back end that prints the calls as a `.vsq` scene file: lines of text that contain binary
/// data where an array has a binary form.
///
/// Failures are silent; only `flush` reports them. Options, camera and image blocks are refused
/// inside an object or inside each other, and so is `begin_modify`. While the writer lives, the
/// process's numeric locale is "C".
class qorScene_api_file : public qorScene_api {
public:
    /// Borrows `stream`, which must be in binary mode; null drops everything. The writer buffers,
    /// so the stream is complete only once the writer is destroyed.
    qorScene_api_file(std::FILE* stream, bool binary_arrays);

    /// Opens the file and closes it in the destructor. If it can't be opened, standard output is
    /// used instead. `path` is UTF-8.
    qorScene_api_file(const std::string& path, bool binary_arrays);

    qorScene_api_file(const qorScene_api_file&) = delete;
    qorScene_api_file& operator=(const qorScene_api_file&) = delete;
    ~qorScene_api_file() override;

    /// Writes the buffer to the stream. Returns false if any write has failed, with the reason in
    /// `errno`.
    bool flush();

    void reserved_hook() override {}
    bool begin_group(const char* name, bool place) override;
    void end_group() override;
    bool begin_object(const char* name, bool place) override;
    void end_object() override;
    bool begin_geometry(const char* kind) override;
    void end_geometry() override;
    bool begin_animation(const char* kind, const char* name) override;
    int end_animation() override;
    bool begin_load(const char* module) override;
    void end_load() override;
    bool begin_options() override;
    void end_options() override;
    bool begin_camera(const char* name) override;
    void end_camera() override;
    bool begin_image() override;
    void end_image() override;
    bool begin_output(const char* name, const char* kind, const char* type) override;
    void end_output() override;
    bool begin_light(const char* name) override;
    void end_light() override;
    bool begin_accel(const char* name) override;
    void end_accel() override;
    void transform(const qorMatrix& matrix) override;
    void set_transform(const qorMatrix& matrix) override;
    void scale(const double& x, const double& y, const double& z) override;
    void rotate(const double& x, const double& y, const double& z) override;
    void translate(const double& x, const double& y, const double& z) override;
    bool begin_matrix(const char* name) override;
    void end_matrix() override;
    bool begin_material(const char* name, bool place) override;
    bool use_material(const char* name) override;
    void end_material() override;
    void assign_shader(std::int32_t kind, qorShaderHandle shader) override;
    void assign_shader_id(std::int32_t kind, std::int32_t id) override;
    bool begin_shader(const char* name, const char* type) override;
    bool begin_shader_id(const char* type, std::int32_t id) override;
    void end_shader() override;
    qorShaderHandle current_shader() override;
    void push_shader() override;
    void pop_shader() override;
    bool set_parameter(const char* name, std::int32_t type, const void* value) override;
    bool set_parameter_id(const char* name, std::int32_t id) override;
    bool set_parameter_shader(const char* name, qorShaderHandle shader) override;
    bool begin_array(const char* name) override;
    void end_array() override;
    void add_array_element(std::int32_t type, const void* value) override;
    int numeric_query() override { return 10; }
    int numeric_query_for(int) override { return 10; }
    int extension_point() override { return 0; }
    void set_attribute(const char* key, const char* value) override;
    void write_text(const char* format, ...) override;
    void set_output_mode(std::uint32_t mode) override;
    void set_version(std::uint32_t version) override;
    void set_option_flag(bool) override {}
    void set_progress(const char* text, float fraction) override;
    void set_icon(const unsigned char* data, std::int32_t size) override;
    void set_binary_parameter(const char* name, const unsigned char* data,
                              std::int32_t size) override;
    void set_id(std::uint32_t id) override;
    void set_flags(std::uint32_t flags) override;
    bool status_query() override { return false; }
    bool render() override;
    void print_message(const char* text) override;
    void print_error(const char* text) override;

    /// Reopens a named camera for changes; `end_camera` closes it.
    virtual bool begin_modify(const char* name);

    // Further statements of the format, for scene files only.
    void begin_frame(std::int32_t number);
    void end_frame();
    void write_motion(double time, const qorMatrix& matrix);
    /// Closed by `end_geometry`. A `begin_geometry` inside it writes nothing.
    bool begin_geometry_definition(const char* name, const char* kind);
    void write_instance(const char* name);
    /// Closed by `end_material`.
    bool begin_modify_material(const char* name);

private:
    enum class Block : std::int32_t { kNone, kOptions, kCamera, kImage, kObject };

    using OwnedStream = std::unique_ptr<std::FILE, platform::CloseStream>;

    qorScene_api_file(OwnedStream own, std::FILE* stream, bool binary_arrays);

    void open_block(std::string_view keyword, std::initializer_list<const char*> names);
    void end_head();
    void close_block();
    void write_matrix(std::string_view keyword, const qorMatrix& matrix);
    void write_remark(std::string_view keyword, const char* text);
    bool open_exclusive_block(Block block, std::string_view keyword, const char* name);
    void close_exclusive_block(Block block);
    void push_plain_parameters(bool plain);
    void pop_plain_parameters();

    void write_decimal(std::int32_t value);
    void write_numbers(std::string_view keyword, std::initializer_list<double> values);
    void write_narrowed_matrix(const qorMatrix& matrix);
    void write_shader_kind(std::int32_t kind);
    void write_value(std::int32_t code, const void* value);

    void write_array(std::int32_t element_code, const qorArray& array);
    void write_binary_body(char tag, std::uint32_t count, const void* numbers, size_t size);

    void push_shader_state();
    void set_shader_state(bool in_shader_buffer, ShaderBuffer* current_shader);
    bool can_be_copied(qorShaderHandle shader) const;

    NumericLocale numeric_locale_;
    OwnedStream own_stream_;  // set if the writer opened the file itself
    SceneTextOutput out_;
    std::vector<char> format_buffer_;  // for `write_text`
    bool binary_arrays_;
    std::uint32_t output_mode_;
    bool plain_parameters_ = false;  // print `name value`, not `"name" value,`
    Block block_ = Block::kNone;
    bool in_geometry_definition_ = false;

    // Shaders. Handles stay valid as long as the writer lives, so no buffer is freed earlier. Only
    // `set_shader_state` changes the first two.
    bool in_shader_buffer_ = false;
    ShaderBuffer* current_shader_ = nullptr;
    std::vector<std::unique_ptr<ShaderBuffer>> all_shader_buffers_;

    std::vector<bool> saved_plain_parameters_;
    std::vector<bool> saved_in_shader_buffer_;
    std::vector<std::int32_t> saved_indents_;
    std::vector<ShaderBuffer*> saved_shaders_;

    // The array between `begin_array` and `end_array`.
    std::int32_t array_count_ = 0;  // elements written as text
    char array_tag_ = 0;
    std::vector<std::uint32_t> array_values_;  // collected for a binary body
};
