#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "tests/vsqinfo/scene_text.h"
#include "tools/vsqinfo/display_text.h"
#include "tools/vsqinfo/group_tree.h"
#include "tools/vsqinfo/vsq_summary.h"

namespace {

using namespace scene_text;

TEST(DisplayText, KeepsUtf8AndEscapesTheRest) {
    const struct {
        const char* bytes;
        const char* wanted;
    } cases[] = {
        {"Box 01", "Box 01"},
        {"K\xc3\xb6ln \xe2\x82\xac \xf0\x9f\x98\x80", "K\xc3\xb6ln \xe2\x82\xac \xf0\x9f\x98\x80"},
        {"K\xf6ln", "K\\xf6ln"},                                  // Latin 1
        {"\x1b[2J\n", "\\x1b[2J\\x0a"},                           // would clear the terminal
        {"\xc2\x9b", "\\xc2\\x9b"},                               // a control character in UTF-8
        {"\xc0\xaf \xed\xa0\x80", "\\xc0\\xaf \\xed\\xa0\\x80"},  // overlong, surrogate
        {"\xe2\x82", "\\xe2\\x82"},                               // cut
    };
    for (const auto& one : cases)
        EXPECT_EQ(vsqinfo::display_text(one.bytes), one.wanted);
}

TEST(GroupTree, ShowsTheGroupsWithTheirContent) {
    std::ostringstream out;
    vsqinfo::GroupTree tree(out);
    read(in_root("\ncamera \"c\" {\n}\n\ngroup \"a\" {\n\ngroup xXc3a4 {\n}\nobject \"o\" {\n"
                 "material \"m\" {\n}\n}\ntransform 1 0 0 0 0 1 0 0 0 0 1 0 2.5 0 nan 1\n}\n"),
         &tree);
    EXPECT_EQ(out.str(),
              "group \"object\"\n"
              "  camera \"c\"\n"
              "  group \"a\"\n"
              "    group \"\xc3\xa4\"\n"
              "    object \"o\"\n"
              "    transform 1 0 0 0, 0 1 0 0, 0 0 1 0, 2.5 0 nan 1\n");
}

TEST(SummaryText, AlignsItsLinesAndLeavesOutEmptyDetails) {
    const std::string file = in_root("\ngroup \"a\" {\n}\n#error \"gone\"\n");
    EXPECT_EQ(vsqinfo::summary_text(read(file)), "size          " + std::to_string(file.size()) +
                                                     " bytes\n"
                                                     "format        version 9, id 1\n"
                                                     "root group    \"object\"\n"
                                                     "groups        1\n"
                                                     "objects       0\n"
                                                     "triangles     0\n"
                                                     "curves        0\n"
                                                     "materials     0\n"
                                                     "textures      0\n"
                                                     "lights        0\n"
                                                     "cameras       0\n"
                                                     "animations    0\n"
                                                     "matrices      0\n"
                                                     "errors        1\n"
                                                     "              gone\n");
}

}  // namespace
