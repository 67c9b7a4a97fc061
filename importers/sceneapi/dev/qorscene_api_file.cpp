#include "importers/sceneapi/dev/qorscene_api_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <utility>

#include "importers/sceneapi/dev/number_text.h"
#include "importers/sceneapi/dev/shader_buffer.h"
#include "platform/files.h"

// The blocks and statements of a scene file. Values, arrays and shaders are in other source files.

namespace {

constexpr std::uint32_t kNoIndentation = 0x400000;
constexpr std::uint32_t kFirstOutputMode = kNoIndentation | 1;
constexpr std::uint32_t kNewestVersion = 20;
constexpr size_t kFormatBufferSize = 0x100000;
constexpr size_t kFirstStackRoom = 32;

}  // namespace

qorScene_api_file::qorScene_api_file(std::FILE* stream, bool binary_arrays)
    : qorScene_api_file(OwnedStream(), stream, binary_arrays) {}

qorScene_api_file::qorScene_api_file(const std::string& path, bool binary_arrays)
    : qorScene_api_file(OwnedStream(platform::open_file(path, "wb+")), stdout, binary_arrays) {}

qorScene_api_file::qorScene_api_file(OwnedStream own, std::FILE* stream, bool binary_arrays)
    : own_stream_(std::move(own)),
      out_(own_stream_ ? own_stream_.get() : stream),
      format_buffer_(kFormatBufferSize),
      binary_arrays_(binary_arrays) {
    saved_plain_parameters_.reserve(kFirstStackRoom);
    saved_in_shader_buffer_.reserve(kFirstStackRoom);
    saved_indents_.reserve(kFirstStackRoom);
    saved_shaders_.reserve(kFirstStackRoom);
    qorScene_api_file::set_output_mode(kFirstOutputMode);
}

qorScene_api_file::~qorScene_api_file() = default;

bool qorScene_api_file::flush() {
    out_.flush();
    errno = out_.write_error();
    return errno == 0;
}

// Writes the head of a block: the keyword, its names, and the brace.
void qorScene_api_file::open_block(std::string_view keyword,
                                   std::initializer_list<const char*> names) {
    out_.write_indented(keyword);
    for (const char* name : names) {
        out_.write_bare_name(name);
        out_.write_raw(" ");
    }
    end_head();
}

void qorScene_api_file::end_head() {
    out_.write_raw("{\n");
    out_.raise_indent();
}

void qorScene_api_file::close_block() {
    out_.lower_indent();
    out_.write_indented("}\n");
}

// For options, camera and image blocks: only one of them can be open, and never inside an object.
bool qorScene_api_file::open_exclusive_block(Block block, std::string_view keyword,
                                             const char* name) {
    if (block_ != Block::kNone) {
        return false;
    }
    set_shader_state(false, current_shader_);
    plain_parameters_ = true;
    block_ = block;
    if (name != nullptr) {
        open_block(keyword, {name});
    } else {
        open_block(keyword, {});
    }
    return true;
}

void qorScene_api_file::close_exclusive_block(Block block) {
    if (block_ == block) {
        close_block();
    }
    plain_parameters_ = false;
    block_ = Block::kNone;
}

void qorScene_api_file::push_plain_parameters(bool plain) {
    saved_plain_parameters_.push_back(plain_parameters_);
    plain_parameters_ = plain;
}

void qorScene_api_file::pop_plain_parameters() {
    if (!saved_plain_parameters_.empty()) {
        plain_parameters_ = saved_plain_parameters_.back();
        saved_plain_parameters_.pop_back();
    }
}

bool qorScene_api_file::begin_group(const char* name, bool place) {
    push_plain_parameters(true);
    out_.write_indented("\n");
    open_block(place ? "group " : "#define group ", {name});
    return true;
}

void qorScene_api_file::end_group() {
    close_block();
    pop_plain_parameters();
}

bool qorScene_api_file::begin_object(const char* name, bool place) {
    push_plain_parameters(true);
    block_ = Block::kObject;
    open_block(place ? "object " : "#define object ", {name});
    return true;
}

