#include <gtest/gtest.h>

#include <limits>
#include <numeric>

#include "importers/sceneapi/dev/parameter_codes.h"
#include "tests/support/written_scene.h"

namespace {

using Api = qorScene_api_file;
using namespace std::string_literals;

constexpr bool kText = false;
constexpr bool kBinary = true;
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

std::string array_text(std::int32_t element_code, const void* data, std::uint32_t count,
                       bool binary) {
    const qorArray array = {data, count};
    return written_by(
        [&](Api& a) { a.set_parameter("n", parameter_code::kArray | element_code, &array); },
        binary);
}

const float kFloats[] = {1, -2.5f, 3, 4, 5, 6, 7, 8};
const double kDoubles[] = {0.5, -1, 2, 3, 4, 5};
const std::int32_t kInts[] = {-1, 256, 3};
const qorMatrix kMatrices[] = {
    {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {1e300, 0, 0, 1}}},
    {{{2, 0, 0, 0}, {0, 2, 0, 0}, {0, 0, 2, 0}, {1.0 / 3, 0, 0, 1}}},
};
const char* const kTexts[] = {"a", "b\n"};

TEST(SceneArrays, TextForms) {
    std::int32_t counting[18];
    std::iota(std::begin(counting), std::end(counting), 0);
    const float largest = std::numeric_limits<float>::max();
    const float odd_floats[] = {static_cast<float>(kNan), largest, -largest, 1};
    const double odd_doubles[] = {kNan, 3.4028234663852886e38, -1e39, 2};
    const struct {
        std::int32_t code;
        const void* data;
        std::uint32_t count;
        const char* body;
    } forms[] = {
        {1, kFloats, 2, "1 -2.5 3,4 5 6 "},
        {2, kFloats, 2, "1 -2.5 3 4,5 6 7 8 "},
        {3, kFloats, 3, "1,-2.5,3 "},
        {4, kDoubles, 2, "0.5000000000000000,-1.0000000000000000 "},
        {5, kDoubles, 2, "0.5 -1 2,3 4 5 "},
        {6, kInts, 3, "-1,256,3 "},
        {7, kInts, 3, "1,1,1 "},
        {23, kInts, 1, "-1 "},
        {9, kMatrices, 2,
         "1 0 0 0 0 1 0 0 0 0 1 0 1e+300 0 0 1 ,\n2 0 0 0 0 2 0 0 0 0 2 0 0.333333 0 0 1 \n"},
        {10, kTexts, 2, "\"a\",\nxX620a \n"},
        {13, kTexts, 2, "\"a\",\nxX620a \n"},
        {3, nullptr, 0, ""},
        // The first line has nine elements, and the others have eight.
        {6, counting, 9, "0,1,2,3,4,5,6,7,8 \n"},
        {6, counting, 18, "0,1,2,3,4,5,6,7,8,\n9,10,11,12,13,14,15,16,\n17 "},
        // NaN, and numbers too large for a float, become -1.
        {3, odd_floats, 4, "-1,-1,-1,1 "},
        {4, odd_doubles, 4,
         "-1.0000000000000000,-1.0000000000000000,-1.0000000000000000,2.0000000000000000 "},
    };
    for (const auto& form : forms) {
        EXPECT_EQ(array_text(form.code, form.data, form.count, kText),
                  "\"n\" [ "s + form.body + "] ,\n")
            << "code " << form.code;
    }
    // Codes that have no arrays get no brackets.
    for (const std::int32_t code : {0, 8, 12, 14, 0x10000}) {
        EXPECT_EQ(array_text(code, kFloats, 1, kText), "\"n\" ,\n") << "code " << code;
    }
}

std::string binary_body(char tag, std::uint32_t count, const void* data, size_t size) {
    std::string body = "\1\2\3"s + tag;
    for (int i = 0; i < 4; ++i) {
        body += static_cast<char>(count >> (8 * i) & 0xff);
    }
    return body + std::string(static_cast<const char*>(data), size);
}

