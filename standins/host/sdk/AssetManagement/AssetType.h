#pragma once

namespace MaxSDK {
namespace AssetManagement {

/// For which kind of file a folder is searched.
enum AssetType : int { kPhotometricAsset = 3 };

}  // namespace AssetManagement
}  // namespace MaxSDK
