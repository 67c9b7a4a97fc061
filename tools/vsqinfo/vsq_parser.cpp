#include "tools/vsqinfo/vsq_parser.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vsqinfo {
namespace {

constexpr std::string_view kHeaderBeforeId = "//---quoria:dal:7---\n//---import:dal:1---\n//---id:";
constexpr std::string_view kHeaderAfterId = "---\n// This is a Velmora scene file\n\n";

constexpr BlockSet kMatrixPlaces =
    block_set(BlockKind::kGroup, BlockKind::kObject, BlockKind::kCamera, BlockKind::kLight,
              BlockKind::kMatrix, BlockKind::kFrame, BlockKind::kMotion);
constexpr BlockSet kAssignmentPlaces = block_set(BlockKind::kMaterial, BlockKind::kLight);
constexpr BlockSet kInstancePlaces =
    block_set(BlockKind::kGroup, BlockKind::kObject, BlockKind::kFrame);
constexpr BlockSet kTopOnly = block_set(BlockKind::kTop);
constexpr BlockSet kAnywhere = ~BlockSet{0};

}  // namespace

using std::int64_t;
using std::uint64_t;

const VsqParser::Statement VsqParser::kStatements[] = {
    {"flags", ~kTopOnly, false, &VsqParser::read_flags},
    {"transform", kMatrixPlaces, false, &VsqParser::read_transform},
    {"set", kMatrixPlaces, false, &VsqParser::read_set},
    {"id", kAnywhere, false, &VsqParser::read_number_statement},
    {"surface", kAssignmentPlaces, true, &VsqParser::read_assignment},
    {"shadow", kAssignmentPlaces, true, &VsqParser::read_assignment},
    {"volume", kAssignmentPlaces, true, &VsqParser::read_assignment},
    {"reflection", kAssignmentPlaces, true, &VsqParser::read_assignment},
    {"scale", kMatrixPlaces, true, &VsqParser::read_vector},
    {"rotate", kMatrixPlaces, true, &VsqParser::read_vector},
    {"translate", kMatrixPlaces, true, &VsqParser::read_vector},
    {"instance", kInstancePlaces, true, &VsqParser::read_name_statement},
    {"attribute", kAnywhere, false, &VsqParser::read_attribute},
    {"progress", kAnywhere, false, &VsqParser::read_progress},
    {"icon", kAnywhere, false, &VsqParser::read_icon},
    {"version", kTopOnly, true, &VsqParser::read_version},
    {"render", kTopOnly, true, &VsqParser::read_bare},
};

VsqSummary VsqParser::read() {
    read_header();
    while (read_statement()) {
    }
    check_whole();
    summary_.file_size = source_.offset();
    summary_.materials = materials_.size();
    summary_.textures = textures_.size();
    summary_.environments = environments_.size();
    summary_.library_paths.assign(libraries_.begin(), libraries_.end());
    return std::move(summary_);
}

void VsqParser::read_header() {
    // Over the live link, the statement "id" comes instead of the header.
    summary_.has_header = source_.peek() != 'i';
    if (!summary_.has_header) {
        return;
    }
    expect_header(kHeaderBeforeId);
    // The number is never negative: the dashes after it don't belong to it.
    const FilePlace start = source_.place();
    std::size_t digits = 0;
    for (int next = source_.peek(); next >= '0' && next <= '9'; next = source_.peek()) {
        if (++digits > 10) {
            tokens_.fail(start, "the number of the header is too large", Check::kHeader);
        }
        summary_.header_id = summary_.header_id * 10 + (next - '0');
        source_.drop();
    }
    if (digits == 0 && source_.peek() != ByteSource::kEnd) {
        tokens_.fail(source_.place(), "the header has no number", Check::kHeader);
    }
    expect_header(kHeaderAfterId);
}

void VsqParser::expect_header(std::string_view text) {
    for (const char wanted : text) {
        const int next = source_.peek();
        if (next == ByteSource::kEnd) {
            tokens_.fail("the file ends inside its header");
        }
        if (next != wanted) {
            tokens_.fail(source_.place(), "this is not the header of a scene file", Check::kHeader);
        }
        source_.drop();
    }
}

