#include <cerrno>
#include <cstring>
#include <limits>

#include "importers/sceneapi/dev/number_text.h"
#include "importers/sceneapi/dev/parameter_forms.h"
#include "importers/sceneapi/dev/qorscene_api_file.h"

// Arrays in binary and text form, written in one call or element by element.

namespace {

constexpr unsigned char kBinaryMark[] = {1, 2, 3};
constexpr std::uint32_t kElementsPerLine = 8;

// Null for a code that has no arrays.
const ParameterCode* find_element_code(std::int32_t code) {
    const ParameterCode* found = find_parameter_code(code);
    return found != nullptr && found->element_size > 0 ? found : nullptr;
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

// Prints one element that consists of numbers.
char* print_element(char* out, const ParameterCode& form, const void* element) {
    switch (form.form) {
        case ParameterForm::kFloats:
            return print_generals<float>(out, element, form.count, ' ');
        case ParameterForm::kCheckedFloat:
            return number_text::print_general(
                out,
                static_cast<double>(number_text::ordinary(*static_cast<const float*>(element))));
        case ParameterForm::kFixedDouble:
            return number_text::print_fixed(
                out, number_text::ordinary(*static_cast<const double*>(element)));
        case ParameterForm::kDoubles:
            return print_generals<double>(out, element, form.count, ' ');
        case ParameterForm::kInts:
            return number_text::print_int(out, *static_cast<const std::int32_t*>(element));
        case ParameterForm::kBool:
            *out = *static_cast<const std::int32_t*>(element) != 0 ? '1' : '0';
            return out + 1;
        case ParameterForm::kMatrix:
            out = print_generals<double>(out, element, form.count, ' ');
            *out = ' ';
            return out + 1;
        case ParameterForm::kText:
        case ParameterForm::kTextPointer:
        case ParameterForm::kShader:
            break;
    }
    return out;
}

}  // namespace

void qorScene_api_file::write_array(std::int32_t element_code, const qorArray& array) {
    const ParameterCode* form = find_element_code(element_code);
    if (form == nullptr) {
        return;
    }
    const size_t element_size = form->element_size;

    out_.write_raw("[ ");
    if (form->tag != 0 && binary_arrays_) {
        const std::uint64_t numbers = static_cast<std::uint64_t>(array.count) * form->count;
        if (numbers > std::numeric_limits<std::uint32_t>::max()) {
            out_.fail(EFBIG);
            return;
        }
        write_binary_body(form->tag, static_cast<std::uint32_t>(numbers), array.data,
                          array.count * element_size);
        out_.write_raw("] ");
        return;
    }

    const char* element = static_cast<const char*>(array.data);
    for (std::uint32_t i = 0; i < array.count; ++i, element += element_size) {
        const bool last = i + 1 == array.count;
        char text[number_text::kFixedRoom + 16 * (number_text::kShortRoom + 1)];
        char* end = text;
        if (form->form == ParameterForm::kText || form->form == ParameterForm::kTextPointer) {
            const char* name;
            std::memcpy(&name, element, sizeof name);
            out_.write_bare_name(name);
            *end++ = last ? ' ' : ',';
            *end++ = '\n';
        } else if (form->form == ParameterForm::kMatrix) {
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

        if (i > 0 && i % kElementsPerLine == 0) {
            out_.write_raw("\n");
            out_.write_indented("");
        }
    }
    out_.write_raw("] ");
}

// `count` is the number of values for the head; `size` is in bytes. The values are written as they
// are in memory, which is little-endian on every system that the host supports.
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
    const ParameterCode* form = find_parameter_code(type);
    const bool gathers = type == parameter_code::kColor || type == parameter_code::kFloat ||
                         type == parameter_code::kInt;
    if (gathers && binary_arrays_) {
        std::uint32_t words[3];
        const size_t count = static_cast<size_t>(form->count);
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
