#include "tools/vsqinfo/group_tree.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>

#include "tools/vsqinfo/display_text.h"

namespace vsqinfo {
namespace {

constexpr std::string_view kShownBlocks[] = {"group", "object", "light", "camera"};

// Without this limit, the lines of a scene nested thousands deep would be mostly blanks.
constexpr std::size_t kDeepestIndent = 32;

}  // namespace

void GroupTree::block_begins(const VsqBlock& block) {
    const bool shown = std::find(std::begin(kShownBlocks), std::end(kShownBlocks), block.keyword) !=
                       std::end(kShownBlocks);
    is_shown_.push_back(shown);
    if (!shown) {
        return;
    }
    begin_line();
    out_ << (block.is_definition ? "define " : "") << block.keyword << " \""
         << display_text(block.name) << "\"\n";
    ++depth_;
}

void GroupTree::block_ends() {
    depth_ -= is_shown_.back() ? 1 : 0;
    is_shown_.pop_back();
}

void GroupTree::matrix(const VsqMatrix& matrix, bool replaces, FilePlace) {
    begin_line();
    out_ << (replaces ? "set transform" : "transform");
    for (std::size_t i = 0; i < matrix.size(); ++i) {
        char text[32];
        std::snprintf(text, sizeof text, "%s %g", i % 4 == 0 && i != 0 ? "," : "", matrix[i]);
        out_ << text;
    }
    out_ << '\n';
}

void GroupTree::begin_line() {
    out_ << std::string(2 * std::min(depth_, kDeepestIndent), ' ');
    if (depth_ > kDeepestIndent) {
        out_ << "(depth " << depth_ << ") ";
    }
}

}  // namespace vsqinfo