// False at the end of the file.
bool VsqParser::read_statement() {
    const bool indented = tokens_.skip_space();
    statement_place_ = source_.place();
    switch (source_.peek()) {
        case ByteSource::kEnd:
            if (indented) {
                tokens_.fail("the last line has no line feed");
            }
            return false;
        case '}':
            close_block();
            return true;
        case '"':
            read_quoted_parameter();
            return true;
        case '#':
            read_directive();
            return true;
        case '/':
            tokens_.expect_text("//");
            tokens_.read_line(text_);
            return true;
        default:
            read_word_statement();
            return true;
    }
}

void VsqParser::check_whole() {
    if (!stack_.empty()) {
        tokens_.fail(std::string("the file ends inside ") + block_phrase(block()) +
                     " that begins at offset " + std::to_string(stack_.back().place.offset));
    }
    if (!has_version_) {
        tokens_.fail("the file ends before its version");
    }
    if (summary_.root_groups == 0) {
        tokens_.fail("the file ends before its root group");
    }
}

void VsqParser::read_directive() {
    source_.drop();
    const std::string directive(tokens_.read_word());
    if (directive == "print" || directive == "error") {
        tokens_.expect(' ');
        tokens_.read_message(text_);
        tell("#" + directive, text_);
        if (directive == "error") {
            read_error();
        } else if (!has_print_) {
            summary_.banner = text_;
        }
        has_print_ = has_print_ || directive == "print";
        return;
    }

    const bool defines = directive == "define";
    if (!defines && directive != "modify") {
        tokens_.fail(statement_place_, shown("#" + directive) + " is not a statement");
    }
    // A camera begins on a new line, even after "#modify".
    tokens_.skip_space();
    const std::string keyword(tokens_.read_word());
    const BlockHead* head = find_block_head(keyword);
    if (!head || (defines ? head->defined_in : head->modified_in) == 0) {
        tokens_.fail(statement_place_,
                     shown("#" + directive) + " is not allowed before " + shown(keyword));
    }
    read_block_head(*head, defines ? Placement::kDefined : Placement::kModified);
}

void VsqParser::read_error() {
    ++summary_.errors;
    if (summary_.error_texts.size() < VsqSummary::kKeptErrors) {
        summary_.error_texts.push_back(text_);
    }
}

void VsqParser::read_word_statement() {
    if (tokens_.at_name()) {
        read_quoted_parameter();
        return;
    }
    const std::string_view word = tokens_.read_word();
    const BlockHead* head = find_block_head(word);
    if (head && head->placed_in != 0) {
        read_block_head(*head, Placement::kPlaced);
        return;
    }
    for (const Statement& statement : kStatements) {
        const bool allowed = has_block(statement.allowed_in, block());
        if (statement.word != word || (!allowed && statement.may_name_parameter)) {
            continue;
        }
        check_place(word, statement.allowed_in);
        tokens_.skip_blanks();
        (this->*statement.read)(statement);
        return;
    }
    read_plain_parameter(word);
}

void VsqParser::check_place(std::string_view word, BlockSet allowed_in) const {
    if (has_block(allowed_in, block())) {
        return;
    }
    std::string reason = shown(word) + " is not allowed in " + block_phrase(block());
    if (!stack_.empty()) {
        reason += ", which begins at offset " + std::to_string(stack_.back().place.offset);
    }
    tokens_.fail(statement_place_, reason, Check::kMisplaced);
}

void VsqParser::tell(std::string_view word, std::string_view text, std::optional<int64_t> number) {
    VsqStatement statement;
    statement.word = word;
    statement.text = text;
    statement.number = number;
    statement.place = statement_place_;
    listener_.statement(statement);
}

void VsqParser::read_version(const Statement& statement) {
    const int64_t version = tokens_.read_integer();
    tokens_.expect_line_end();
    tell(statement.word, {}, version);
    if (!has_version_) {
        summary_.version = version;
    }
    has_version_ = true;
}