void qorScene_api_file::end_object() {
    close_block();
    pop_plain_parameters();
    block_ = Block::kNone;
}

bool qorScene_api_file::begin_geometry(const char* kind) {
    if (in_geometry_definition_) {
        return true;
    }
    push_plain_parameters(false);
    open_block("geometry ", {kind});
    return true;
}

bool qorScene_api_file::begin_geometry_definition(const char* name, const char* kind) {
    push_plain_parameters(false);
    in_geometry_definition_ = true;
    open_block("#define geometry ", {name, kind});
    return true;
}

void qorScene_api_file::end_geometry() {
    close_block();
    pop_plain_parameters();
    in_geometry_definition_ = false;
}

bool qorScene_api_file::begin_animation(const char* kind, const char* name) {
    push_plain_parameters(false);
    open_block("animation ", {kind, name});
    return true;
}

int qorScene_api_file::end_animation() {
    close_block();
    pop_plain_parameters();
    return 0;
}

bool qorScene_api_file::begin_load(const char* module) {
    open_block("load ", {module});
    return true;
}

void qorScene_api_file::end_load() {
    close_block();
}

bool qorScene_api_file::begin_options() {
    return open_exclusive_block(Block::kOptions, "\noptions ", nullptr);
}

void qorScene_api_file::end_options() {
    close_exclusive_block(Block::kOptions);
}

bool qorScene_api_file::begin_camera(const char* name) {
    return open_exclusive_block(Block::kCamera, "\ncamera ", name);
}

void qorScene_api_file::end_camera() {
    close_exclusive_block(Block::kCamera);
}

bool qorScene_api_file::begin_image() {
    return open_exclusive_block(Block::kImage, "\nimage ", nullptr);
}

void qorScene_api_file::end_image() {
    close_exclusive_block(Block::kImage);
}

// The check comes first, so that a refused block leaves no "#modify" behind.
bool qorScene_api_file::begin_modify(const char* name) {
    if (block_ != Block::kNone) {
        return false;
    }
    out_.write_indented("#modify ");
    return begin_camera(name);
}

bool qorScene_api_file::begin_output(const char* name, const char* kind, const char* type) {
    plain_parameters_ = false;
    open_block("output ", {name, kind, type});
    return true;
}

void qorScene_api_file::end_output() {
    close_block();
    plain_parameters_ = true;
}

bool qorScene_api_file::begin_light(const char* name) {
    out_.write_indented("\n");
    open_block("light ", {name});
    return true;
}

void qorScene_api_file::end_light() {
    close_block();
}

bool qorScene_api_file::begin_accel(const char* name) {
    push_plain_parameters(false);
    open_block("\naccel ", {name});
    return true;
}

void qorScene_api_file::end_accel() {
    close_block();
    pop_plain_parameters();
}

void qorScene_api_file::transform(const qorMatrix& matrix) {
    write_matrix("transform ", matrix);
}

void qorScene_api_file::set_transform(const qorMatrix& matrix) {
    write_matrix("set transform ", matrix);
}

void qorScene_api_file::write_matrix(std::string_view keyword, const qorMatrix& matrix) {
    out_.write_indented(keyword);
    write_narrowed_matrix(matrix);
    out_.write_raw("\n");
}

void qorScene_api_file::scale(const double& x, const double& y, const double& z) {
    write_numbers("scale", {x, y, z});
}

void qorScene_api_file::rotate(const double& x, const double& y, const double& z) {
    write_numbers("rotate", {x, y, z});
}

void qorScene_api_file::translate(const double& x, const double& y, const double& z) {
    write_numbers("translate", {x, y, z});
}

bool qorScene_api_file::begin_matrix(const char* name) {
    open_block("#define matrix ", {name});
    return true;
}

void qorScene_api_file::end_matrix() {
    close_block();
}

bool qorScene_api_file::begin_material(const char* name, bool place) {
    open_block(place ? "material " : "\n#define material ", {name});
    return true;
}

