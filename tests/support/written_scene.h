#pragma once

#include <functional>
#include <string>

#include "importers/sceneapi/dev/qorscene_api_file.h"
#include "tests/support/temporary_folder.h"

/// The bytes that the file back end writes for some calls. The file's name isn't ASCII, to test
/// that it is read as UTF-8.
inline std::string written_by(const std::function<void(qorScene_api_file&)>& calls,
                              bool binary_arrays = true) {
    const TemporaryFolder folder;
    const std::string path = folder / "sc\xc3\xa9ne";
    {
        qorScene_api_file api(path, binary_arrays);
        calls(api);
    }
    return file_contents(path);
}
