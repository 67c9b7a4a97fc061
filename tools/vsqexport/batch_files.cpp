#include "tools/vsqexport/batch_files.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <map>
#include <set>
#include <stdexcept>
#include <system_error>

#include "tools/vsqinfo/display_text.h"
#ifdef VSQ_WITH_IMPORTER
#include "tools/vsqexport/import/model_extensions.h"
#endif

namespace vsqexport {

namespace {

namespace fs = std::filesystem;

const std::string kDemoPrefix = "demo:";

struct Source {
    std::string path;
    fs::path name;  // below the folder of outputs
};

bool is_model(const fs::path& path) {
#ifdef VSQ_WITH_IMPORTER
    return is_model_name(path.u8string());
#else
    static_cast<void>(path);
    return false;
#endif
}

std::vector<Source> models_below(const fs::path& folder) {
    std::vector<Source> found;
    std::error_code error;
    for (fs::recursive_directory_iterator i(folder, error), end; !error && i != end;
         i.increment(error)) {
        std::error_code ignored;
        if (i->is_regular_file(ignored) && is_model(i->path())) {
            found.push_back({i->path().u8string(), i->path().lexically_relative(folder)});
        }
    }
    if (error) {
        throw std::runtime_error(vsqinfo::display_text(folder.u8string()) +
                                 ": cannot be searched: " + error.message());
    }
    // The system lists a folder in any order.
    std::sort(found.begin(), found.end(),
              [](const Source& a, const Source& b) { return a.path < b.path; });
    return found;
}

std::vector<Source> all_sources(const std::vector<std::string>& words) {
    std::vector<Source> sources;
    std::set<fs::path> known;
    const auto add = [&](Source source) {
        std::error_code ignored;
        const fs::path real = fs::weakly_canonical(fs::u8path(source.path), ignored);
        if (known.insert(real).second) {
            sources.push_back(std::move(source));
        }
    };
    for (const std::string& word : words) {
        const fs::path path = fs::u8path(word);
        std::error_code ignored;
        if (fs::is_directory(path, ignored)) {
            for (Source& source : models_below(path)) {
                add(std::move(source));
            }
        } else if (word.compare(0, kDemoPrefix.size(), kDemoPrefix) == 0) {
            add({word, fs::u8path(word.substr(kDemoPrefix.size())).filename()});
        } else {
            add({word, path.filename()});
        }
    }
    return sources;
}

// Names that differ only in the case of letters are one name on some systems.
std::string folded(const fs::path& path) {
    std::string text = path.lexically_normal().generic_u8string();
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

fs::path with_ending(const fs::path& name, const std::string& ending) {
    return fs::path(name).concat(ending);
}

// A scene holds paths of pictures with one byte for each character, so the name is plain ASCII.
std::string resources_name(const fs::path& name) {
    std::string plain;
    for (const char c : name.filename().u8string()) {
        const int byte = static_cast<unsigned char>(c);
        char text[4] = {c};
        if (byte >= 0x80) {
            std::snprintf(text, sizeof text, "_%02x", byte);
        }
        plain += text;
    }
    return plain + ".resources";
}

fs::path without_extension(const fs::path& name) {
    return fs::path(name).replace_extension();
}

}  // namespace

std::vector<BatchFile> batch_files(const std::vector<std::string>& sources,
                                   const std::string& out_folder) {
    const std::vector<Source> all = all_sources(sources);
    if (all.empty()) {
        throw std::runtime_error(vsqinfo::display_text(sources.at(0)) + ": holds no model files");
    }
    std::map<std::string, int> uses;
    for (const Source& source : all) {
        ++uses[folded(without_extension(source.name))];
    }
    // A name that nobody else wants is taken before others look for a free one.
    std::set<std::string> taken;
    for (const auto& [name, count] : uses) {
        if (count == 1) {
            taken.insert(name);
        }
    }
    std::vector<BatchFile> files;
    for (const Source& source : all) {
        fs::path name = without_extension(source.name);
        if (uses[folded(name)] > 1) {
            name = source.name;
            for (int number = 2; !taken.insert(folded(name)).second; ++number) {
                name = with_ending(source.name, "-" + std::to_string(number));
            }
        }
        const fs::path target = fs::u8path(out_folder) / name;
        files.push_back({source.path, with_ending(target, ".vsq").u8string(),
                         (target.parent_path() / resources_name(name)).u8string()});
    }
    return files;
}

}  // namespace vsqexport
