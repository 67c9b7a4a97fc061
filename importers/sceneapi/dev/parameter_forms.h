#pragma once

#include <cstddef>
#include <cstdint>

#include "importers/sceneapi/dev/parameter_codes.h"
#include "importers/sceneapi/dev/scene_types.h"

/// How the file writer prints the value of a parameter code, alone or as an array element.
enum class ParameterForm {
    kFloats,
    kCheckedFloat,  ///< passed through `number_text::ordinary`
    kFixedDouble,
    kDoubles,
    kInts,
    kBool,
    kMatrix,
    kText,
    kTextPointer,
    kShader,
};

/// What a parameter code means for the file writer.
struct ParameterCode {
    std::int32_t code;
    ParameterForm form;
    int count;                 ///< how many numbers a value has
    std::size_t element_size;  ///< array element in bytes; 0 if the code has no arrays
    char tag;                  ///< tag of a binary array; 0 if arrays are always text
};

inline constexpr ParameterCode kParameterCodes[] = {
    {parameter_code::kColor, ParameterForm::kFloats, 3, 3 * sizeof(float), 'c'},
    {parameter_code::kFloat4, ParameterForm::kFloats, 4, 4 * sizeof(float), 0},
    {parameter_code::kFloat, ParameterForm::kCheckedFloat, 1, sizeof(float), 'f'},
    {parameter_code::kDouble, ParameterForm::kFixedDouble, 1, sizeof(double), 'r'},
    {parameter_code::kVector, ParameterForm::kDoubles, 3, sizeof(qorVector), 0},
    {parameter_code::kInt, ParameterForm::kInts, 1, sizeof(std::int32_t), 'i'},
    {parameter_code::kBool, ParameterForm::kBool, 1, sizeof(std::int32_t), 0},
    {parameter_code::kMatrix, ParameterForm::kMatrix, 16, sizeof(qorMatrix), 0},
    {parameter_code::kText, ParameterForm::kText, 1, sizeof(const char*), 0},
    {parameter_code::kTextPointer, ParameterForm::kTextPointer, 1, sizeof(const char*), 0},
    {parameter_code::kFloat2, ParameterForm::kFloats, 2, 0, 0},
    {parameter_code::kFloat4Too, ParameterForm::kFloats, 4, 0, 0},
    {parameter_code::kInt2, ParameterForm::kInts, 2, 0, 0},
    {parameter_code::kInt3, ParameterForm::kInts, 3, 0, 0},
    {parameter_code::kInt4, ParameterForm::kInts, 4, 0, 0},
    {parameter_code::kIntToo, ParameterForm::kInts, 1, sizeof(std::int32_t), 'i'},
    {parameter_code::kShader, ParameterForm::kShader, 1, 0, 0},
};

/// Null for a code whose value the file writer leaves empty.
inline const ParameterCode* find_parameter_code(std::int32_t code) {
    for (const ParameterCode& known : kParameterCodes) {
        if (known.code == code) {
            return &known;
        }
    }
    return nullptr;
}
