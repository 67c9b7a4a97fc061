#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "tools/vsqinfo/byte_source.h"
#include "tools/vsqinfo/shader_numbers.h"
#include "tools/vsqinfo/triangle_check.h"
#include "tools/vsqinfo/vsq_blocks.h"
#include "tools/vsqinfo/vsq_listener.h"
#include "tools/vsqinfo/vsq_summary.h"
#include "tools/vsqinfo/vsq_tokens.h"

namespace vsqinfo {

/// Reads one scene file, for `read_vsq`.
///
/// Nesting is kept in a stack of small entries, not in recursive calls. A shader that is the value
/// of a parameter, or an element of an array, is pushed there, and its closing brace resumes what
/// the shader interrupted. There is a source file each for the header and the statements, blocks,
/// parameters, and arrays.
class VsqParser {
public:
    /// Both are borrowed; `listener` may be null.
    VsqParser(std::istream& stream, VsqListener* listener)
        : source_(stream),
          listener_(listener ? *listener : no_listener_),
          tokens_(source_, listener_) {}

    /// Reads the whole file. Call this only once.
    VsqSummary read();

private:
    // What follows a value: after a parameter with a quoted name, a comma comes before the line
    // feed.
    enum class Ending : std::uint8_t { kLine, kComma, kElement };

    enum class Placement { kPlaced, kDefined, kModified };

    struct OpenBlock {
        FilePlace place;  // where the block begins
        BlockKind kind;
        Ending ending;         // what follows the closing brace
        bool is_environment;   // for shaders
        bool is_placed_light;  // for objects: a light shader was found in it
        bool is_listened_to;   // for arrays
    };

    // The state of an array while its elements are read.
    struct ArrayScan {
        const std::string* name = nullptr;  // null after a shader among the elements
        FilePlace place;
        bool is_listened_to = false;
        bool in_animation_matrices = false;
        int indices = TriangleCheck::kNoIndices;
        VsqArrayEnd found;
        std::uint64_t element_numbers = 0;
        bool element_is_finite = true;
    };

    static constexpr std::size_t kMatrixNumbers = 16;

    struct Statement {
        std::string_view word;
        BlockSet allowed_in;
        bool may_name_parameter;  // in blocks where the statement isn't allowed
        void (VsqParser::*read)(const Statement&);
    };
    static const Statement kStatements[];

    BlockKind block() const { return stack_.empty() ? BlockKind::kTop : stack_.back().kind; }

    // The header, the end and the loop in between.
    void read_header();
    void expect_header(std::string_view text);
    bool read_statement();
    void check_whole();

    // Statements.
    void read_directive();
    void read_error();
    void read_word_statement();
    void check_place(std::string_view word, BlockSet allowed_in) const;
    void tell(std::string_view word, std::string_view text = {},
              std::optional<std::int64_t> number = {});
    std::string_view read_number_word(std::string_view where);
    double read_number(std::string_view where);
    void read_version(const Statement&);
    void read_flags(const Statement&);
    void read_number_statement(const Statement&);
    void read_name_statement(const Statement&);
    void read_attribute(const Statement&);
    void read_progress(const Statement&);
    void read_icon(const Statement&);
    void read_bare(const Statement&);
    void read_transform(const Statement&);
    void read_set(const Statement&);
    void read_vector(const Statement&);
    void read_matrix(bool replaces);
    void read_assignment(const Statement&);
    std::int64_t read_shader_number();

    // Blocks.
    void read_block_head(const BlockHead& head, Placement placement);
    void read_head_names(HeadForm form, VsqBlock& head);
    void read_shader_head(VsqBlock& head);
    void read_brace();
    void open_anonymous_shader(const std::string& name, const std::string& type, Ending ending);
    void open_block(const VsqBlock& head, BlockKind kind, Ending ending);
    void count_block(const VsqBlock& head, BlockKind kind, Placement placement);
    void begin_shader(const VsqBlock& head, OpenBlock& shader);
    void close_block();
    void end_geometry();

    // Parameters and their values.
    void read_quoted_parameter();
    void read_plain_parameter(std::string_view first_word);
    void read_name_value(Ending ending);
    void read_shader_value();
    void keep_value_word(std::string_view word, FilePlace place);
    void end_value(Ending ending);
    void note_parameter(ValueForm form, bool is_quoted, std::optional<std::int64_t> shader = {});

    // Arrays.
    void read_array(Ending ending);
    void resume_array();
    void read_elements(ArrayScan& array, Ending ending);
    void read_element_word(ArrayScan& array);
    void end_element(ArrayScan& array);
    void read_body(ArrayScan& array);
    template <typename Number>
    void read_numbers_of_body(ArrayScan& array, std::uint64_t count);
    void end_array(const ArrayScan& array);
    [[noreturn]] void fail_in_body(const ArrayScan& array);

    VsqListener no_listener_;
    ByteSource source_;
    VsqListener& listener_;
    VsqTokens tokens_;
    VsqSummary summary_;

    std::vector<OpenBlock> stack_;
    FilePlace statement_place_;
    bool has_version_ = false;
    bool has_print_ = false;

    std::string name_;   // the name of the parameter, or kind of the assignment, being read
    std::string value_;  // its value as text
    std::string text_;

    std::string geometry_type_;  // geometries don't nest, so one type and one check are enough
    TriangleCheck triangle_check_;
    ShaderNumbers shader_numbers_;
    std::unordered_set<std::string> materials_;
    std::unordered_set<std::string> textures_;
    std::unordered_set<std::string> environments_;
    std::set<std::string> libraries_;
    std::uint64_t object_depth_ = 0;  // entries of the stack up to the open object; 0 without one
};

}  // namespace vsqinfo
