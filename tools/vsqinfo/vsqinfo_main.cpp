#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "tools/vsqinfo/display_text.h"
#include "tools/vsqinfo/group_tree.h"
#include "tools/vsqinfo/input_file.h"
#include "tools/vsqinfo/qort_reader.h"
#include "tools/vsqinfo/vsq_reader.h"
#include "tools/vsqinfo/vsq_summary.h"

namespace {

struct Arguments {
    std::string file;
    bool tree = false;
};

void show_scene(std::istream& stream, bool with_tree) {
    vsqinfo::GroupTree tree(std::cout);
    const vsqinfo::VsqSummary summary = vsqinfo::read_vsq(stream, with_tree ? &tree : nullptr);
    if (with_tree) {
        std::cout << '\n';
    }
    std::cout << vsqinfo::summary_text(summary);
}

// The contents tell the kind of the file; its name can be anything.
void show_file(const Arguments& arguments) {
    std::ifstream stream = vsqinfo::open_input_file(arguments.file);
    if (vsqinfo::begins_as_qort(stream)) {
        std::cout << vsqinfo::summary_text(vsqinfo::read_qort(stream));
    } else {
        show_scene(stream, arguments.tree);
    }
}

// `words` are the arguments as UTF-8, without the program's name.
int run(std::vector<std::string> words) {
    CLI::App app("Prints what a scene file or a mesh file holds, or where it is malformed.",
                 "vsqinfo");
    // Otherwise a path that begins with a slash would be an option on Windows.
    app.allow_windows_style_options(false);
    Arguments arguments;
    app.add_option("FILE", arguments.file, "Scene file (.vsq) or mesh file (.qorT)")->required();
    app.add_flag("--tree", arguments.tree,
                 "Before the summary, print a scene's tree of groups with their matrices");
    try {
        std::reverse(words.begin(), words.end());
        app.parse(std::move(words));
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 1;
    }

    try {
        std::ios::sync_with_stdio(false);
        show_file(arguments);
        std::cout.flush();
        return std::cout ? 0 : 1;
    } catch (const std::exception& error) {
        std::cout.flush();
        std::cerr << "vsqinfo: " << vsqinfo::display_text(arguments.file) << ": " << error.what()
                  << '\n';
        return 1;
    }
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