TEST(SceneArrays, BinaryForms) {
    const struct {
        std::int32_t code;
        const void* data;
        std::uint32_t count;
        char tag;
        std::uint32_t numbers;
        size_t size;
    } forms[] = {
        {1, kFloats, 2, 'c', 6, 24}, {3, kFloats, 5, 'f', 5, 20}, {4, kDoubles, 3, 'r', 3, 24},
        {6, kInts, 3, 'i', 3, 12},   {23, kInts, 2, 'i', 2, 8},
    };
    for (const auto& form : forms) {
        EXPECT_EQ(array_text(form.code, form.data, form.count, kBinary),
                  "\"n\" [ " + binary_body(form.tag, form.numbers, form.data, form.size) + "] ,\n")
            << "code " << form.code;
    }
    EXPECT_EQ(array_text(3, nullptr, 0, kBinary), "\"n\" [ \1\2\3f\0\0\0\0] ,\n"s);
    // These have only a text form.
    for (const std::int32_t code : {2, 5, 9, 10}) {
        const void* const data = code == 10 ? static_cast<const void*>(kTexts) : kMatrices;
        EXPECT_EQ(array_text(code, data, 1, kBinary), array_text(code, data, 1, kText));
    }
}

// The sizes are on both sides of the limit up to which bodies go through the text's buffer.
TEST(SceneArrays, LargeBodiesStayInOrder) {
    for (const std::uint32_t count : {16383u, 16384u, 16385u, 600000u}) {
        std::vector<float> floats(count);
        std::iota(floats.begin(), floats.end(), 0.0f);
        const std::string text = array_text(3, floats.data(), count, kBinary);
        EXPECT_TRUE(text ==
                    "\"n\" [ " + binary_body('f', count, floats.data(), 4 * count) + "] ,\n")
            << count;
    }
}

void add_ints(Api& a, int count) {
    for (std::int32_t i = 0; i < count; ++i) {
        a.add_array_element(parameter_code::kInt, &i);
    }
}

// A line of text has two colours, or six of other kinds. Some kinds are text in both modes, and
// then the binary elements come last.
TEST(SceneArrays, ElementByElement) {
    const auto add_colours = [](Api& a) {
        for (int i = 0; i < 5; ++i) {
            a.add_array_element(1, kFloats + i / 4);
        }
    };
    const std::int32_t three[] = {0, 1, 2};
    const float five[] = {1, -2.5f, 3, 1, -2.5f, 3, 1, -2.5f, 3, 1, -2.5f, 3, -2.5f, 3, 4};
    const struct {
        bool binary;
        std::function<void(Api&)> add;
        std::string body;
    } cases[] = {
        {kBinary, [](Api& a) { add_ints(a, 3); }, binary_body('i', 3, three, 12)},
        {kBinary, add_colours, binary_body('c', 15, five, 60)},
        {kBinary, [](Api&) {}, ""},
        {kText, [](Api& a) { add_ints(a, 8); }, "0, 1, 2, 3, 4, 5,\n6, 7"},
        {kText, add_colours, "1 -2.5 3, 1 -2.5 3,\n1 -2.5 3, 1 -2.5 3,\n-2.5 3 4"},
        {kBinary,
         [](Api& a) {
             add_ints(a, 1), a.add_array_element(10, "t"), a.add_array_element(13, &kTexts[0]);
             a.add_array_element(4, kDoubles);
         },
         "\"t\", \"a\", 0.5000000000000000" + binary_body('i', 1, three, 4)},
    };
    for (const auto& c : cases) {
        const auto write = [&c](Api& a) { a.begin_array("n"), c.add(a), a.end_array(); };
        EXPECT_EQ(written_by(write, c.binary), "\"n\" [\n" + c.body + " ],\n");
    }
}

}  // namespace
