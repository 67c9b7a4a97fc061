#include "tools/vsqinfo/vsq_parser.h"

#include <algorithm>
#include <iterator>

namespace vsqinfo {
namespace {

constexpr std::string_view kLightShaders[] = {"qor_point_light", "qor_ies_light", "qor_mesh_light"};
constexpr std::string_view kEnvironmentShader = "qor_envmap";

}  // namespace

void VsqParser::read_block_head(const BlockHead& head, Placement placement) {
    const bool placed = placement == Placement::kPlaced;
    const bool defined = placement == Placement::kDefined;
    check_place(head.keyword, placed    ? head.placed_in
                              : defined ? head.defined_in
                                        : head.modified_in);
    VsqBlock block_head;
    block_head.keyword = head.keyword;
    block_head.is_definition = defined;
    block_head.is_change = placement == Placement::kModified;
    block_head.place = statement_place_;
    read_head_names(placed ? head.placed_form : head.defined_form, block_head);

    tokens_.skip_blanks();
    if (head.kind == BlockKind::kMaterial && placed && source_.peek() == '\n') {
        source_.drop();
        ++summary_.material_references;
        tell(head.keyword, block_head.name);
        return;
    }
    read_brace();
    count_block(block_head, head.kind, placement);
    open_block(block_head, head.kind, Ending::kLine);
}

void VsqParser::read_head_names(HeadForm form, VsqBlock& head) {
    tokens_.skip_blanks();
    switch (form) {
        case HeadForm::kBare:
            return;
        case HeadForm::kName:
            tokens_.read_name(head.name);
            return;
        case HeadForm::kOptionalName:
            if (tokens_.at_name()) {
                tokens_.read_name(head.name);
            }
            return;
        case HeadForm::kType:
            tokens_.read_name(head.type);
            return;
        case HeadForm::kTypeAndName:
            tokens_.read_name(head.type);
            tokens_.expect(' ');
            tokens_.read_name(head.name);
            return;
        case HeadForm::kNameAndType:
            tokens_.read_name(head.name);
            tokens_.expect(' ');
            tokens_.read_name(head.type);
            return;
        case HeadForm::kThreeNames:
            tokens_.read_name(head.name);
            tokens_.expect(' ');
            tokens_.read_name(head.type);
            tokens_.expect(' ');
            tokens_.read_name(text_);
            return;
        case HeadForm::kNumber:
            head.name = tokens_.read_word();
            if (const ValueWord value = classify_value(head.name);
                value != ValueWord::kFinite && value != ValueWord::kNotFinite) {
                tokens_.fail(statement_place_, "the head of a block lacks its number");
            }
            return;
        case HeadForm::kShader:
            read_shader_head(head);
            return;
    }
}

void VsqParser::read_shader_head(VsqBlock& head) {
    if (tokens_.at_name()) {
        tokens_.read_name(head.name);
        tokens_.expect(' ');
        tokens_.read_name(head.type);
        return;
    }
    head.number = tokens_.read_integer();
    tokens_.expect(' ');
    // The type has no quotes.
    head.type = tokens_.read_word();
    shader_numbers_.insert(*head.number);
}

void VsqParser::read_brace() {
    tokens_.skip_blanks();
    tokens_.expect('{');
    tokens_.expect_line_end();
}

void VsqParser::open_anonymous_shader(const std::string& name, const std::string& type,
                                      Ending ending) {
    VsqBlock head;
    head.keyword = "shader";
    head.name = name;
    head.type = type;
    head.place = statement_place_;
    read_brace();
    open_block(head, BlockKind::kShader, ending);
}

void VsqParser::open_block(const VsqBlock& head, BlockKind kind, Ending ending) {
    OpenBlock opened{head.place, kind, ending, false, false, false};
    if (kind == BlockKind::kShader) {
        begin_shader(head, opened);
    }
    stack_.push_back(opened);
    listener_.block_begins(head);
}

// Adds the block to the counts of the summary, before it is on the stack.
void VsqParser::count_block(const VsqBlock& head, BlockKind kind, Placement placement) {
    const bool placed = placement == Placement::kPlaced;
    switch (kind) {
        case BlockKind::kGroup:
            if (!placed) {
                ++summary_.definitions;
            } else if (!stack_.empty()) {
                ++summary_.groups;
            } else if (++summary_.root_groups == 1) {
                summary_.root_name = head.name;
            }
            return;
        case BlockKind::kObject:
            ++(placed ? summary_.objects : summary_.definitions);
            object_depth_ = placed ? stack_.size() + 1 : 0;
            return;
        case BlockKind::kGeometry:
            summary_.definitions += placed ? 0 : 1;
            summary_.instances += head.type == "instance" ? 1 : 0;
            geometry_type_ = head.type;
            triangle_check_.begin_geometry();
            return;
        case BlockKind::kMaterial:
            if (placement == Placement::kModified) {
                return;
            }
            ++summary_.material_blocks;
            materials_.insert(head.name);
            return;
        case BlockKind::kLight:
            ++summary_.lights;
            return;
        case BlockKind::kCamera:
            summary_.cameras += placed ? 1 : 0;
            return;
        case BlockKind::kAnimation:
            ++summary_.animations;
            return;
        case BlockKind::kLoad:
            if (summary_.modules.size() < VsqSummary::kKeptModules) {
                summary_.modules.push_back({head.name, {}});
            }
            return;
        default:
            return;
    }
}

void VsqParser::begin_shader(const VsqBlock& head, OpenBlock& shader) {
    ++summary_.shaders;
    shader.is_environment = head.type == kEnvironmentShader;
    const bool gives_light = std::find(std::begin(kLightShaders), std::end(kLightShaders),
                                       head.type) != std::end(kLightShaders);
    if (gives_light && object_depth_ != 0) {
        stack_[object_depth_ - 1].is_placed_light = true;
    }
}

void VsqParser::close_block() {
    if (stack_.empty()) {
        tokens_.fail("there is a closing brace, but no block is open");
    }
    source_.drop();
    const OpenBlock closed = stack_.back();
    stack_.pop_back();

    if (closed.kind == BlockKind::kGeometry) {
        end_geometry();
    }
    if (closed.kind == BlockKind::kObject) {
        object_depth_ = 0;
        summary_.lights += closed.is_placed_light ? 1 : 0;
    }
    listener_.block_ends();

    if (closed.ending == Ending::kElement) {
        resume_array();
    } else {
        end_value(closed.ending);
    }
}

void VsqParser::end_geometry() {
    if (geometry_type_ != "triangles") {
        return;
    }
    triangle_check_.end_geometry(listener_);
    summary_.triangles += triangle_check_.triangles();
    summary_.vertices += triangle_check_.vertices();
}

}  // namespace vsqinfo
