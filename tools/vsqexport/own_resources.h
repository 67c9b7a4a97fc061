#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace vsqexport {

/// A resource folder for one process alone: its drawn pictures and mesh files go there, and not to
/// the renderer's own folder. For this the process gets a registry of its own, in which the
/// renderer is registered with that folder, and a copy of the user's settings.
class OwnResources {
public:
    /// Makes the folder, and keeps the registry in `scratch`, a folder that must not exist yet.
    /// Throws `std::runtime_error` with one line if that fails, or if the path is longer than the
    /// plug-in reads.
    OwnResources(const std::string& folder, std::filesystem::path scratch);
    OwnResources(const OwnResources&) = delete;
    OwnResources& operator=(const OwnResources&) = delete;
    /// Removes the registry, and what is empty of the resource folder.
    ~OwnResources();

    /// The variables with which the process is to be started.
    std::map<std::string, std::string> environment() const;

    /// Removes the files that have come since this object was made.
    void drop_new_files();

private:
    std::filesystem::path folder_;
    std::filesystem::path scratch_;
    std::set<std::filesystem::path> files_before_;
};

}  // namespace vsqexport
