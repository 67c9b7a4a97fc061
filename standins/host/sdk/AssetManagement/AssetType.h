#pragma once

namespace MaxSDK {
namespace AssetManagement {

/// The kind of file that a folder is searched for.
enum AssetType : int { kPhotometricAsset = 3 };

}  // namespace AssetManagement
}  // namespace MaxSDK
