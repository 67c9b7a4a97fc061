#include "tools/vsqinfo/vsq_parser.h"

#include <algorithm>

namespace vsqinfo {

void VsqParser::read_quoted_parameter() {
    if (block() == BlockKind::kTop) {
        tokens_.fail("a parameter is not allowed at the top level");
    }
    tokens_.read_name(name_);
    value_.clear();
    tokens_.skip_blanks();

    const int next = source_.peek();
    if (next == '[') {
        read_array(Ending::kComma);
        return;
    }
    if (next == '!') {
        source_.drop();
        tokens_.skip_blanks();
        if (tokens_.at_name()) {
            read_name_value(Ending::kComma);
            return;
        }
        value_ = "!";
        std::optional<std::int64_t> shader;
        if (source_.peek() != ',') {
            shader = read_shader_number();
            value_ += " " + std::to_string(*shader);
        }
        note_parameter(value_ == "!" ? ValueForm::kNone : ValueForm::kShader, true, shader);
        end_value(Ending::kComma);
        return;
    }
    if (tokens_.at_name()) {
        read_name_value(Ending::kComma);
        return;
    }

    while (source_.peek() != ',') {
        const FilePlace start = source_.place();
        const std::string_view word = tokens_.read_word();
        if (classify_value(word) == ValueWord::kNone) {
            tokens_.fail(start, shown(word) + " is not a value");
        }
        keep_value_word(word, start);
        tokens_.skip_blanks();
    }
    note_parameter(value_.empty() ? ValueForm::kNone : ValueForm::kWords, true);
    end_value(Ending::kComma);
}

// Nothing separates the name from the value, and the name can contain blanks, so it extends to the
// last words that can be a value. A parameter without a value still has the blank after its name.
void VsqParser::read_plain_parameter(std::string_view first_word) {
    if (block() == BlockKind::kTop) {
        tokens_.fail(statement_place_, shown(first_word) + " is not a statement");
    }
    name_ = first_word;
    value_.clear();
    std::size_t blanks = tokens_.skip_blanks();
    while (source_.peek() != '\n') {
        if (blanks == 0) {
            tokens_.fail_expected("a blank after the name of a parameter");
        }
        if (source_.peek() == '[') {
            read_array(Ending::kLine);
            return;
        }
        if (tokens_.at_name()) {
            read_name_value(Ending::kLine);
            return;
        }
        if (tokens_.at_hex_data()) {
            tokens_.read_hex_data();
            tokens_.expect_line_end();
            note_parameter(ValueForm::kData, false);
            return;
        }

        const FilePlace start = source_.place();
        const std::string_view word = tokens_.read_word();
        if (classify_value(word) == ValueWord::kNone) {
            if (!value_.empty()) {
                name_ += " " + value_;
            }
            (name_ += ' ') += word;
            name_.resize(std::min(name_.size(), VsqTokens::kKeptText));
            value_.clear();
        } else {
            keep_value_word(word, start);
        }
        blanks = tokens_.skip_blanks();
    }
    if (value_.empty() && blanks == 0) {
        tokens_.fail(statement_place_, shown(name_) + " is not a statement and has no value");
    }
    note_parameter(value_.empty() ? ValueForm::kNone : ValueForm::kWords, false);
    end_value(Ending::kLine);
}

// Reads a text, or an anonymous shader if a block follows the name.
void VsqParser::read_name_value(Ending ending) {
    tokens_.read_name(value_);
    tokens_.skip_blanks();
    if (source_.peek() == '{') {
        open_anonymous_shader(name_, value_, ending);
        return;
    }
    note_parameter(ValueForm::kText, ending == Ending::kComma);
    end_value(ending);
}

void VsqParser::read_shader_value() {
    tokens_.read_name(value_);
    open_anonymous_shader(name_, value_, Ending::kLine);
}

void VsqParser::keep_value_word(std::string_view word, FilePlace place) {
    if (classify_value(word) != ValueWord::kSwitch) {
        listener_.number(word, place);
    }
    if (value_.size() + word.size() >= VsqTokens::kKeptText) {
        return;
    }
    if (!value_.empty()) {
        value_ += ' ';
    }
    value_ += word;
}

void VsqParser::end_value(Ending ending) {
    if (ending == Ending::kComma) {
        tokens_.skip_blanks();
        tokens_.expect(',');
    }
    tokens_.expect_line_end();
}

void VsqParser::note_parameter(ValueForm form, bool is_quoted, std::optional<std::int64_t> shader) {
    listener_.parameter({name_, value_, form, shader, is_quoted, statement_place_});
    if (block() == BlockKind::kLoad && !summary_.modules.empty()) {
        auto& options = summary_.modules.back().options;
        if (options.size() < VsqSummary::kKeptOptions) {
            options.emplace_back(name_, value_);
        }
    } else if (block() == BlockKind::kShader && name_ == "texture" && !value_.empty()) {
        (stack_.back().is_environment ? environments_ : textures_).insert(value_);
    } else if (block() == BlockKind::kGeometry && name_ == "file") {
        ++summary_.library_files;
        libraries_.insert(value_);
    }
}

}  // namespace vsqinfo
