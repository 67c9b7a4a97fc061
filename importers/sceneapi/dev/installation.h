#pragma once

#include <cstdint>
#include <string>

namespace qor {

/// Major versions of the renderer: those whose resources, ports and log will do, both ends
/// included, and the one that scenes are made for.
constexpr int kOldestRenderer = 5;
constexpr int kNewestRenderer = 20;
constexpr int kSceneRenderer = 11;

/// The registry key of an installation by its major version, and the value that names the folder of
/// its resources.
std::string installation_key(int version);
constexpr char kResourceFolderValue[] = "ResourceFolder";

/// The renderer's installation on this machine, as it stands in the registry.
///
/// Each operation takes the range of major versions that it accepts, both ends included, and looks
/// everything up afresh. An installation counts only while its program can be read and its resource
/// folder exists. Nothing is reported: an empty text, a status or false is the whole answer.
class Installation {
public:
    static const Installation& get();

    /// Full path of the renderer's program; empty if there is no installation.
    std::string bin_name(int min_version, int max_version) const;

    /// Folder of the live library, or empty. `version` becomes the major version of the
    /// installation that was found, also if that doesn't name the folder, and else stays as it was.
    std::string bin_folder(int min_version, int max_version, int& version) const;

    /// Folder of the renderer's resources, or empty.
    std::string resource_folder(int min_version, int max_version) const;

    enum class PortStatus : int {
        kBothRead = 0,
        kNoLastPort = -1,
        kNoFirstPort = -2,
        kNoInstallation = -3,
    };

    /// A port that isn't found is left as it was.
    PortStatus live_link_ports(int min_version, int max_version, std::int32_t& first_port,
                               std::int32_t& last_port) const;

    /// Starts the renderer and doesn't wait for it. False if there is none or it can't be started.
    bool launch(int min_version, int max_version) const;

private:
    Installation() = default;
};

}  // namespace qor
