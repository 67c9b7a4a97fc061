#include "standins/host/memory/maps.h"

#include <cstdint>
#include <utility>

#include "standins/host/memory/host_text.h"
#include "standins/host/memory/image_file.h"
#include "standins/host/memory/memory_host.h"
#include "standins/host/memory/placement.h"
#include "standins/host/memory/strict_rules.h"

namespace memhost {
namespace {

// Takes the nearest pixel, without filtering.
void draw_scaled(const Image& source, Image& target) {
    const auto scaled = [](int place, int target_size, int source_size) {
        return static_cast<int>(static_cast<std::int64_t>(place) * source_size / target_size);
    };
    for (int row = 0; row < target.height; ++row) {
        const int source_row = scaled(row, target.height, source.height);
        for (int column = 0; column < target.width; ++column) {
            target.at(column, row) =
                source.at(scaled(column, target.width, source.width), source_row);
        }
    }
}

std::uint8_t between(std::uint8_t left, std::uint8_t right, int step, int steps) {
    return static_cast<std::uint8_t>((left * (steps - step) + right * step) / steps);
}

}  // namespace

BitmapMap::BitmapMap(MemoryHost& host, const std::wstring& path)
    : host_(host), path_(units_from_wide(path)) {}

BitmapMap::BitmapMap(MemoryHost& host, const std::string& path_utf8)
    : host_(host), path_(units_from_utf8(path_utf8)) {}

BitmapMap& BitmapMap::channel(int channel) {
    channel_ = channel;
    return *this;
}

BitmapMap& BitmapMap::tiling(float u, float v, float u_offset, float v_offset) {
    return uv_transform(scaling(u, v, 1) * translation(u_offset, v_offset, 0));
}

BitmapMap& BitmapMap::uv_transform(const Matrix3& map_from_mesh) {
    map_from_mesh_ = map_from_mesh;
    return *this;
}

BitmapMap& BitmapMap::shown_from(TimeValue t) {
    shown_from_ = t;
    return *this;
}

void BitmapMap::RenderBitmap(TimeValue, Bitmap* bitmap, float, BOOL) {
    if (const std::optional<Image> image = read_image(path_)) {
        draw_scaled(*image, static_cast<MemoryBitmap*>(bitmap)->image());
    }
}

Bitmap* BitmapMap::GetBitmap(TimeValue t) {
    if (t < shown_from_ || host_obeys(StrictRule::kBitmapOpenFails)) {
        return nullptr;
    }
    if (!bitmap_) {
        const std::optional<ImageSize> size = read_image_size(path_);
        if (!size) {
            return nullptr;
        }
        bitmap_.emplace(&host_.bitmaps(), size->width, size->height);
    }
    return &*bitmap_;
}

ProceduralMap& ProceduralMap::channel(int channel) {
    channel_ = channel;
    return *this;
}

void ProceduralMap::Update(TimeValue t, Interval&) {
    updated_ = t;
}

int ProceduralMap::LoadMapFiles(TimeValue t) {
    loaded_ = t;
    return TRUE;
}

void ProceduralMap::RenderBitmap(TimeValue t, Bitmap* bitmap, float, BOOL) {
    ++renders_;
    const bool is_ready =
        !host_obeys(StrictRule::kMapNeedsUpdate) || (updated_ == t && loaded_ == t);
    if (is_ready && !host_obeys(StrictRule::kMapDrawFails)) {
        paint_(static_cast<MemoryBitmap*>(bitmap)->image());
    }
}

ProceduralMap::Painter solid(Pixel color) {
    return [color](Image& image) { image.pixels.assign(image.pixels.size(), color); };
}

ProceduralMap::Painter checker(Pixel first, Pixel second, int fields) {
    return [first, second, fields](Image& image) {
        for (int row = 0; row < image.height; ++row) {
            const int field_row = (image.height - 1 - row) * fields / image.height;
            for (int column = 0; column < image.width; ++column) {
                const int field_column = column * fields / image.width;
                image.at(column, row) = (field_row + field_column) % 2 == 0 ? first : second;
            }
        }
    };
}

ProceduralMap::Painter gradient(Pixel left, Pixel right) {
    return [left, right](Image& image) {
        const int steps = image.width > 1 ? image.width - 1 : 1;
        for (int row = 0; row < image.height; ++row) {
            for (int column = 0; column < image.width; ++column) {
                image.at(column, row) = {between(left.red, right.red, column, steps),
                                         between(left.green, right.green, column, steps),
                                         between(left.blue, right.blue, column, steps),
                                         between(left.alpha, right.alpha, column, steps)};
            }
        }
    };
}

ProceduralMap::Painter picture(std::function<std::optional<Image>()> load) {
    return [load = std::move(load)](Image& image) {
        if (const std::optional<Image> source = load()) {
            draw_scaled(*source, image);
        }
    };
}

}  // namespace memhost
