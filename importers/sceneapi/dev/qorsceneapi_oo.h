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

/// The face that exporters see of a scene: strings, vectors and plain values in place of pointers
/// and type codes, and the running numbers of shaders and objects.
///
/// Building one writes the opening lines of the stream. Operations that are not here are reached
/// through `get_api`. A wrapper is built after its factory and dropped before it.
///
///     LightFileFactory factory("scene.vsq");
///     qorSceneapi_oo scene(factory);
///     scene.begin_group("object");
///     scene.end_group();
class qorSceneapi_oo {
public:
    /// Borrows `factory`. Where that has no scene to offer, `get_api` is null, nothing has been
    /// written, and nothing may be sent.
    explicit qorSceneapi_oo(LightFactory& factory);

    /// A wrapper that swallows everything.
    qorSceneapi_oo();

    qorSceneapi_oo(const qorSceneapi_oo&) = delete;
    qorSceneapi_oo& operator=(const qorSceneapi_oo&) = delete;
    virtual ~qorSceneapi_oo();

    /// Borrows `api` and starts the running numbers anew.
    virtual void set_api(qorScene_api* api);

    /// A number for the next object, announced to the scene. The first is 1.
    virtual int next_id();

    virtual void emit(LightNode& node);

    /// `fraction` goes from 0 to 1.
    virtual void progress(const std::string& text, float fraction);

    virtual bool begin_group(const std::string& name);
    virtual void end_group();

    /// Opens a numbered shader and gives its number. The first is 1.
    virtual int begin_shader(const std::string& type);
    virtual void end_shader();

    /// Throws `std::invalid_argument`: without this form, a literal would go out as a bool.
    virtual void set_parameter(const std::string& name, const char* value);
    /// A pointer to anything else would go out as a bool, too.
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

    /// Three floats to an element; floats behind the last whole element stay out.
    virtual bool set_vec3_array(const std::string& name, const std::vector<float>& values);

    /// Multiplies onto the current transform.
    virtual void transform(const qorMatrix& matrix);
    virtual void transform(const qorMatrix& matrix, bool replace);

    virtual void set_flags(std::uint32_t flags);

    /// The interface behind this wrapper, borrowed from the factory; null if that has no scene.
    virtual qorScene_api* get_api();

    /// A remark and an error for the reader of the scene.
    void print_message(const std::string& text);
    void print_error(const std::string& text);

private:
    void start();

    std::unique_ptr<NullApi> own_api_;           // of a wrapper that swallows everything
    std::unique_ptr<LightFactory> own_factory_;  // over `own_api_`
    qorScene_api* api_ = nullptr;
    LightFactory* factory_;
    std::uint32_t shader_id_ = 0;
    std::uint32_t object_id_ = 0;
};

}  // namespace qor
