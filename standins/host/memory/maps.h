#pragma once

#include <functional>
#include <optional>
#include <string>

#include "standins/host/memory/bitmap_manager.h"
#include "standins/host/memory/image.h"
#include "standins/host/sdk/max.h"

namespace memhost {

class MemoryHost;

/// A map that shows an image file. The file is looked at when the bitmap is first asked for.
class BitmapMap final : public BitmapTex {
public:
    /// Wide text or UTF-8.
    BitmapMap(MemoryHost& host, const std::wstring& path);
    BitmapMap(MemoryHost& host, const std::string& path_utf8);

    BitmapMap& channel(int channel);
    /// The mesh's coordinates are multiplied by the tiling, then moved by the offset.
    BitmapMap& tiling(float u, float v, float u_offset = 0, float v_offset = 0);
    BitmapMap& uv_transform(const Matrix3& map_from_mesh);

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
    std::optional<MemoryBitmap> bitmap_;
};

/// A map that is no file: it draws itself.
class ProceduralMap final : public Texmap {
public:
    /// Draws the map for coordinates from 0 to 1 into a whole image, v upwards.
    using Painter = std::function<void(Image&)>;

    explicit ProceduralMap(Painter painter) : paint_(std::move(painter)) {}

    ProceduralMap& channel(int channel);

    /// How often the map was drawn.
    int renders() const { return renders_; }

    int GetMapChannel() override { return channel_; }
    void RenderBitmap(TimeValue t, Bitmap* bitmap, float scale3d, BOOL filter) override;

private:
    Painter paint_;
    int channel_ = 1;
    int renders_ = 0;
};

/// One colour.
ProceduralMap::Painter solid(Pixel color);
/// So many fields in each direction, the first colour in the lower left.
ProceduralMap::Painter checker(Pixel first, Pixel second, int fields);
/// From the left to the right.
ProceduralMap::Painter gradient(Pixel left, Pixel right);
/// An image, nearest pixel by pixel. It is made anew for each drawing, so that it takes no memory
/// in between; without it nothing is drawn.
ProceduralMap::Painter picture(std::function<std::optional<Image>()> load);

}  // namespace memhost
