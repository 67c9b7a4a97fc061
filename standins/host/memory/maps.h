#pragma once

#include <functional>
#include <optional>
#include <string>

#include "standins/host/memory/bitmap_manager.h"
#include "standins/host/memory/image.h"
#include "standins/host/sdk/max.h"

namespace memhost {

class MemoryHost;

/// A map that shows an image file. The file isn't opened before it is needed.
class BitmapMap final : public BitmapTex {
public:
    /// The path is wide text or UTF-8.
    BitmapMap(MemoryHost& host, const std::wstring& path);
    BitmapMap(MemoryHost& host, const std::string& path_utf8);

    BitmapMap& channel(int channel);
    /// The mesh's coordinates are multiplied by the tiling, then moved by the offset.
    BitmapMap& tiling(float u, float v, float u_offset = 0, float v_offset = 0);
    BitmapMap& uv_transform(const Matrix3& map_from_mesh);
    /// Before that time the map has no picture.
    BitmapMap& shown_from(TimeValue t);

    int GetMapChannel() override { return channel_; }
    void GetUVTransform(Matrix3& map_from_mesh) override { map_from_mesh = map_from_mesh_; }
    void RenderBitmap(TimeValue t, Bitmap* bitmap, float scale3d, BOOL filter) override;
    Bitmap* GetBitmap(TimeValue t) override;
    const MCHAR* GetMapName() override { return path_.c_str(); }

private:
    MemoryHost& host_;
    std::wstring path_;
    int channel_ = 1;
    Matrix3 map_from_mesh_;
    TimeValue shown_from_ = TIME_NegInfinity;
    std::optional<MemoryBitmap> bitmap_;
};

/// A map that draws itself instead of using a file.
class ProceduralMap final : public Texmap {
public:
    /// Fills the image with the part of the map whose coordinates are from 0 to 1. v points
    /// upwards.
    using Painter = std::function<void(Image&)>;

    explicit ProceduralMap(Painter painter) : paint_(std::move(painter)) {}

    ProceduralMap& channel(int channel);

    /// How often the map was drawn.
    int renders() const { return renders_; }

    int GetMapChannel() override { return channel_; }
    void Update(TimeValue t, Interval& valid) override;
    int LoadMapFiles(TimeValue t) override;
    void RenderBitmap(TimeValue t, Bitmap* bitmap, float scale3d, BOOL filter) override;

private:
    Painter paint_;
    std::optional<TimeValue> updated_;  // the time of the last call
    std::optional<TimeValue> loaded_;
    int channel_ = 1;
    int renders_ = 0;
};

/// A single colour.
ProceduralMap::Painter solid(Pixel color);
/// A board with `fields` squares in each direction. The one at the lower left has the first colour.
ProceduralMap::Painter checker(Pixel first, Pixel second, int fields);
/// Fades from left to right.
ProceduralMap::Painter gradient(Pixel left, Pixel right);
/// An image, scaled without filtering. `load` is called for each drawing, so that the image takes
/// no memory in between. If it returns `nullopt`, nothing is drawn.
ProceduralMap::Painter picture(std::function<std::optional<Image>()> load);

}  // namespace memhost