bool qorScene_api_file::begin_modify_material(const char* name) {
    open_block("#modify material ", {name});
    return true;
}

bool qorScene_api_file::use_material(const char* name) {
    out_.write_indented("material ");
    out_.write_bare_name(name);
    out_.write_raw("\n");
    return true;
}

void qorScene_api_file::end_material() {
    close_block();
}

void qorScene_api_file::begin_frame(std::int32_t number) {
    out_.write_indented("frame ");
    write_decimal(number);
    out_.write_raw(" ");
    end_head();
}

void qorScene_api_file::end_frame() {
    close_block();
}

void qorScene_api_file::write_motion(double time, const qorMatrix& matrix) {
    char text[number_text::kShortRoom];
    out_.write_indented("motion ");
    out_.write_raw({text, static_cast<size_t>(number_text::print_general(text, time) - text)});
    out_.write_raw(" ");
    end_head();
    transform(matrix);
    close_block();
}

void qorScene_api_file::write_instance(const char* name) {
    out_.write_indented("instance ");
    out_.write_bare_name(name);
    out_.write_raw("\n");
}

void qorScene_api_file::set_attribute(const char* key, const char* value) {
    out_.write_indented("attribute ");
    out_.write_bare_name(key);
    out_.write_raw(" ");
    out_.write_bare_name(value);
    out_.write_raw("\n");
}

void qorScene_api_file::write_text(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const int length =
        std::vsnprintf(format_buffer_.data(), SceneTextOutput::kLongestText + 1, format, arguments);
    va_end(arguments);
    if (length >= 0) {
        out_.write_indented(format_buffer_.data());
    }
}

void qorScene_api_file::set_output_mode(std::uint32_t mode) {
    output_mode_ = mode;
    out_.set_indented((output_mode_ & kNoIndentation) == 0);
}

void qorScene_api_file::set_version(std::uint32_t version) {
    const std::uint32_t number = version == 0xffffffffu ? kNewestVersion : version;
    out_.write_indented("version ");
    write_decimal(static_cast<std::int32_t>(number));
    out_.write_raw("\n\n");
}

void qorScene_api_file::set_progress(const char* text, float fraction) {
    out_.write_indented("progress ");
    out_.write_bare_name(text);
    char number[64];
    std::snprintf(number, sizeof number, " %.3f\n\n", static_cast<double>(fraction));
    out_.write_raw(number);
}

void qorScene_api_file::set_icon(const unsigned char* data, std::int32_t size) {
    out_.write_indented("icon ");
    out_.write_hexadecimal_data(data, static_cast<size_t>(std::max(size, 0)));
    out_.write_raw("\n");
}

void qorScene_api_file::set_binary_parameter(const char* name, const unsigned char* data,
                                             std::int32_t size) {
    out_.write_indented({text_or_empty(name), " "});
    out_.write_hexadecimal_data(data, static_cast<size_t>(std::max(size, 0)));
    out_.write_raw("\n");
}

void qorScene_api_file::set_id(std::uint32_t id) {
    char text[number_text::kShortRoom];
    const size_t size = static_cast<size_t>(number_text::print_unsigned(text, id) - text);
    out_.write_indented({"id ", {text, size}, "\n"});
}

void qorScene_api_file::set_flags(std::uint32_t flags) {
    char text[number_text::kShortRoom];
    const size_t size = static_cast<size_t>(number_text::print_unsigned(text, flags) - text);
    out_.write_indented({"flags ", {text, size}, "\n"});
}

bool qorScene_api_file::render() {
    out_.write_indented("\nrender\n");
    return true;
}

void qorScene_api_file::print_message(const char* text) {
    write_remark("#print", text);
}

void qorScene_api_file::print_error(const char* text) {
    write_remark("#error", text);
}

void qorScene_api_file::write_remark(std::string_view keyword, const char* text) {
    out_.write_indented({keyword, " \""});
    out_.write_raw(text_or_empty(text));
    out_.write_raw("\"\n");
}
