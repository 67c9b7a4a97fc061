#include "plugins/3dsmax/export/asset_files.h"

#include "platform/files.h"

namespace {

bool exists(const std::wstring& path) {
    const MSTR text(path.c_str());
    const auto path_utf8 = text.ToUTF8();
    return platform::path_exists(path_utf8.data());
}

}  // namespace

std::wstring FindAssetFile(Interface* host, int asset_type, const std::wstring& name) {
    if (exists(name)) {
        return name;
    }
    const auto type = static_cast<MaxSDK::AssetManagement::AssetType>(asset_type);
    const int count = host->GetAssetDirCount(type);
    for (int i = 0; i < count; ++i) {
        std::wstring path = host->GetAssetDir(i, type);
        if (path.empty() || path.back() != L'\\') {
            path += L'\\';
        }
        path += name;
        if (exists(path)) {
            return path;
        }
    }
    return {};
}
