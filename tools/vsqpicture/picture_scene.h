#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/vsqpicture/vectors.h"

namespace vsqpicture {

struct Shader;
using ShaderPtr = std::shared_ptr<Shader>;

/// A shader as the file gives it: its type and parameters.
struct Shader {
    std::string type;
    std::map<std::string, std::vector<double>> numbers;  ///< "on" is 1, "off" is 0
    std::map<std::string, std::string> texts;
    std::map<std::string, ShaderPtr> inputs;  ///< parameters whose value is a shader
    std::vector<ShaderPtr> layers;            ///< of the array "shaders"
};

/// The arrays of a mesh; the indices count elements.
struct Mesh {
    std::vector<float> positions;               ///< three per vertex
    std::vector<std::uint32_t> triangles;       ///< three per triangle
    std::vector<float> normals;                 ///< three each
    std::vector<std::uint32_t> normal_indices;  ///< empty: as the triangles
    std::vector<float> uvs;                     ///< two each
    std::vector<std::uint32_t> uv_indices;      ///< empty: as the triangles
    std::vector<float> colours;                 ///< three per vertex
};

/// Strands of cubic Bezier segments.
struct Curves {
    std::vector<float> points;                 ///< three per control point
    std::vector<float> radii;                  ///< factors, one per control point, or empty
    std::vector<float> colours;                ///< three per control point, or empty
    std::vector<std::uint32_t> strand_points;  ///< how many control points each strand has
    double radius = 1;
    double order = 4;
};

/// An object in its node's space.
struct Object {
    std::string name;
    std::optional<std::int64_t> id;
    Matrix matrix = kIdentity;
    std::shared_ptr<const Mesh> mesh;
    std::shared_ptr<const Curves> curves;
    std::optional<std::int64_t> instance_of;  ///< the id of the object whose shape it has
    std::string mesh_file;
    ShaderPtr surface;
};

/// Matrices at times. Timestamps count 33 per frame from the first frame of the range.
struct Track {
    std::vector<double> timestamps;
    std::vector<double> numbers;  ///< sixteen per timestamp
};

/// A group.
struct Node {
    std::string name;
    std::size_t parent = 0;  ///< the root is its own parent; parents come before their children
    Matrix matrix = kIdentity;
    std::optional<Track> track;  ///< changes from the matrix before the animation
    std::vector<Object> objects;
    /// If not empty, the objects "qor_deform_0" and so on take turns, beginning at these
    /// timestamps.
    std::vector<double> turns;
};

struct Camera {
    std::string name;
    std::size_t node = 0;
    bool is_perspective = true;
    double fov_degrees = 45;  ///< horizontal
    std::vector<double> clipping;
    Matrix matrix = kIdentity;
    std::optional<Track> track;  ///< whole matrices
    std::string sky;             ///< path of the picture around the scene, or empty
};

/// A scene as one or several files describe it.
struct PictureScene {
    std::vector<Node> nodes = {Node()};  ///< the first one is the top level
    std::vector<Camera> cameras;
    double units_per_metre = 1;
    /// What can't be drawn, with how often it was seen.
    std::map<std::string, std::size_t> undrawn;

    void note(const std::string& what) { ++undrawn[what]; }

    /// Where a node is at a frame: scene from node.
    std::vector<Matrix> world_matrices(double frame) const;
};

/// The matrix of a track at a timestamp, between two keys in a straight line.
Matrix matrix_at(const Track& track, double timestamp);

/// Timestamps of a track count so many to a frame.
inline constexpr double kTimestampsPerFrame = 33;

}  // namespace vsqpicture
