#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vsqinfo {

/// A "load" block: a module of the renderer and the options that it gets.
struct VsqModule {
    std::string name;
    /// Name and value as they stand in the file, texts without their quotes.
    std::vector<std::pair<std::string, std::string>> options;
};

/// What a scene file holds. Texts are bytes, decoded where the file has them in hexadecimal form;
/// of each at most `VsqTokens::kKeptText` bytes are kept.
struct VsqSummary {
    static constexpr std::size_t kKeptErrors = 8;
    static constexpr std::size_t kKeptModules = 16;
    static constexpr std::size_t kKeptOptions = 64;  ///< of each module

    std::uint64_t file_size = 0;  ///< bytes
    bool has_header = false;      ///< one that a renderer received has none
    std::int64_t header_id = 0;   ///< the number in the header's third line
    std::string banner;           ///< text of the first "#print"; empty without one
    std::int64_t version = 0;     ///< of the format
    std::vector<VsqModule> modules;

    std::string root_name;                   ///< of the first root group
    std::optional<std::int64_t> root_flags;  ///< of that group
    std::uint64_t root_groups = 0;           ///< groups that stand in no other; an export has one

    std::uint64_t groups = 0;       ///< groups that stand in another one
    std::uint64_t objects = 0;      ///< objects that stand in the scene
    std::uint64_t definitions = 0;  ///< groups, objects and geometries that are only defined

    std::uint64_t triangles = 0;      ///< index triples; a light without extent has one, too
    std::uint64_t vertices = 0;       ///< of the "triangles" geometries
    std::uint64_t curves = 0;         ///< strands
    std::uint64_t curve_points = 0;   ///< control points of all strands
    std::uint64_t instances = 0;      ///< geometries that repeat a defined one
    std::uint64_t library_files = 0;  ///< geometries whose triangles lie in a file of their own
    std::vector<std::string> library_paths;  ///< the distinct files of those, sorted

    std::uint64_t materials = 0;            ///< distinct names of the material blocks
    std::uint64_t material_blocks = 0;      ///< each use writes its block anew
    std::uint64_t material_references = 0;  ///< uses of a defined material by its name
    std::uint64_t shaders = 0;
    std::uint64_t textures = 0;  ///< distinct files in "texture" of all shaders but environments
    std::uint64_t environments = 0;  ///< distinct files in "texture" of "qor_envmap" shaders

    /// Objects that give light: those that hold a shader "qor_point_light", "qor_ies_light" or
    /// "qor_mesh_light"; and "light" blocks. A sky light is no object: it is the environment.
    std::uint64_t lights = 0;
    std::uint64_t cameras = 0;
    std::uint64_t animations = 0;
    std::uint64_t animation_keys = 0;  ///< entries of the animations' "timestamps"

    std::uint64_t node_matrices = 0;   ///< matrix statements that stand directly in a group
    std::uint64_t other_matrices = 0;  ///< matrix statements in objects, cameras and elsewhere
    /// Matrix statements, and matrices of animations, that hold an infinity or no number.
    std::uint64_t matrices_not_finite = 0;

    std::uint64_t errors = 0;              ///< "#error" messages
    std::vector<std::string> error_texts;  ///< the first of them
};

/// The summary as aligned lines, each with its line feed; counts of 0 that say nothing are left
/// out.
std::string summary_text(const VsqSummary& summary);

}  // namespace vsqinfo
