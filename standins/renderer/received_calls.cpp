#include <utility>

#include "standins/renderer/received_scene.h"
#include "standins/renderer/scene_calls.h"

// Turns frames back into calls of the scene API.

namespace velmora {

namespace {

template <typename Value>
Value take(FrameReader& frame, ReceivedScene&) {
    return frame.take<Value>();
}

template <>
const char* take<const char*>(FrameReader& frame, ReceivedScene&) {
    return frame.take_text();
}

template <>
qorShaderHandle take<qorShaderHandle>(FrameReader& frame, ReceivedScene& scene) {
    return scene.shader(frame.take<std::uint64_t>());
}

template <typename... Values>
std::tuple<Values...> take_all(FrameReader& frame, ReceivedScene& scene,
                               const std::tuple<Values...>*) {
    return std::tuple<Values...>{take<Values>(frame, scene)...};  // braces evaluate in order
}

// Performs a call whose arguments are all plain values.
template <auto Call>
void perform(FrameReader& frame, ReceivedScene& scene) {
    using Values = typename ArgumentsOf<decltype(Call)>::Values;
    const Values values = take_all(frame, scene, static_cast<const Values*>(nullptr));
    frame.expect_end();
    std::apply([&scene](const auto&... value) { (scene.writer().*Call)(value...); }, values);
}

template <>
void perform<&qorScene_api::write_text>(FrameReader& frame, ReceivedScene& scene) {
    const char* text = frame.take_text();
    frame.expect_end();
    scene.writer().write_text("%s", text_or_empty(text).data());
}

using Bytes = std::pair<const unsigned char*, std::int32_t>;

Bytes take_sized_bytes(FrameReader& frame) {
    const FrameReader::Block block = frame.take_block();
    frame.expect_end();
    if (block.size > 0x7fffffff) {
        throw MalformedFrame();
    }
    return {reinterpret_cast<const unsigned char*>(block.data),
            static_cast<std::int32_t>(block.size)};
}

template <>
void perform<&qorScene_api::set_icon>(FrameReader& frame, ReceivedScene& scene) {
    const Bytes icon = take_sized_bytes(frame);
    scene.writer().set_icon(icon.first, icon.second);
}

template <>
void perform<&qorScene_api::set_binary_parameter>(FrameReader& frame, ReceivedScene& scene) {
    const char* name = frame.take_text();
    const Bytes value = take_sized_bytes(frame);
    scene.writer().set_binary_parameter(name, value.first, value.second);
}

// Calls `use` with the pointer that the scene API expects for this type code.
template <typename Use>
void with_value(FrameReader& frame, ReceivedScene& scene, std::int32_t type, Use use) {
    if (is_text_code(type)) {
        const char* text = frame.take_text();
        frame.expect_end();
        use(type == parameter_code::kText ? static_cast<const void*>(text) : &text);
    } else if (type == parameter_code::kShader) {
        const auto shader = take<qorShaderHandle>(frame, scene);
        frame.expect_end();
        use(&shader);
    } else if (const std::size_t size = value_size(type); size > 0) {
        const FrameReader::Block value = frame.take_block();
        frame.expect_end();
        if (value.size != size) {
            throw MalformedFrame();
        }
        use(value.data);
    } else {
        frame.expect_end();
        use(nullptr);
    }
}

template <typename Use>
void with_array(FrameReader& frame, std::int32_t element_code, Use use) {
    qorArray array = {nullptr, frame.take<std::uint32_t>()};
    std::vector<const char*> texts;
    if (is_text_code(element_code)) {
        for (std::uint32_t i = 0; i < array.count; ++i) {
            texts.push_back(frame.take_text());
        }
        array.data = texts.data();
    } else if (const std::uint64_t size = value_size(element_code); size > 0) {
        const FrameReader::Block values = frame.take_block();
        if (values.size != size * array.count) {
            throw MalformedFrame();
        }
        array.data = values.data;
    } else {
        array.count = 0;  // such an array has no data
    }
    frame.expect_end();
    use(&array);
}

template <>
void perform<&qorScene_api::set_parameter>(FrameReader& frame, ReceivedScene& scene) {
    const char* name = frame.take_text();
    const auto type = frame.take<std::int32_t>();
    const auto set = [&](const void* value) { scene.writer().set_parameter(name, type, value); };
    if ((type & parameter_code::kArray) != 0) {
        with_array(frame, type & ~parameter_code::kArray, set);
    } else {
        with_value(frame, scene, type, set);
    }
}

template <>
void perform<&qorScene_api::add_array_element>(FrameReader& frame, ReceivedScene& scene) {
    const auto type = frame.take<std::int32_t>();
    with_value(frame, scene, type,
               [&](const void* value) { scene.writer().add_array_element(type, value); });
}

using Perform = void (*)(FrameReader&, ReceivedScene&);

template <auto... Calls>
Perform find_call(std::uint64_t operation, CallList<Calls...>) {
    constexpr Perform kCalls[] = {perform<Calls>...};
    const std::uint64_t place = operation - operation::kFirstSceneCall;
    if (operation < operation::kFirstSceneCall || place >= sizeof...(Calls)) {
        throw MalformedFrame();
    }
    return kCalls[place];
}

}  // namespace

void ReceivedScene::call(std::uint64_t operation, const char* arguments, std::uint64_t size) {
    received_ += sizeof(FrameHead) + size;
    FrameReader frame(arguments, size);
    find_call(operation, SceneCalls())(frame, *this);
}

}  // namespace velmora
