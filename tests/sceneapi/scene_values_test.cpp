#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "importers/sceneapi/dev/parameter_codes.h"
#include "tests/support/written_scene.h"

namespace {

using Api = qorScene_api_file;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kLargest = std::numeric_limits<float>::max();

// The text of a parameter's value in the quoted form, without name and comma.
std::string value_text(std::int32_t code, const void* value) {
    const std::string line =
        written_by([&](Api& a) { EXPECT_TRUE(a.set_parameter("n", code, value)) << code; });
    EXPECT_EQ(line.substr(0, 4), "\"n\" ");
    EXPECT_EQ(line.substr(line.size() - 2), ",\n");
    return line.substr(4, line.size() - 6);
}

TEST(SceneValues, EachCodeHasItsForm) {
    const float floats[] = {0.8f, 1e-5f, -1234567.0f, 0.1f};
    const double doubles[] = {1.0 / 3, -2e300, 100000};
    const std::int32_t ints[] = {-2147483647 - 1, 0, 2147483647, 7};
    const qorMatrix matrix = {
        {{1.0 / 3, 0, 0, 0}, {0, 1e300, 0, 0}, {0, 0, -0.0, 0}, {1, 2, 3, 1}}};
    const char* const text = "t";

    const struct {
        std::int32_t code;
        const void* value;
        const char* text;
    } forms[] = {
        {1, floats, "0.8 1e-05 -1.23457e+06"},
        {2, floats, "0.8 1e-05 -1.23457e+06 0.1"},
        {3, floats, "0.8"},
        {4, doubles, "0.3333333333333333"},
        {4, doubles + 2, "100000.0000000000000000"},
        {5, doubles, "0.333333 -2e+300 100000"},
        {6, ints, "-2147483648"},
        {7, ints, "on"},
        {7, ints + 1, "off"},
        // A matrix is narrowed to single precision first.
        {9, &matrix, "0.333333 0 0 0 0 inf 0 0 0 0 -0 0 1 2 3 1"},
        {10, "name", "\"name\""},
        {10, "a\"b", "xX612262"},
        {13, &text, "\"t\""},
        {14, floats, "0.8 1e-05"},
        {15, floats, "0.8 1e-05 -1.23457e+06 0.1"},
        {16, ints, "-2147483648 0"},
        {17, ints, "-2147483648 0 2147483647"},
        {18, ints, "-2147483648 0 2147483647 7"},
        {23, ints + 3, "7"},
    };
    for (const auto& form : forms) {
        EXPECT_EQ(value_text(form.code, form.value), form.text) << "code " << form.code;
    }
    // Codes that have no form in a file, and unknown codes.
    for (const std::int32_t code : {8, 11, 12, 19, 0x2000, 0x4000, -1 & ~0x8000}) {
        EXPECT_EQ(value_text(code, floats), "") << code;
    }
    const void* const no_shader = nullptr;
    EXPECT_EQ(value_text(parameter_code::kShader, &no_shader), "");
}

// Only the code of a single float is checked: values that the renderer can't read become -1.
TEST(SceneValues, AnInvalidFloatBecomesMinusOne) {
    const std::pair<float, const char*> floats[] = {
        {kNan, "-1"},
        {kInfinity, "-1"},
        {-kInfinity, "-1"},
        {kLargest, "-1"},
        {-kLargest, "-1"},
        {std::nextafter(kLargest, 0.0f), "3.40282e+38"},
        {std::numeric_limits<float>::denorm_min(), "1.4013e-45"},
        {-0.0f, "-0"},
    };
    for (const auto& [value, text] : floats) {
        EXPECT_EQ(value_text(parameter_code::kFloat, &value), text);
    }
    const double nan = kNan;
    EXPECT_EQ(value_text(parameter_code::kDouble, &nan), "             nan");
    const float color[] = {kNan, -kInfinity, 1};
    EXPECT_EQ(value_text(parameter_code::kColor, color), "nan -inf 1");
}

TEST(SceneValues, PlainParametersHaveABareName) {
    EXPECT_EQ(written_by([](Api& a) {
                  const float fov = 35.5f;
                  a.begin_camera("c");
                  a.set_parameter("fov", parameter_code::kFloat, &fov);
                  a.set_parameter("nothing", 8, nullptr);
                  a.set_parameter_id("shader", 3);
                  a.end_camera();
              }),
              "\ncamera \"c\" {\nfov 35.5\nnothing \n\"shader\" ! 3,\n}\n");
}

// The host may use a locale with a decimal comma. Numbers still have a point, and the locale is
// restored afterwards.
TEST(SceneValues, TheLocaleOfTheProcessHasNoEffect) {
    const char* chosen = nullptr;
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "German_Germany", "C"}) {
        chosen = chosen == nullptr ? std::setlocale(LC_NUMERIC, name) : chosen;
    }
    const std::string before = chosen;
    EXPECT_EQ(written_by([](Api& a) {
                  a.set_progress("p", 0.5f);
                  a.write_text("%g\n", 0.5);
                  EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
              }),
              "progress \"p\" 0.500\n\n0.5\n");
    EXPECT_EQ(std::setlocale(LC_NUMERIC, nullptr), before);
    std::setlocale(LC_NUMERIC, "C");
}

}  // namespace
