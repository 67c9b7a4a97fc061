#include "tools/vsqinfo/vsq_parser.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <type_traits>

namespace vsqinfo {

using std::int64_t;
using std::uint32_t;
using std::uint64_t;

namespace {

constexpr int kBodyMark = 1;  // the first byte of a binary array body

// The number that begins at `bytes` in little-endian order.
template <typename Number>
Number number_at(const unsigned char* bytes) {
    uint64_t bits = 0;
    for (std::size_t i = 0; i < sizeof(Number); ++i) {
        bits |= uint64_t{bytes[i]} << (8 * i);
    }
    using Bits = std::conditional_t<sizeof(Number) == 4, uint32_t, uint64_t>;
    const Bits word = static_cast<Bits>(bits);
    Number number;
    static_assert(sizeof number == sizeof word, "numbers of the file have 32 or 64 bits");
    std::memcpy(&number, &word, sizeof number);
    return number;
}

}  // namespace

void VsqParser::read_array(Ending ending) {
    ArrayScan array;
    array.name = &name_;
    array.place = source_.place();
    array.in_animation_matrices = block() == BlockKind::kAnimation && name_ == "matrices";
    if (block() == BlockKind::kGeometry && geometry_type_ == "triangles") {
        array.indices = TriangleCheck::index_array(name_);
    }
    array.is_listened_to =
        listener_.array_begins({name_, ending == Ending::kComma, statement_place_});
    source_.drop();
    read_elements(array, ending);
}

// Continues the array after an element that is a shader.
void VsqParser::resume_array() {
    ArrayScan array;
    array.place = stack_.back().place;
    array.is_listened_to = stack_.back().is_listened_to;
    array.found.shaders = 1;
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
                             std::to_string(array.place.offset));
            default:
                if (!tokens_.at_name()) {
                    read_element_word(array);
                    break;
                }
                tokens_.read_name(text_);
                ++array.found.texts;
                tokens_.skip_blanks();
                if (source_.peek() == '{') {
                    stack_.push_back({array.place, BlockKind::kArray, ending, false, false,
                                      array.is_listened_to});
                    open_anonymous_shader("", text_, Ending::kElement);
                    return;
                }
        }
    }
}

void VsqParser::read_element_word(ArrayScan& array) {
    const FilePlace start = source_.place();
    const std::string_view word = tokens_.read_word();
    const ValueWord value = classify_value(word);
    if (value == ValueWord::kNone) {
        tokens_.fail(start, shown(word) + " is not an element of an array");
    }
    ++array.found.numbers;
    ++array.element_numbers;
    array.element_is_finite = array.element_is_finite && value != ValueWord::kNotFinite;

    if (value != ValueWord::kSwitch) {
        listener_.number(word, start);
    }
    const double number = value == ValueWord::kSwitch ? (word == "on" ? 1 : 0) : number_value(word);
    if (array.is_listened_to) {
        listener_.array_numbers({&number, 1, start, 0});
    }
    if (array.indices != TriangleCheck::kNoIndices) {
        if (value != ValueWord::kFinite || number != std::floor(number) ||
            std::abs(number) > 2147483648.0) {
            tokens_.fail(start, shown(word) + " is not an index");
        }
        triangle_check_.add_index(array.indices, static_cast<int64_t>(number), start);
    }
}

void VsqParser::end_element(ArrayScan& array) {
    if (array.in_animation_matrices && array.element_numbers != 0) {
        if (array.element_numbers != kMatrixNumbers) {
            listener_.fault(
                Check::kMatrixCount, source_.place(),
                "a matrix has 16 numbers, not " + std::to_string(array.element_numbers));
        }
        summary_.matrices_not_finite += array.element_is_finite ? 0 : 1;
    }
    array.element_numbers = 0;
    array.element_is_finite = true;
}

