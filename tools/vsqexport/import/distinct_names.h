#pragma once

#include <map>
#include <set>
#include <string>

namespace vsqexport {

/// Tells names apart that would be the same in a scene. A scene keeps the low byte of each 16-bit
/// unit of a name, so different names can become one.
class DistinctNames {
public:
    /// The name itself, or, if an earlier one is the same in the scene, with the first free number
    /// behind it.
    std::string distinct(const std::string& name_utf8);

    /// The same, but a name that is given again stays as it is: only different names are told
    /// apart.
    std::string told_apart(const std::string& name_utf8);

private:
    std::set<std::string> taken_;                // as they are in the scene
    std::map<std::string, int> last_numbers_;    // by the form in the scene
    std::map<std::string, std::string> chosen_;  // by the name that was asked for
};

}  // namespace vsqexport
