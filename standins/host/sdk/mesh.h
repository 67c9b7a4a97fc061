#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "standins/host/sdk/MeshNormalSpec.h"
#include "standins/host/sdk/maxtypes.h"
#include "standins/host/sdk/point3.h"

using MtlID = WORD;

/// A triangle: three vertices, counter-clockwise seen from the front.
class Face {
public:
    DWORD v[3];
    DWORD smGroup;  ///< one bit for each smoothing group
    DWORD flags;    ///< the material id in the top 16 bits

    DWORD getVert(int corner) const { return v[corner]; }
    DWORD getSmGroup() const { return smGroup; }
    MtlID getMatID() { return static_cast<MtlID>(flags >> 16); }
    void setMatID(MtlID id) { flags = (flags & 0xFFFF) | static_cast<DWORD>(id) << 16; }
};

using UVVert = Point3;

/// A face of a mapping channel: three indices into the channel's vertices.
class TVFace {
public:
    DWORD t[3];
};

/// A triangle mesh. Faces share positions. Each mapping channel has its own vertices for texture
/// coordinates, and face `f` of a channel belongs to face `f` of the mesh.
class Mesh {
public:
    int numVerts = 0;
    int numFaces = 0;
    Point3* verts = nullptr;
    Face* faces = nullptr;

    Mesh() = default;
    Mesh(const Mesh& other) { *this = other; }
    /// It depends on the host whether the copy has the specified normals.
    Mesh& operator=(const Mesh& other);

    /// Exchanges the contents of two meshes, for the in-memory host.
    void swap(Mesh& other) {
        vert_array_.swap(other.vert_array_);
        face_array_.swap(other.face_array_);
        maps_.swap(other.maps_);
        normals_.swap(other.normals_);
        show_arrays();
        other.show_arrays();
    }

    int getNumVerts() const { return numVerts; }
    int getNumFaces() const { return numFaces; }

    /// Whether a channel has data. Channel 0 holds vertex colours, 1 to 99 hold texture
    /// coordinates.
    BOOL mapSupport(int channel) const { return find_map(channel) != nullptr; }
    /// Null for a channel without data.
    UVVert* mapVerts(int channel) const {
        MapChannel* map = find_map(channel);
        return map ? map->verts.data() : nullptr;
    }
    /// One per face of the mesh, or null for a channel without data.
    TVFace* mapFaces(int channel) const {
        MapChannel* map = find_map(channel);
        return map ? map->faces.data() : nullptr;
    }
    int getNumMapVerts(int channel) const {
        MapChannel* map = find_map(channel);
        return map ? static_cast<int>(map->verts.size()) : 0;
    }

    /// Null if the mesh has none.
    MeshNormalSpec* GetSpecifiedNormals() { return normals_.get(); }

    /// Copies everything, including the specified normals.
    void copy_whole(const Mesh& other) {
        if (this != &other) {
            vert_array_ = other.vert_array_;
            face_array_ = other.face_array_;
            maps_ = other.maps_;
            normals_ = other.normals_ ? std::make_unique<MeshNormalSpec>(*other.normals_) : nullptr;
            show_arrays();
        }
    }
    /// Called by the object that the mesh is a part of.
    void set_in_object() { is_in_object_ = true; }

    /// Clears the mesh and gives it this number of vertices and faces.
    void reset(int vertices, int triangles) {
        vert_array_.assign(static_cast<std::size_t>(vertices), Point3());
        face_array_.assign(static_cast<std::size_t>(triangles), Face());
        maps_.clear();
        normals_.reset();
        show_arrays();
    }

    /// Gives a channel this number of vertices, and a face for each face of the mesh.
    void reset_map(int channel, int vertices) {
        MapChannel* map = find_map(channel);
        if (!map) {
            maps_.push_back({channel, {}, {}});
            map = &maps_.back();
        }
        map->verts.assign(static_cast<std::size_t>(vertices), UVVert());
        map->faces.assign(face_array_.size(), TVFace());
    }

    /// Replaces the specified normals with new ones, which no corner refers to yet.
    MeshNormalSpec& reset_normals(int normals) {
        normals_ = std::make_unique<MeshNormalSpec>();
        normals_->reset(numFaces, normals);
        return *normals_;
    }

private:
    struct MapChannel {
        int channel;
        std::vector<UVVert> verts;
        std::vector<TVFace> faces;
    };

    MapChannel* find_map(int channel) const {
        for (MapChannel& map : maps_) {
            if (map.channel == channel) {
                return &map;
            }
        }
        return nullptr;
    }

    void show_arrays() {
        numVerts = static_cast<int>(vert_array_.size());
        numFaces = static_cast<int>(face_array_.size());
        verts = vert_array_.data();
        faces = face_array_.data();
    }

    std::vector<Point3> vert_array_;
    std::vector<Face> face_array_;
    mutable std::vector<MapChannel> maps_;  // only channels with data
    std::unique_ptr<MeshNormalSpec> normals_;
    bool is_in_object_ = false;  // not copied
};
