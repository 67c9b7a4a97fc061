#include "importers/sceneapi/dev/number_text.h"
#include "importers/sceneapi/dev/parameter_forms.h"
#include "importers/sceneapi/dev/qorscene_api_file.h"
#include "importers/sceneapi/dev/shader_buffer.h"

// Parameters and the text of their values.

namespace {

constexpr int kIndentOfShaderValue = 2;
constexpr int kMostNumbers = 16;  // in a matrix

// Numbers with one blank between them, collected before they are written.
class NumberList {
public:
    void add(double value) { end_ = number_text::print_general(next(), value); }
    void add(std::int32_t value) { end_ = number_text::print_int(next(), value); }

    template <typename Number>
    void add_all(const void* values, int count) {
        const Number* numbers = static_cast<const Number*>(values);
        for (int i = 0; i < count; ++i) {
            add(numbers[i]);
        }
    }

    std::string_view text() const { return {text_, static_cast<size_t>(end_ - text_)}; }

private:
    char* next() {
        if (end_ != text_) {
            *end_++ = ' ';
        }
        return end_;
    }

    char text_[kMostNumbers * (number_text::kShortRoom + 1)];
    char* end_ = text_;
};

}  // namespace

bool qorScene_api_file::set_parameter(const char* name, std::int32_t type, const void* value) {
    if (plain_parameters_) {
        out_.write_indented({text_or_empty(name), " "});
    } else {
        out_.write_quoted_name(name);
        out_.write_raw(" ");
    }
    if ((type & parameter_code::kArray) != 0) {
        write_array(type & ~parameter_code::kArray, *static_cast<const qorArray*>(value));
    } else {
        write_value(type, value);
    }
    out_.write_raw(plain_parameters_ ? "\n" : ",\n");
    return true;
}

bool qorScene_api_file::set_parameter_id(const char* name, std::int32_t id) {
    out_.write_quoted_name(name);
    out_.write_raw(" ! ");
    write_decimal(id);
    out_.write_raw(",\n");
    return true;
}

bool qorScene_api_file::set_parameter_shader(const char* name, qorShaderHandle shader) {
    if (!can_be_copied(shader)) {
        return false;
    }
    out_.write_quoted_name(name);
    out_.write_raw(" ! ");
    out_.write_shader(*static_cast<const ShaderBuffer*>(shader));
    out_.write_raw(",\n");
    return true;
}

// An unknown code writes nothing, so the value is left empty.
void qorScene_api_file::write_value(std::int32_t code, const void* value) {
    const ParameterCode* form = find_parameter_code(code);
    if (form == nullptr) {
        return;
    }
    NumberList numbers;
    switch (form->form) {
        case ParameterForm::kFloats:
            numbers.add_all<float>(value, form->count);
            break;
        case ParameterForm::kCheckedFloat:
            numbers.add(
                static_cast<double>(number_text::ordinary(*static_cast<const float*>(value))));
            break;
        case ParameterForm::kFixedDouble: {
            char text[number_text::kFixedRoom];
            const char* end = number_text::print_fixed(text, *static_cast<const double*>(value));
            out_.write_raw({text, static_cast<size_t>(end - text)});
            break;
        }
        case ParameterForm::kDoubles:
            numbers.add_all<double>(value, form->count);
            break;
        case ParameterForm::kInts:
            numbers.add_all<std::int32_t>(value, form->count);
            break;
        case ParameterForm::kBool:
            out_.write_raw(*static_cast<const std::int32_t*>(value) != 0 ? "on" : "off");
            break;
        case ParameterForm::kMatrix:
            write_narrowed_matrix(*static_cast<const qorMatrix*>(value));
            break;
        case ParameterForm::kText:
            out_.write_bare_name(static_cast<const char*>(value));
            break;
        case ParameterForm::kTextPointer:
            out_.write_bare_name(*static_cast<const char* const*>(value));
            break;
        case ParameterForm::kShader: {
            const qorShaderHandle shader = *static_cast<const qorShaderHandle*>(value);
            if (can_be_copied(shader)) {
                const int level = out_.indent();
                out_.set_indent(kIndentOfShaderValue);
                out_.write_shader(*static_cast<const ShaderBuffer*>(shader));
                out_.set_indent(level);
            }
            break;
        }
    }
    out_.write_raw(numbers.text());
}

// Single precision is enough for placement, and the text is half as long.
void qorScene_api_file::write_narrowed_matrix(const qorMatrix& matrix) {
    NumberList numbers;
    for (const auto& row : matrix.m) {
        for (const double element : row) {
            numbers.add(static_cast<double>(static_cast<float>(element)));
        }
    }
    out_.write_raw(numbers.text());
}

void qorScene_api_file::write_decimal(std::int32_t value) {
    NumberList numbers;
    numbers.add(value);
    out_.write_raw(numbers.text());
}

void qorScene_api_file::write_numbers(std::string_view keyword,
                                      std::initializer_list<double> values) {
    NumberList numbers;
    for (const double value : values) {
        numbers.add(value);
    }
    out_.write_indented({keyword, " ", numbers.text(), "\n"});
}
