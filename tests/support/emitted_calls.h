#pragma once

#include <functional>
#include <string>

#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "tests/support/recording_api.h"
#include "tests/support/written_scene.h"

/// What somebody does to a scene.
using SceneUse = std::function<void(qor::qorSceneapi_oo&)>;

/// The calls that reach the scene API, a line for each, without the opening ones of a stream.
inline std::string emitted_calls(const SceneUse& use) {
    RecordingApi recorded;
    qor::qorSceneapi_oo scene;
    scene.set_api(&recorded);
    use(scene);
    return recorded.calls;
}

/// The bytes of the same in a scene file, with arrays in text form.
inline std::string emitted_text(const SceneUse& use) {
    return written_by(
        [&use](qorScene_api_file& api) {
            qor::qorSceneapi_oo scene;
            scene.set_api(&api);
            use(scene);
        },
        false);
}
