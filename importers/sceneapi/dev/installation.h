#pragma once

#include <cstdint>
#include <string>

namespace qor {

/// Major versions of the renderer: the range whose resources, ports and log are used, both ends
/// included, and the version that scenes are made for.
constexpr int kOldestRenderer = 5;
constexpr int kNewestRenderer = 20;
constexpr int kSceneRenderer = 11;

/// The registry key of the installation with that major version.
std::string installation_key(int version);

/// The value of that key that names the resource folder.
constexpr char kResourceFolderValue[] = "ResourceFolder";

/// The renderer's installation on this machine, according to the registry.
///
/// Each function takes the range of major versions that it accepts, both ends included, and reads
/// the registry again. An installation counts only if its program is readable and its resource
/// folder exists. Nothing is logged or thrown: failure shows only in the result, as an empty text,
/// a status or false.
class Installation {
public:
    static const Installation& get();

    /// Full path of the renderer's program; empty if there is no installation.
    std::string bin_name(int min_version, int max_version) const;

    /// Folder of the live library, or empty. `version` becomes the major version of the
    /// installation that was found, even if that installation doesn't name the folder. If none was
    /// found, `version` stays unchanged.
    std::string bin_folder(int min_version, int max_version, int& version) const;

    /// Folder of the renderer's resources, or empty.
    std::string resource_folder(int min_version, int max_version) const;

    enum class PortStatus : int {
        kBothRead = 0,
        kNoLastPort = -1,
        kNoFirstPort = -2,
        kNoInstallation = -3,
    };

    /// A port that isn't found stays unchanged.
    PortStatus live_link_ports(int min_version, int max_version, std::int32_t& first_port,
                               std::int32_t& last_port) const;

    /// Starts the renderer and doesn't wait for it. False if there is none or it can't be started.
    bool launch(int min_version, int max_version) const;

private:
    Installation() = default;
};

}  // namespace qor
