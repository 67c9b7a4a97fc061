#include "importers/sceneapi/dev/qorsceneapi_oo.h"

#include <stdexcept>

#include "importers/sceneapi/dev/build_time.h"
#include "importers/sceneapi/dev/light_factory.h"
#include "importers/sceneapi/dev/light_node.h"
#include "importers/sceneapi/dev/null_api.h"
#include "importers/sceneapi/dev/parameter_codes.h"
#include "importers/sceneapi/dev/pass_through_factory.h"

namespace qor {

namespace {

constexpr int kMajorVersion = 11;
constexpr int kMinorVersion = 2;
constexpr int kPatchVersion = 0;
constexpr std::uint32_t kFormatVersion = 9;

std::string banner() {
    return "Velmora SceneApi oo " + std::to_string(kMajorVersion) + "." +
           std::to_string(kMinorVersion) + "." + std::to_string(kPatchVersion) + "  (built " +
           build_time() + ")";
}

template <typename Element>
bool send_array(qorScene_api& api, const std::string& name, std::int32_t element_code,
                const std::vector<Element>& values) {
    const qorArray array = {values.data(), static_cast<std::uint32_t>(values.size())};
    return api.set_parameter(name.c_str(), parameter_code::kArray | element_code, &array);
}

}  // namespace

qorSceneapi_oo::qorSceneapi_oo(LightFactory& factory) : factory_(&factory) {
    start();
}

qorSceneapi_oo::qorSceneapi_oo()
    : own_api_(std::make_unique<NullApi>()),
      own_factory_(std::make_unique<PassThroughFactory>(own_api_.get())),
      factory_(own_factory_.get()) {
    start();
}

qorSceneapi_oo::~qorSceneapi_oo() = default;

void qorSceneapi_oo::start() {
    qorSceneapi_oo::set_api(factory_->get_api());
    if (api_ == nullptr) {
        return;
    }
    factory_->write_header(*this);
    print_message(banner());
    api_->set_version(kFormatVersion);
}

void qorSceneapi_oo::set_api(qorScene_api* api) {
    api_ = api;
    shader_id_ = 0;
    object_id_ = 0;
}

int qorSceneapi_oo::next_id() {
    ++object_id_;
    api_->set_id(object_id_);
    return static_cast<int>(object_id_);
}

void qorSceneapi_oo::emit(LightNode& node) {
    node.emit(*this);
}

void qorSceneapi_oo::progress(const std::string& text, float fraction) {
    api_->set_progress(text.c_str(), fraction);
}

bool qorSceneapi_oo::begin_group(const std::string& name) {
    return api_->begin_group(name.c_str(), true);
}

void qorSceneapi_oo::end_group() {
    api_->end_group();
}

int qorSceneapi_oo::begin_shader(const std::string& type) {
    ++shader_id_;
    const int number = static_cast<int>(shader_id_);
    api_->begin_shader_id(type.c_str(), number);
    return number;
}

void qorSceneapi_oo::end_shader() {
    api_->end_shader();
}

void qorSceneapi_oo::set_parameter(const std::string&, const char*) {
    throw std::invalid_argument("const char * are deprecated");
}

bool qorSceneapi_oo::set_parameter(const std::string& name, const std::string& value) {
    return api_->set_parameter(name.c_str(), parameter_code::kText, value.c_str());
}

bool qorSceneapi_oo::set_parameter(const std::string& name, const qorColor& value) {
    return api_->set_parameter(name.c_str(), parameter_code::kColor, &value);
}

bool qorSceneapi_oo::set_parameter(const std::string& name, const qorVector& value) {
    return api_->set_parameter(name.c_str(), parameter_code::kVector, &value);
}

bool qorSceneapi_oo::set_parameter(const std::string& name, double value) {
    return api_->set_parameter(name.c_str(), parameter_code::kDouble, &value);
}

bool qorSceneapi_oo::set_parameter(const std::string& name, float value) {
    return api_->set_parameter(name.c_str(), parameter_code::kFloat, &value);
}

bool qorSceneapi_oo::set_parameter(const std::string& name, int value) {
    return api_->set_parameter(name.c_str(), parameter_code::kInt, &value);
}

bool qorSceneapi_oo::set_parameter(const std::string& name, bool value) {
    const std::int32_t on = value ? 1 : 0;
    return api_->set_parameter(name.c_str(), parameter_code::kBool, &on);
}

bool qorSceneapi_oo::set_array(const std::string& name, const std::vector<qorMatrix>& values) {
    return send_array(*api_, name, parameter_code::kMatrix, values);
}

bool qorSceneapi_oo::set_array(const std::string& name, const std::vector<int>& values) {
    return send_array(*api_, name, parameter_code::kInt, values);
}

bool qorSceneapi_oo::set_array(const std::string& name, const std::vector<float>& values) {
    return send_array(*api_, name, parameter_code::kFloat, values);
}

bool qorSceneapi_oo::set_array(const std::string& name, const std::vector<double>& values) {
    return send_array(*api_, name, parameter_code::kDouble, values);
}

bool qorSceneapi_oo::set_vec3_array(const std::string& name, const std::vector<float>& values) {
    const qorArray array = {values.data(), static_cast<std::uint32_t>(values.size() / 3)};
    return api_->set_parameter(name.c_str(), parameter_code::kArray | parameter_code::kColor,
                               &array);
}

void qorSceneapi_oo::transform(const qorMatrix& matrix) {
    transform(matrix, false);
}

void qorSceneapi_oo::transform(const qorMatrix& matrix, bool replace) {
    if (replace) {
        api_->set_transform(matrix);
    } else {
        api_->transform(matrix);
    }
}

void qorSceneapi_oo::set_flags(std::uint32_t flags) {
    api_->set_flags(flags);
}

qorScene_api* qorSceneapi_oo::get_api() {
    return api_;
}

void qorSceneapi_oo::print_message(const std::string& text) {
    api_->print_message(text.c_str());
}

void qorSceneapi_oo::print_error(const std::string& text) {
    api_->print_error(text.c_str());
}

}  // namespace qor
