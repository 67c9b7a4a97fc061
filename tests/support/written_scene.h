#pragma once

#include <functional>
#include <string>

#include "importers/sceneapi/dev/qorscene_api_file.h"
#include "platform/files.h"
#include "tests/support/temporary_folder.h"

/// The bytes that the file back end writes for some calls.
inline std::string written_by(const std::function<void(qorScene_api_file&)>& calls,
                              bool binary_arrays = true) {
    const TemporaryFolder folder;
    std::FILE* stream = platform::open_file(folder / "scene", "wb");
    {
        qorScene_api_file api(stream, binary_arrays);
        calls(api);
    }
    std::fclose(stream);
    return file_contents(folder / "scene");
}
