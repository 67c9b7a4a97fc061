#include "tools/vsqexport/import/texture_files.h"

#include <algorithm>
#include <cctype>
#include <system_error>

namespace vsqexport {
namespace {

namespace fs = std::filesystem;

// Relative to the model's folder.
const std::vector<std::vector<std::string>> kUsualFolders = {
    {},         {"textures"}, {"texture"},        {"tex"},       {"maps"},
    {"images"}, {"bitmaps"},  {"..", "textures"}, {"..", "tex"}, {"..", "images"},
};

std::string folded(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return text;
}

bool is_file(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

std::string with_slashes(std::string name) {
    std::replace(name.begin(), name.end(), '\\', '/');
    for (const char* const scheme : {"file:///", "file://"}) {
        if (name.rfind(scheme, 0) == 0) {
            return name.substr(std::char_traits<char>::length(scheme) - 1);
        }
    }
    return name;
}

// Resolves the escapes of a URL: "%20" becomes a blank.
std::string unescaped(const std::string& name) {
    std::string text;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const auto is_digit = [&](std::size_t place) {
            return place < name.size() && std::isxdigit(static_cast<unsigned char>(name[place]));
        };
        if (name[i] == '%' && is_digit(i + 1) && is_digit(i + 2)) {
            text += static_cast<char>(std::stoi(name.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            text += name[i];
        }
    }
    return text;
}

std::vector<std::string> parts_of(const std::string& name) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    while (start <= name.size()) {
        const std::size_t end = std::min(name.find('/', start), name.size());
        const std::string part = name.substr(start, end - start);
        if (!part.empty() && part != ".") {
            parts.push_back(part);
        }
        start = end + 1;
    }
    return parts;
}

}  // namespace

const std::vector<TextureFiles::Entry>& TextureFiles::entries_of(const fs::path& folder) {
    const auto known = listed_.find(folder);
    if (known != listed_.end()) {
        return known->second;
    }
    std::vector<Entry>& entries = listed_[folder];
    std::error_code error;
    for (fs::directory_iterator i(folder.empty() ? fs::path(".") : folder, error), end;
         !error && i != end; i.increment(error)) {
        entries.emplace_back(folded(i->path().filename().u8string()),
                             folder / i->path().filename());
    }
    // The order makes every system take the same one of names that differ only in case.
    std::sort(entries.begin(), entries.end());
    return entries;
}

std::optional<fs::path> TextureFiles::find_below(const fs::path& folder,
                                                 const std::vector<std::string>& parts,
                                                 std::size_t first) {
    fs::path path = folder;
    for (std::size_t i = first; i < parts.size(); ++i) {
        std::error_code error;
        const fs::path exact = path / fs::u8path(parts[i]);
        if (fs::exists(exact, error)) {
            path = exact;
            continue;
        }
        const std::string wanted = folded(parts[i]);
        const std::vector<Entry>& entries = entries_of(path);
        const auto found = std::lower_bound(
            entries.begin(), entries.end(), wanted,
            [](const Entry& entry, const std::string& name) { return entry.first < name; });
        if (found == entries.end() || found->first != wanted) {
            return std::nullopt;
        }
        path = found->second;
    }
    return is_file(path) ? std::optional<fs::path>(path.lexically_normal()) : std::nullopt;
}

std::optional<fs::path> TextureFiles::find_plain(const std::string& name) {
    const fs::path as_named = fs::u8path(name);
    if (as_named.is_absolute() && is_file(as_named)) {
        return as_named;
    }
    const std::vector<std::string> parts = parts_of(name);
    if (parts.empty()) {
        return std::nullopt;
    }
    for (std::size_t first = 0; first < parts.size(); ++first) {
        if (auto found = find_below(model_folder_, parts, first)) {
            return found;
        }
    }
    for (std::vector<std::string> usual : kUsualFolders) {
        usual.push_back(parts.back());
        if (auto found = find_below(model_folder_, usual, 0)) {
            return found;
        }
    }
    return std::nullopt;
}

std::optional<fs::path> TextureFiles::find(const std::string& name_utf8) {
    const std::string name = with_slashes(name_utf8);
    if (auto found = find_plain(name)) {
        return found;
    }
    const std::string other = unescaped(name);
    return other == name ? std::nullopt : find_plain(other);
}

}  // namespace vsqexport
