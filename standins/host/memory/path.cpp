#include "standins/host/sdk/path.h"

#include <filesystem>

#include "standins/host/memory/host_text.h"

const MaxSDK::Util::Path& MaxSDK::Util::Path::GetResolvedAbsolutePath() const {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::path absolute =
        fs::absolute(fs::u8path(memhost::utf8_from_units(path_.data())), error);
    if (error) {
        return *this;
    }
    resolved_ = std::make_shared<Path>(memhost::units_from_utf8(absolute.u8string()).c_str());
    return *resolved_;
}
