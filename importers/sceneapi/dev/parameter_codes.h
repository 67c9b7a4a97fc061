#pragma once

#include <cstdint>

/// The type of the value that is passed to `qorScene_api::set_parameter`.
///
/// With `kArray` added, the value is a `qorArray` of such elements. The renderer also passes other
/// codes around, but they have no value that a scene file could hold.
namespace parameter_code {

constexpr std::int32_t kColor = 1;         ///< `qorColor`
constexpr std::int32_t kFloat4 = 2;        ///< four floats
constexpr std::int32_t kFloat = 3;         ///< one float
constexpr std::int32_t kDouble = 4;        ///< one double
constexpr std::int32_t kVector = 5;        ///< `qorVector`
constexpr std::int32_t kInt = 6;           ///< one 32-bit integer
constexpr std::int32_t kBool = 7;          ///< one 32-bit integer; 0 is false
constexpr std::int32_t kMatrix = 9;        ///< `qorMatrix`
constexpr std::int32_t kText = 10;         ///< the text itself; in an array, pointers to texts
constexpr std::int32_t kSubshader = 12;    ///< no value
constexpr std::int32_t kTextPointer = 13;  ///< a pointer to a text
constexpr std::int32_t kFloat2 = 14;       ///< two floats
constexpr std::int32_t kFloat4Too = 15;    ///< four floats, written like `kFloat4`
constexpr std::int32_t kInt2 = 16;         ///< two 32-bit integers
constexpr std::int32_t kInt3 = 17;         ///< three 32-bit integers
constexpr std::int32_t kInt4 = 18;         ///< four 32-bit integers
constexpr std::int32_t kIntToo = 23;       ///< one 32-bit integer, written like `kInt`
constexpr std::int32_t kArray = 0x8000;    ///< added to the code of an element
constexpr std::int32_t kShader = 0x10000;  ///< a `qorShaderHandle`

}  // namespace parameter_code

/// What a shader does for the material that it is assigned to.
namespace shader_kind {

constexpr std::int32_t kSurface = 0;
constexpr std::int32_t kShadow = 1;
constexpr std::int32_t kVolume = 2;
constexpr std::int32_t kReflectionMap = 3;

}  // namespace shader_kind
