#pragma once

#include <memory>

#include "standins/host/sdk/strclass.h"

namespace MaxSDK {
namespace Util {

class Path {
public:
    Path() = default;
    Path(const MCHAR* path) : path_(path) {}

    /// Resolves a relative path against the current folder.
    const Path& GetResolvedAbsolutePath() const;

    /// Valid as long as the object exists.
    const MCHAR* GetCStr() const { return path_.data(); }
    MSTR GetString() const { return path_; }

private:
    MSTR path_;
    mutable std::shared_ptr<const Path> resolved_;
};

}  // namespace Util
}  // namespace MaxSDK
