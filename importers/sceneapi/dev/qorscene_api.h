#pragma once

#include <cstdint>

#include "importers/sceneapi/dev/scene_types.h"

/// The only interface through which a scene leaves the system: a flat stream of calls.
///
/// A caller opens a block, sets its parameters and closes it; nothing is stored in memory for
/// later. A back end prints the calls (`qorScene_api_file`), sends them to a running renderer, or
/// drops them (`NullApi`). The renderer's own library shares the virtual table, so the order of the
/// functions can't change.
///
/// Every text is null-terminated bytes, borrowed for the duration of the call. A `begin_...`
/// function returns true if it opened the block, which the matching `end_...` closes. If `place` is
/// false, a group, object or material is only defined under its name, for later use.
///
///     api->begin_group("Box001", true);
///     api->transform(scene_from_node);
///     api->end_group();
class qorScene_api {
public:
    virtual ~qorScene_api() = default;
    virtual void reserved_hook() = 0;

    // The connection to a running renderer. A back end without one returns false.
    virtual bool connect(const char* host, std::int32_t port, std::int32_t);
    virtual bool disconnect();
    virtual bool link_request(void*, void*, void*);

    virtual bool begin_group(const char* name, bool place) = 0;
    virtual void end_group() = 0;
    virtual bool begin_object(const char* name, bool place) = 0;
    virtual void end_object() = 0;
    /// `kind` is for instance "triangles" or "instance".
    virtual bool begin_geometry(const char* kind) = 0;
    virtual void end_geometry() = 0;
    /// `kind` is for instance "fbx_animation_2".
    virtual bool begin_animation(const char* kind, const char* name) = 0;
    virtual int end_animation() = 0;
    virtual bool begin_load(const char* module) = 0;
    virtual void end_load() = 0;

    // Options, camera and image blocks are refused inside each other and inside an object.
    virtual bool begin_options() = 0;
    virtual void end_options() = 0;
    /// If `name` is null, the camera has no name.
    virtual bool begin_camera(const char* name) = 0;
    virtual void end_camera() = 0;
    virtual bool begin_image() = 0;
    virtual void end_image() = 0;

    virtual bool begin_output(const char* name, const char* kind, const char* type) = 0;
    virtual void end_output() = 0;
    virtual bool begin_light(const char* name) = 0;
    virtual void end_light() = 0;
    virtual bool begin_accel(const char* name) = 0;
    virtual void end_accel() = 0;

    /// Multiplies the current transform by `matrix`.
    virtual void transform(const qorMatrix& matrix) = 0;
    /// Replaces the current transform.
    virtual void set_transform(const qorMatrix& matrix) = 0;
    virtual void scale(const double& x, const double& y, const double& z) = 0;
    virtual void rotate(const double& x, const double& y, const double& z) = 0;
    virtual void translate(const double& x, const double& y, const double& z) = 0;
    virtual bool begin_matrix(const char* name) = 0;
    virtual void end_matrix() = 0;

    virtual bool begin_material(const char* name, bool place) = 0;
    /// Refers to a material that was defined earlier.
    virtual bool use_material(const char* name) = 0;
    virtual void end_material() = 0;
    /// Assigns a finished shader to the open material; `kind` is one of `shader_kind`. A null
    /// handle does nothing.
    virtual void assign_shader(std::int32_t kind, qorShaderHandle shader) = 0;
    virtual void assign_shader_id(std::int32_t kind, std::int32_t id) = 0;

    /// With a name, defines a shader of `type`. With a null name, builds an anonymous shader; after
    /// its end, `current_shader` returns its handle.
    virtual bool begin_shader(const char* name, const char* type) = 0;
    virtual bool begin_shader_id(const char* type, std::int32_t id) = 0;
    virtual void end_shader() = 0;
    virtual qorShaderHandle current_shader() = 0;
    /// Saves the current shader while a nested one is built; `pop_shader` restores it.
    virtual void push_shader() = 0;
    virtual void pop_shader() = 0;

    /// Sets one named value. `type` is one of `parameter_code` and determines what `value` points
    /// to.
    virtual bool set_parameter(const char* name, std::int32_t type, const void* value) = 0;
    virtual bool set_parameter_id(const char* name, std::int32_t id) = 0;
    /// A null handle does nothing.
    virtual bool set_parameter_shader(const char* name, qorShaderHandle shader) = 0;
    virtual bool begin_array(const char* name) = 0;
    virtual void end_array() = 0;
    virtual void add_array_element(std::int32_t type, const void* value) = 0;

    virtual int numeric_query() = 0;
    virtual int numeric_query_for(int argument) = 0;
    virtual int extension_point() = 0;

    virtual void set_attribute(const char* key, const char* value) = 0;
    /// Writes raw text, which is formatted as in printf.
    virtual void write_text(const char* format, ...) = 0;
    /// Flag 2 asks for binary arrays, flag 0x400000 for no indentation. `qorScene_api_file` ignores
    /// flag 2: its constructor decides whether arrays are binary.
    virtual void set_output_mode(std::uint32_t mode) = 0;
    /// The version of the format; 0xffffffff means 20.
    virtual void set_version(std::uint32_t version) = 0;
    virtual void set_option_flag(bool flag) = 0;
    /// `fraction` goes from 0 to 1.
    virtual void set_progress(const char* text, float fraction) = 0;
    virtual void set_icon(const unsigned char* data, std::int32_t size) = 0;
    virtual void set_binary_parameter(const char* name, const unsigned char* data,
                                      std::int32_t size) = 0;
    /// Sets the id of the open object. Before `connect`, sets the id of the connection.
    virtual void set_id(std::uint32_t id) = 0;
    /// Flags of the open block; the renderer defines their bits.
    virtual void set_flags(std::uint32_t flags) = 0;
    virtual bool status_query() = 0;
    virtual bool render() = 0;
    virtual void print_message(const char* text) = 0;
    virtual void print_error(const char* text) = 0;
};
