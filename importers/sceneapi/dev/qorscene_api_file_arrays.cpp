#include <cstring>

#include "importers/sceneapi/dev/number_text.h"
#include "importers/sceneapi/dev/parameter_codes.h"
#include "importers/sceneapi/dev/qorscene_api_file.h"

// Arrays in their binary and text forms, in one call or element by element.

namespace {

enum class ElementForm {
    kFloats,
    kCheckedFloat,
    kFixedDouble,
    kDoubles,
    kInt,
    kZeroOne,
    kMatrix,
    kText
};

struct ArrayForm {
    std::int32_t code;
    ElementForm form;
    int numbers;         // in an element
    size_t number_size;  // in bytes
    char tag;            // of the binary body; 0 for a form that is always text
};

constexpr ArrayForm kArrayForms[] = {
    {parameter_code::kColor, ElementForm::kFloats, 3, sizeof(float), 'c'},
    {parameter_code::kFloat4, ElementForm::kFloats, 4, sizeof(float), 0},
    {parameter_code::kFloat, ElementForm::kCheckedFloat, 1, sizeof(float), 'f'},
    {parameter_code::kDouble, ElementForm::kFixedDouble, 1, sizeof(double), 'r'},
    {parameter_code::kVector, ElementForm::kDoubles, 3, sizeof(double), 0},
    {parameter_code::kInt, ElementForm::kInt, 1, sizeof(std::int32_t), 'i'},
    {parameter_code::kBool, ElementForm::kZeroOne, 1, sizeof(std::int32_t), 0},
    {parameter_code::kMatrix, ElementForm::kMatrix, 16, sizeof(double), 0},
    {parameter_code::kText, ElementForm::kText, 1, sizeof(const char*), 0},
    {parameter_code::kTextPointer, ElementForm::kText, 1, sizeof(const char*), 0},
    {parameter_code::kIntToo, ElementForm::kInt, 1, sizeof(std::int32_t), 'i'},
};

constexpr unsigned char kBinaryMark[] = {1, 2, 3};
constexpr std::uint32_t kElementsToALine = 8;

const ArrayForm* find_form(std::int32_t element_code) {
    for (const ArrayForm& form : kArrayForms) {
        if (form.code == element_code) {
            return &form;
        }
    }
    return nullptr;
}

template <typename Number>
char* print_generals(char* out, const void* element, int count, char separator) {
    const Number* numbers = static_cast<const Number*>(element);
    for (int i = 0; i < count; ++i) {
        if (i > 0) {
            *out++ = separator;
        }
        out = number_text::print_general(out, static_cast<double>(numbers[i]));
    }
    return out;
}

// The text of one element that is made of numbers.
char* print_element(char* out, const ArrayForm& form, const void* element) {
    switch (form.form) {
        case ElementForm::kFloats:
            return print_generals<float>(out, element, form.numbers, ' ');
        case ElementForm::kCheckedFloat:
            return number_text::print_general(
                out,
                static_cast<double>(number_text::ordinary(*static_cast<const float*>(element))));
        case ElementForm::kFixedDouble:
            return number_text::print_fixed(
                out, number_text::ordinary(*static_cast<const double*>(element)));
        case ElementForm::kDoubles:
            return print_generals<double>(out, element, form.numbers, ' ');
        case ElementForm::kInt:
            return number_text::print_int(out, *static_cast<const std::int32_t*>(element));
        case ElementForm::kZeroOne:
            *out = *static_cast<const std::int32_t*>(element) != 0 ? '1' : '0';
            return out + 1;
        case ElementForm::kMatrix:
            out = print_generals<double>(out, element, form.numbers, ' ');
            *out = ' ';
            return out + 1;
        case ElementForm::kText:
            break;
    }
    return out;
}

}  // namespace

void qorScene_api_file::write_array(std::int32_t element_code, const qorArray& array) {
    const ArrayForm* form = find_form(element_code);
    if (form == nullptr) {
        return;
    }
    const size_t element_size = form->numbers * form->number_size;

    out_.write_raw("[ ");
    if (form->tag != 0 && binary_arrays_) {
        const std::uint32_t numbers = array.count * static_cast<std::uint32_t>(form->numbers);
        write_binary_body(form->tag, numbers, array.data, array.count * element_size);
        out_.write_raw("] ");
        return;
    }

    const char* element = static_cast<const char*>(array.data);
    for (std::uint32_t i = 0; i < array.count; ++i, element += element_size) {
        const bool last = i + 1 == array.count;
        char text[number_text::kFixedRoom + 16 * (number_text::kShortRoom + 1)];
        char* end = text;
        if (form->form == ElementForm::kText) {
            const char* name;
            std::memcpy(&name, element, sizeof name);
            out_.write_bare_name(name);
            *end++ = last ? ' ' : ',';
            *end++ = '\n';
        } else if (form->form == ElementForm::kMatrix) {
            out_.write_indented("");
            end = print_element(text, *form, element);
            if (!last) {
                *end++ = ',';
            }
            *end++ = '\n';
        } else {
            end = print_element(text, *form, element);
            *end++ = last ? ' ' : ',';
        }
        out_.write_raw({text, static_cast<size_t>(end - text)});

        if (i > 0 && i % kElementsToALine == 0) {
            out_.write_raw("\n");
            out_.write_indented("");
        }
    }
    out_.write_raw("] ");
}

// `count` is what the head says, in numbers; `size` is in bytes. The numbers go out as they lie in
// memory, which is little-endian on every system of the host.
void qorScene_api_file::write_binary_body(char tag, std::uint32_t count, const void* numbers,
                                          size_t size) {
    unsigned char head[8];
    std::memcpy(head, kBinaryMark, sizeof kBinaryMark);
    head[3] = static_cast<unsigned char>(tag);
    for (int i = 0; i < 4; ++i) {
        head[4 + i] = static_cast<unsigned char>(count >> (8 * i));
    }
    out_.write_bytes(head, sizeof head);
    if (size > 0) {
        out_.write_bytes(numbers, size);
    }
}

bool qorScene_api_file::begin_array(const char* name) {
    array_count_ = 0;
    out_.write_quoted_name(name);
    out_.write_raw(" [\n");
    out_.raise_indent();
    out_.write_indented("");
    array_values_.clear();
    return true;
}

void qorScene_api_file::add_array_element(std::int32_t type, const void* value) {
    const ArrayForm* form = find_form(type);
    const bool gathers = type == parameter_code::kColor || type == parameter_code::kFloat ||
                         type == parameter_code::kInt;
    if (gathers && binary_arrays_) {
        std::uint32_t words[3];
        const size_t count = static_cast<size_t>(form->numbers);
        std::memcpy(words, value, count * sizeof words[0]);
        array_values_.insert(array_values_.end(), words, words + count);
        array_tag_ = form->tag;
        return;
    }

    if (array_count_ > 0) {
        const bool breaks_line =
            (type == parameter_code::kColor && array_count_ % 2 == 0) || array_count_ % 6 == 0;
        out_.write_raw(breaks_line ? ",\n" : ", ");
        if (breaks_line) {
            out_.write_indented("");
        }
    }
    write_value(type, value);
    ++array_count_;
}

void qorScene_api_file::end_array() {
    if (binary_arrays_ && !array_values_.empty()) {
        write_binary_body(array_tag_, static_cast<std::uint32_t>(array_values_.size()),
                          array_values_.data(), array_values_.size() * sizeof(std::uint32_t));
        array_values_.clear();
    }
    out_.write_raw(" ],\n");
    out_.lower_indent();
}
