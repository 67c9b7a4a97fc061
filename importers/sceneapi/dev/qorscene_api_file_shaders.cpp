#include "importers/sceneapi/dev/parameter_codes.h"
#include "importers/sceneapi/dev/qorscene_api_file.h"
#include "importers/sceneapi/dev/shader_buffer.h"

// Shaders, written to the stream or to their own buffers, and the statements that use finished
// shaders.

namespace {

struct ShaderKind {
    std::int32_t kind;
    std::string_view word;
};

constexpr ShaderKind kShaderKinds[] = {
    {shader_kind::kSurface, "surface"},
    {shader_kind::kShadow, "shadow"},
    {shader_kind::kVolume, "volume"},
    {shader_kind::kReflectionMap, "reflection map"},
};

}  // namespace

// An unknown kind counts as a surface, with a comment in the scene.
void qorScene_api_file::write_shader_kind(std::int32_t kind) {
    for (const ShaderKind& known : kShaderKinds) {
        if (known.kind == kind) {
            out_.write_indented(known.word);
            return;
        }
    }
    out_.write_indented("// assuming surface shader\n");
    out_.write_indented("surface");
}

// A shader that is still open can't be copied into itself.
bool qorScene_api_file::can_be_copied(qorShaderHandle shader) const {
    return shader != nullptr && !(in_shader_buffer_ && shader == current_shader_);
}

void qorScene_api_file::assign_shader(std::int32_t kind, qorShaderHandle shader) {
    if (!can_be_copied(shader)) {
        return;
    }
    write_shader_kind(kind);
    out_.write_raw(" ");
    out_.write_shader(*static_cast<const ShaderBuffer*>(shader));
    out_.write_raw("\n");
}

void qorScene_api_file::assign_shader_id(std::int32_t kind, std::int32_t id) {
    write_shader_kind(kind);
    const bool known = kind >= shader_kind::kSurface && kind <= shader_kind::kReflectionMap;
    out_.write_raw(known ? " " : "  ");
    write_decimal(id);
    out_.write_raw("\n");
}

// Output goes to the open anonymous shader if there is one, otherwise to the stream.
void qorScene_api_file::set_shader_state(bool in_shader_buffer, ShaderBuffer* current_shader) {
    in_shader_buffer_ = in_shader_buffer;
    current_shader_ = current_shader;
    out_.set_target(in_shader_buffer ? current_shader : nullptr);
}

void qorScene_api_file::push_shader_state() {
    saved_in_shader_buffer_.push_back(in_shader_buffer_);
    saved_shaders_.push_back(current_shader_);
    push_plain_parameters(false);
}

bool qorScene_api_file::begin_shader(const char* name, const char* type) {
    push_shader_state();
    if (name != nullptr) {
        set_shader_state(false, current_shader_);
        open_block("#define shader ", {name, type});
        return true;
    }
    all_shader_buffers_.push_back(std::make_unique<ShaderBuffer>());
    set_shader_state(true, all_shader_buffers_.back().get());
    saved_indents_.push_back(out_.indent());
    out_.set_indent(0);
    out_.write_quoted_name(type);
    out_.write_raw(" ");
    end_head();
    return true;
}

bool qorScene_api_file::begin_shader_id(const char* type, std::int32_t id) {
    push_shader_state();
    set_shader_state(false, current_shader_);
    out_.write_indented("#define shader ");
    write_decimal(id);
    out_.write_raw(" ");
    out_.write_raw(text_or_empty(type));
    out_.write_raw(" ");
    end_head();
    return true;
}

// The current shader doesn't change, so that the caller can get the handle of the finished one.
void qorScene_api_file::end_shader() {
    if (in_shader_buffer_) {
        // The statement that uses the shader writes the line end.
        out_.lower_indent();
        out_.write_indented("}");
        if (!saved_indents_.empty()) {
            out_.set_indent(saved_indents_.back());
            saved_indents_.pop_back();
        }
    } else {
        close_block();
    }
    pop_plain_parameters();
    if (!saved_shaders_.empty()) {
        saved_shaders_.pop_back();
    }
    if (!saved_in_shader_buffer_.empty()) {
        set_shader_state(saved_in_shader_buffer_.back(), current_shader_);
        saved_in_shader_buffer_.pop_back();
    }
}

qorShaderHandle qorScene_api_file::current_shader() {
    return current_shader_;
}

void qorScene_api_file::push_shader() {
    saved_shaders_.push_back(current_shader_);
}

void qorScene_api_file::pop_shader() {
    if (!saved_shaders_.empty()) {
        set_shader_state(in_shader_buffer_, saved_shaders_.back());
        saved_shaders_.pop_back();
    }
}