// A body is the bytes 1, 2, 3, a tag for the type of the numbers, their count, and the numbers.
void VsqParser::read_body(ArrayScan& array) {
    const FilePlace start = source_.place();
    unsigned char head[8];
    if (source_.read(head, sizeof head) != sizeof head) {
        fail_in_body(array);
    }
    const char tag = static_cast<char>(head[3]);
    if (head[1] != 2 || head[2] != 3) {
        tokens_.fail(start, "the body of an array does not begin with the bytes 1, 2, 3");
    }
    if (tag != 'c' && tag != 'f' && tag != 'i' && tag != 'r') {
        tokens_.fail(start.plus(3), "the tag of an array body is not c, f, i or r");
    }
    array.found.tag = tag;
    if (array.indices != TriangleCheck::kNoIndices && tag != 'i') {
        listener_.fault(Check::kArrayTag, start.plus(3),
                        "the body of an array of indices does not hold integers");
        array.indices = TriangleCheck::kNoIndices;
    }

    const uint64_t count = head[4] | head[5] << 8 | head[6] << 16 | uint64_t{head[7]} << 24;
    if (tag == 'c' && count % 3 != 0) {
        listener_.fault(Check::kArrayWidth, start.plus(4),
                        std::to_string(count) + " numbers are not whole triples");
    }
    const uint64_t size = count * (tag == 'r' ? 8 : 4);
    if (const auto left = source_.bytes_left(); left && *left < size) {
        tokens_.fail(start,
                     "an array body of " + std::to_string(count) + " numbers needs " +
                         std::to_string(size) + " bytes, but the file has only " +
                         std::to_string(*left) + " left",
                     Check::kCutShort);
    }

    if (array.indices == TriangleCheck::kNoIndices && !array.is_listened_to) {
        if (source_.skip(size) != size) {
            fail_in_body(array);
        }
    } else if (tag == 'i') {
        read_numbers_of_body<std::int32_t>(array, count);
    } else if (tag == 'r') {
        read_numbers_of_body<double>(array, count);
    } else {
        read_numbers_of_body<float>(array, count);
    }
    array.found.numbers += count;
}

template <typename Number>
void VsqParser::read_numbers_of_body(ArrayScan& array, uint64_t count) {
    constexpr uint64_t kChunk = 4096;
    unsigned char bytes[kChunk * sizeof(Number)];
    double numbers[kChunk];
    // Line feeds among the bytes aren't looked for, so all of the body has the line of its start.
    FilePlace place = source_.place();
    for (uint64_t done = 0; done < count;) {
        const std::size_t part = static_cast<std::size_t>(std::min(kChunk, count - done));
        if (source_.read(bytes, part * sizeof(Number)) != part * sizeof(Number)) {
            fail_in_body(array);
        }
        for (std::size_t i = 0; i < part; ++i) {
            numbers[i] = number_at<Number>(bytes + i * sizeof(Number));
        }
        if (array.indices != TriangleCheck::kNoIndices) {
            for (std::size_t i = 0; i < part; ++i) {
                triangle_check_.add_index(array.indices, static_cast<int64_t>(numbers[i]),
                                          place.plus(i * sizeof(Number)));
            }
        }
        if (array.is_listened_to) {
            listener_.array_numbers({numbers, part, place, sizeof(Number)});
        }
        place = place.plus(part * sizeof(Number));
        done += part;
    }
}

void VsqParser::end_array(const ArrayScan& array) {
    if (array.indices != TriangleCheck::kNoIndices && array.found.numbers % 3 != 0) {
        listener_.fault(Check::kIndexCount, array.place,
                        "\"" + *array.name + "\" holds " + std::to_string(array.found.numbers) +
                            " indices, which are not whole triangles");
    }
    listener_.array_ends(array.found);
    if (!array.name) {
        return;
    }

    const std::string& name = *array.name;
    if (block() == BlockKind::kGeometry) {
        triangle_check_.end_array(name, array.found.numbers);
        if (geometry_type_ == "qor_curves" && name == "nvertices") {
            summary_.curves += array.found.numbers;
        }
        if (geometry_type_ == "qor_curves" && name == "p") {
            summary_.curve_points += array.found.numbers / 3;
        }
    }
    if (block() == BlockKind::kAnimation && name == "timestamps") {
        summary_.animation_keys += array.found.numbers;
    }
}

void VsqParser::fail_in_body(const ArrayScan& array) {
    tokens_.fail("the file ends inside an array that begins at offset " +
                 std::to_string(array.place.offset));
}

}  // namespace vsqinfo