void VsqParser::read_flags(const Statement& statement) {
    const int64_t flags = tokens_.read_integer();
    tokens_.expect_line_end();
    tell(statement.word, {}, flags);
    const bool in_root = stack_.size() == 1 && block() == BlockKind::kGroup;
    if (in_root && summary_.root_groups == 1 && !summary_.root_flags) {
        summary_.root_flags = flags;
    }
}

void VsqParser::read_number_statement(const Statement& statement) {
    const int64_t number = tokens_.read_integer();
    tokens_.expect_line_end();
    tell(statement.word, {}, number);
}

void VsqParser::read_name_statement(const Statement& statement) {
    tokens_.read_name(text_);
    tokens_.expect_line_end();
    tell(statement.word, text_);
}

void VsqParser::read_attribute(const Statement& statement) {
    tokens_.read_name(text_);
    tokens_.expect(' ');
    tokens_.read_name(text_);
    tokens_.expect_line_end();
    tell(statement.word, text_);
}

void VsqParser::read_progress(const Statement& statement) {
    tokens_.read_name(text_);
    tokens_.expect(' ');
    read_number_word(statement.word);
    tokens_.expect_line_end();
    tell(statement.word, text_);
}

void VsqParser::read_icon(const Statement& statement) {
    tokens_.read_hex_data();
    tokens_.expect_line_end();
    tell(statement.word);
}

void VsqParser::read_bare(const Statement& statement) {
    tokens_.expect_line_end();
    tell(statement.word);
}

void VsqParser::read_transform(const Statement&) {
    read_matrix(false);
}

void VsqParser::read_set(const Statement&) {
    tokens_.expect_text("transform ");
    read_matrix(true);
}

void VsqParser::read_matrix(bool replaces) {
    VsqMatrix matrix{};
    for (std::size_t i = 0; i < kMatrixNumbers; ++i) {
        tokens_.skip_blanks();
        if (source_.peek() == '\n') {
            listener_.fault(Check::kMatrixCount, source_.place(),
                            "a matrix has 16 numbers, not " + std::to_string(i));
            source_.drop();
            return;
        }
        matrix[i] = read_number("a matrix");
    }
    tokens_.expect_line_end();

    ++(block() == BlockKind::kGroup ? summary_.node_matrices : summary_.other_matrices);
    if (!std::all_of(matrix.begin(), matrix.end(), [](double x) { return std::isfinite(x); })) {
        ++summary_.matrices_not_finite;
    }
    listener_.matrix(matrix, replaces, statement_place_);
}

void VsqParser::read_vector(const Statement& statement) {
    VsqStatement told;
    told.word = statement.word;
    told.place = statement_place_;
    for (double& number : told.vector) {
        tokens_.skip_blanks();
        number = read_number(statement.word);
    }
    tokens_.expect_line_end();
    listener_.statement(told);
}

std::string_view VsqParser::read_number_word(std::string_view where) {
    const FilePlace start = source_.place();
    const std::string_view word = tokens_.read_word();
    const ValueWord value = classify_value(word);
    if (value != ValueWord::kFinite && value != ValueWord::kNotFinite) {
        tokens_.fail(start, shown(word) + " in " + std::string(where) + " is not a number");
    }
    return word;
}

double VsqParser::read_number(std::string_view where) {
    const FilePlace start = source_.place();
    const std::string_view word = read_number_word(where);
    listener_.number(word, start);
    return number_value(word);
}

void VsqParser::read_assignment(const Statement& statement) {
    name_ = statement.word;
    if (statement.word == "reflection") {
        tokens_.expect_text("map ");
        name_ += " map";
        tokens_.skip_blanks();
    }
    if (tokens_.at_name()) {
        read_shader_value();
        return;
    }
    const int64_t number = read_shader_number();
    tokens_.expect_line_end();
    tell(name_, {}, number);
}

int64_t VsqParser::read_shader_number() {
    const FilePlace start = source_.place();
    const int64_t number = tokens_.read_integer();
    if (!shader_numbers_.contains(number)) {
        listener_.fault(Check::kShaderUndefined, start,
                        "shader " + std::to_string(number) + " is used, but not defined above");
    }
    return number;
}

}  // namespace vsqinfo
