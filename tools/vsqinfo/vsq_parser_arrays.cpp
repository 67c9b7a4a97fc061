#include "tools/vsqinfo/vsq_parser.h"

#include <algorithm>
#include <cmath>

namespace vsqinfo {
namespace {

constexpr int kBodyMark = 1;  // the first byte of a binary array body

}  // namespace

using std::int64_t;
using std::uint32_t;
using std::uint64_t;

void VsqParser::read_array(Ending ending) {
    ArrayScan array;
    array.name = &name_;
    array.offset = source_.offset();
    array.in_animation_matrices = block() == BlockKind::kAnimation && name_ == "matrices";
    if (block() == BlockKind::kGeometry && geometry_type_ == "triangles") {
        array.indices = TriangleCheck::index_array(name_);
    }
    source_.drop();
    read_elements(array, ending);
}

// Continues the array after an element that is a shader.
void VsqParser::resume_array() {
    ArrayScan array;
    array.offset = stack_.back().offset;
    const Ending ending = stack_.back().ending;
    stack_.pop_back();
    read_elements(array, ending);
}

void VsqParser::read_elements(ArrayScan& array, Ending ending) {
    for (;;) {
        tokens_.skip_space();
        switch (source_.peek()) {
            case ']':
                end_element(array);
                end_array(array);
                source_.drop();
                tokens_.skip_blanks();
                end_value(ending);
                return;
            case ',':
                end_element(array);
                source_.drop();
                break;
            case kBodyMark:
                read_body(array);
                tokens_.skip_space();
                if (source_.peek() != ']') {
                    tokens_.fail_expected("the closing bracket after an array body");
                }
                break;
            case ByteSource::kEnd:
                tokens_.fail("the file ends inside an array that begins at offset " +
                             std::to_string(array.offset));
            default:
                if (!tokens_.at_name()) {
                    read_element_word(array);
                    break;
                }
                tokens_.read_name(text_);
                tokens_.skip_blanks();
                if (source_.peek() == '{') {
                    stack_.push_back({array.offset, BlockKind::kArray, ending, false, false});
                    open_anonymous_shader("", text_, Ending::kElement);
                    return;
                }
        }
    }
}

void VsqParser::read_element_word(ArrayScan& array) {
    const uint64_t start = source_.offset();
    const std::string_view word = tokens_.read_word();
    const ValueWord value = classify_value(word);
    if (value == ValueWord::kNone) {
        tokens_.fail(start, shown(word) + " is not an element of an array");
    }
    ++array.numbers;
    ++array.element_numbers;
    array.element_is_finite = array.element_is_finite && value != ValueWord::kNotFinite;

    if (array.indices != TriangleCheck::kNoIndices) {
        const double index = number_value(word);
        if (value != ValueWord::kFinite || index != std::floor(index) ||
            std::abs(index) > 2147483648.0) {
            tokens_.fail(start, shown(word) + " is not an index");
        }
        triangle_check_.add_index(array.indices, static_cast<int64_t>(index), start);
    }
}

void VsqParser::end_element(ArrayScan& array) {
    if (array.in_animation_matrices && array.element_numbers != 0) {
        if (array.element_numbers != kMatrixNumbers) {
            tokens_.fail("a matrix has 16 numbers, not " + std::to_string(array.element_numbers));
        }
        summary_.matrices_not_finite += array.element_is_finite ? 0 : 1;
    }
    array.element_numbers = 0;
    array.element_is_finite = true;
}

// A body is the bytes 1, 2, 3, a tag for the type of the numbers, their count, and the numbers.
void VsqParser::read_body(ArrayScan& array) {
    const uint64_t start = source_.offset();
    unsigned char head[8];
    if (source_.read(head, sizeof head) != sizeof head) {
        fail_in_body(array);
    }
    const char tag = static_cast<char>(head[3]);
    if (head[1] != 2 || head[2] != 3) {
        tokens_.fail(start, "the body of an array does not begin with the bytes 1, 2, 3");
    }
    if (tag != 'c' && tag != 'f' && tag != 'i' && tag != 'r') {
        tokens_.fail(start + 3, "the tag of an array body is not c, f, i or r");
    }
    const bool holds_indices = array.indices != TriangleCheck::kNoIndices;
    if (holds_indices && tag != 'i') {
        tokens_.fail(start + 3, "the body of an array of indices does not hold integers");
    }

    const uint64_t count = head[4] | head[5] << 8 | head[6] << 16 | uint64_t{head[7]} << 24;
    if (tag == 'c' && count % 3 != 0) {
        tokens_.fail(start + 4, std::to_string(count) + " numbers are not whole triples");
    }
    const uint64_t size = count * (tag == 'r' ? 8 : 4);
    if (const auto left = source_.bytes_left(); left && *left < size) {
        tokens_.fail(start, "an array body of " + std::to_string(count) + " numbers needs " +
                                std::to_string(size) + " bytes, but the file has only " +
                                std::to_string(*left) + " left");
    }

    if (holds_indices) {
        read_index_body(array, count);
    } else if (source_.skip(size) != size) {
        fail_in_body(array);
    }
    array.numbers += count;
}

void VsqParser::read_index_body(ArrayScan& array, uint64_t count) {
    constexpr uint64_t kChunk = 4096;
    unsigned char bytes[kChunk * 4];
    for (uint64_t done = 0; done < count;) {
        const std::size_t part = static_cast<std::size_t>(std::min(kChunk, count - done));
        const uint64_t start = source_.offset();
        if (source_.read(bytes, part * 4) != part * 4) {
            fail_in_body(array);
        }
        for (std::size_t i = 0; i < part; ++i) {
            const unsigned char* at = bytes + i * 4;
            const uint32_t word =
                at[0] | uint32_t{at[1]} << 8 | uint32_t{at[2]} << 16 | uint32_t{at[3]} << 24;
            triangle_check_.add_index(array.indices, static_cast<std::int32_t>(word),
                                      start + i * 4);
        }
        done += part;
    }
}

void VsqParser::end_array(const ArrayScan& array) {
    if (array.indices != TriangleCheck::kNoIndices && array.numbers % 3 != 0) {
        tokens_.fail(array.offset, "\"" + *array.name + "\" holds " +
                                       std::to_string(array.numbers) +
                                       " indices, which are not whole triangles");
    }
    if (!array.name) {
        return;
    }

    const std::string& name = *array.name;
    if (block() == BlockKind::kGeometry) {
        triangle_check_.end_array(name, array.numbers);
        if (geometry_type_ == "qor_curves" && name == "nvertices") {
            summary_.curves += array.numbers;
        }
        if (geometry_type_ == "qor_curves" && name == "p") {
            summary_.curve_points += array.numbers / 3;
        }
    }
    if (block() == BlockKind::kAnimation && name == "timestamps") {
        summary_.animation_keys += array.numbers;
    }
}

void VsqParser::fail_in_body(const ArrayScan& array) const {
    tokens_.fail("the file ends inside an array that begins at offset " +
                 std::to_string(array.offset));
}

}  // namespace vsqinfo
