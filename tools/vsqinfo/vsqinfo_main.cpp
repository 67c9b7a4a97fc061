#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

#include "tools/vsqinfo/checks/file_report.h"
#include "tools/vsqinfo/display_text.h"
#include "tools/vsqinfo/group_tree.h"

namespace {

struct Arguments {
    std::vector<std::string> files;
    bool tree = false;
    bool json = false;
    bool checks = false;
};

void tell_failure(const vsqinfo::FileReport& report) {
    if (!report.failure.empty()) {
        std::cout.flush();
        std::cerr << "vsqinfo: " << vsqinfo::display_text(report.file) << ": " << report.failure
                  << '\n';
    }
}

// True if no file has an error.
bool show_files(const Arguments& arguments) {
    bool is_sound = true;
    for (const std::string& file : arguments.files) {
        if (arguments.files.size() > 1) {
            std::cout << (file == arguments.files.front() ? "" : "\n")
                      << vsqinfo::display_text(file) << '\n';
        }
        vsqinfo::GroupTree tree(std::cout);
        const vsqinfo::FileReport report =
            vsqinfo::report_on_file(file, arguments.tree ? &tree : nullptr);
        if (arguments.tree && report.scene) {
            std::cout << '\n';
        }
        // A reason that is all there is to tell stands on standard error alone.
        if (report.scene || report.mesh || report.findings.checks().size() > 1) {
            std::cout << vsqinfo::report_text(report);
        }
        tell_failure(report);
        is_sound = is_sound && !report.has_errors();
    }
    return is_sound;
}

bool show_json(const Arguments& arguments) {
    std::vector<vsqinfo::FileReport> reports;
    for (const std::string& file : arguments.files) {
        reports.push_back(vsqinfo::report_on_file(file));
        tell_failure(reports.back());
    }
    std::cout << vsqinfo::reports_json(reports);
    return std::none_of(reports.begin(), reports.end(),
                        [](const vsqinfo::FileReport& report) { return report.has_errors(); });
}

// `words` are the arguments as UTF-8, without the program's name.
int run(std::vector<std::string> words) {
    CLI::App app("Prints what scene files and mesh files hold, and what is wrong with them.",
                 "vsqinfo");
    // Otherwise a path that begins with a slash would be an option on Windows.
    app.allow_windows_style_options(false);
    app.set_version_flag("--version", "vsqinfo " VSQ_VERSION);
    Arguments arguments;
    app.add_option("FILE", arguments.files,
                   "Scene files (.vsq) or mesh files (.qorT); - is standard input");
    CLI::Option* tree =
        app.add_flag("--tree", arguments.tree,
                     "Before the summary, print a scene's tree of groups with their matrices");
    app.add_flag("--json", arguments.json, "Print one JSON object instead")->excludes(tree);
    app.add_flag("--checks", arguments.checks, "List what is checked, and do nothing else");
    try {
        std::reverse(words.begin(), words.end());
        app.parse(std::move(words));
        if (arguments.files.empty() && !arguments.checks) {
            throw CLI::RequiredError("FILE");
        }
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 1;
    }

    std::ios::sync_with_stdio(false);
#ifdef _WIN32
    _setmode(_fileno(stdin), _O_BINARY);
#endif
    bool is_sound = true;
    if (arguments.checks) {
        std::cout << vsqinfo::list_of_checks();
    } else {
        is_sound = arguments.json ? show_json(arguments) : show_files(arguments);
    }
    std::cout.flush();
    return std::cout && is_sound ? 0 : 1;
}

}  // namespace

// Windows passes UTF-16 to `wmain`; for `main` it would convert paths to the local code page.
#ifdef _WIN32
int wmain(int argc, wchar_t** argv) {
#else
int main(int argc, char** argv) {
#endif
    std::vector<std::string> words;
    for (int i = 1; i < argc; ++i) {
        words.push_back(std::filesystem::path(argv[i]).u8string());
    }
    return run(std::move(words));
}
