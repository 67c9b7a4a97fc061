#pragma once

#include <functional>
#include <string>

#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "tests/support/recording_api.h"
#include "tests/support/written_scene.h"

/// Calls that a test makes on a scene.
using SceneUse = std::function<void(qor::qorSceneapi_oo&)>;

/// The calls that `use` causes on the scene API, one per line.
inline std::string emitted_calls(const SceneUse& use) {
    RecordingApi recorded;
    qor::qorSceneapi_oo scene;
    scene.set_api(&recorded);
    use(scene);
    return recorded.calls;
}

/// The bytes that `use` writes to a scene file, with arrays in text form.
inline std::string emitted_text(const SceneUse& use) {
    return written_by(
        [&use](qorScene_api_file& api) {
            qor::qorSceneapi_oo scene;
            scene.set_api(&api);
            use(scene);
        },
        false);
}
