#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vsqinfo {

/// A "load" block: a module of the renderer and its options.
struct VsqModule {
    std::string name;
    /// Name and value as in the file, texts without their quotes.
    std::vector<std::pair<std::string, std::string>> options;
};

/// The contents of a scene file. Texts are bytes, decoded if the file has them in hexadecimal form;
/// at most the first `VsqTokens::kKeptText` bytes of each are kept.
struct VsqSummary {
    static constexpr std::size_t kKeptErrors = 8;
    static constexpr std::size_t kKeptModules = 16;
    static constexpr std::size_t kKeptOptions = 64;  ///< of each module

    std::uint64_t file_size = 0;  ///< bytes
    bool has_header = false;      ///< false for a scene that came over the live link
    std::int64_t header_id = 0;   ///< the number in the header's third line
    std::string banner;           ///< text of the first "#print"; empty if there is none
    std::int64_t version = 0;     ///< the format's
    std::vector<VsqModule> modules;

    std::string root_name;                   ///< the first root group's name
    std::optional<std::int64_t> root_flags;  ///< the first root group's flags
    std::uint64_t root_groups = 0;           ///< groups outside of all others; an export has one

    std::uint64_t groups = 0;       ///< groups inside another one
    std::uint64_t objects = 0;      ///< objects placed in the scene
    std::uint64_t definitions = 0;  ///< groups, objects and geometries that are only defined

    std::uint64_t triangles = 0;      ///< index triples; a light without extent also has one
    std::uint64_t vertices = 0;       ///< of the "triangles" geometries
    std::uint64_t curves = 0;         ///< strands
    std::uint64_t curve_points = 0;   ///< control points of all strands
    std::uint64_t instances = 0;      ///< geometries that repeat a defined one
    std::uint64_t library_files = 0;  ///< geometries whose triangles are in a file of their own
    std::vector<std::string> library_paths;  ///< the distinct files of those, sorted

    std::uint64_t materials = 0;            ///< distinct names of the material blocks
    std::uint64_t material_blocks = 0;      ///< all blocks; each use can write its own
    std::uint64_t material_references = 0;  ///< uses of a defined material by its name
    std::uint64_t shaders = 0;
    std::uint64_t textures = 0;  ///< distinct files in "texture" of all shaders except environments
    std::uint64_t environments = 0;  ///< distinct files in "texture" of "qor_envmap" shaders

    /// Objects that contain a shader "qor_point_light", "qor_ies_light" or "qor_mesh_light", and
    /// "light" blocks. A sky light doesn't count: it is an environment.
    std::uint64_t lights = 0;
    std::uint64_t cameras = 0;
    std::uint64_t animations = 0;
    std::uint64_t animation_keys = 0;  ///< entries of the animations' "timestamps"

    std::uint64_t node_matrices = 0;   ///< matrix statements directly in a group
    std::uint64_t other_matrices = 0;  ///< matrix statements in objects, cameras and elsewhere
    /// Matrix statements, and matrices of animations, that hold NaN or infinity.
    std::uint64_t matrices_not_finite = 0;

    std::uint64_t errors = 0;              ///< "#error" messages
    std::vector<std::string> error_texts;  ///< the first `kKeptErrors` of them
};

/// The summary as aligned lines, each with its line feed. Some counts are left out if they are 0.
std::string summary_text(const VsqSummary& summary);

}  // namespace vsqinfo
