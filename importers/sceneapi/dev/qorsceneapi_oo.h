#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "importers/sceneapi/dev/scene_types.h"

class NullApi;
class qorScene_api;

namespace qor {

class LightFactory;
class LightNode;

/// The wrapper through which exporters write a scene. It takes strings, vectors and plain values
/// instead of pointers and type codes, and it numbers shaders and objects.
///
/// The constructor writes the first lines of the stream. Operations that are missing here can be
/// called on `get_api`. The factory must outlive the wrapper.
///
///     LightFileFactory factory("scene.vsq");
///     qorSceneapi_oo scene(factory);
///     scene.begin_group("object");
///     scene.end_group();
class qorSceneapi_oo {
public:
    /// Borrows `factory`. If the factory's scene API is null, nothing is written, `get_api` returns
    /// null, and no other function may be called.
    explicit qorSceneapi_oo(LightFactory& factory);

    /// A wrapper that drops everything.
    qorSceneapi_oo();

    qorSceneapi_oo(const qorSceneapi_oo&) = delete;
    qorSceneapi_oo& operator=(const qorSceneapi_oo&) = delete;
    virtual ~qorSceneapi_oo();

    /// Borrows `api` and restarts the numbering.
    virtual void set_api(qorScene_api* api);

    /// Takes the next object id, sets it on the open object and returns it. The first is 1.
    virtual int next_id();

    virtual void emit(LightNode& node);

    /// `fraction` goes from 0 to 1.
    virtual void progress(const std::string& text, float fraction);

    virtual bool begin_group(const std::string& name);
    virtual void end_group();

    /// Opens a numbered shader and returns its number. The first is 1.
    virtual int begin_shader(const std::string& type);
    virtual void end_shader();

    /// Throws `std::invalid_argument`. Without this overload, a literal would be written as a bool.
    virtual void set_parameter(const std::string& name, const char* value);
    /// Any other pointer would be written as a bool, too.
    template <typename Pointed>
    void set_parameter(const std::string& name, const Pointed* value) = delete;
    virtual bool set_parameter(const std::string& name, const std::string& value);
    virtual bool set_parameter(const std::string& name, const qorColor& value);
    virtual bool set_parameter(const std::string& name, const qorVector& value);
    virtual bool set_parameter(const std::string& name, double value);
    virtual bool set_parameter(const std::string& name, float value);
    virtual bool set_parameter(const std::string& name, int value);
    virtual bool set_parameter(const std::string& name, bool value);

    virtual bool set_array(const std::string& name, const std::vector<qorMatrix>& values);
    virtual bool set_array(const std::string& name, const std::vector<int>& values);
    virtual bool set_array(const std::string& name, const std::vector<float>& values);
    virtual bool set_array(const std::string& name, const std::vector<double>& values);

    /// Three floats per element. Floats after the last whole element are dropped.
    virtual bool set_vec3_array(const std::string& name, const std::vector<float>& values);

    /// Multiplies the current transform by `matrix`, or replaces it if `replace` is set.
    virtual void transform(const qorMatrix& matrix);
    virtual void transform(const qorMatrix& matrix, bool replace);

    virtual void set_flags(std::uint32_t flags);

    /// The wrapped scene API, which belongs to the factory; null if the factory has none.
    virtual qorScene_api* get_api();

    /// These write a message or an error into the scene.
    void print_message(const std::string& text);
    void print_error(const std::string& text);

private:
    void start();

    std::unique_ptr<NullApi> own_api_;           // in a wrapper that drops everything
    std::unique_ptr<LightFactory> own_factory_;  // provides `own_api_`
    qorScene_api* api_ = nullptr;
    LightFactory* factory_;
    std::uint32_t shader_id_ = 0;
    std::uint32_t object_id_ = 0;
};

}  // namespace qor
