#pragma once

#include <string>

#include "standins/host/memory/image.h"
#include "standins/host/sdk/max.h"

namespace memhost {

/// Counts what a host's bitmaps were used for since the host was made.
struct BitmapRecord {
    int created = 0;
    int alive = 0;    // created and not yet freed
    int written = 0;  // files
    int asked = 0;    // calls of `GetImageInfo`
};

/// The bitmaps of a host. They read and write real image files.
class MemoryBitmapManager final : public BitmapManager {
public:
    const BitmapRecord& record() const { return record_; }

    /// From now on `Create` fails, as if there were no memory.
    void refuse_bitmaps() { refuses_ = true; }

    Bitmap* Create(BitmapInfo* info) override;
    BMMRES GetImageInfo(BitmapInfo* info, const MCHAR* filename = nullptr) override;

private:
    friend class MemoryBitmap;

    BitmapRecord record_;
    bool refuses_ = false;
};

class MemoryBitmap final : public Bitmap {
public:
    MemoryBitmap(MemoryBitmapManager* manager, int width, int height)
        : manager_(manager), width_(width), height_(height) {}

    /// The pixels are allocated by the first call.
    Image& image();

    BitmapManager* Manager() override { return manager_; }
    BMMRES OpenOutput(BitmapInfo* info) override;
    BMMRES Write(BitmapInfo* info, int frame = BMM_SINGLEFRAME) override;
    int Close(BitmapInfo* info, int flag = BMM_CLOSE_COMPLETE) override;
    void DeleteThis() override;

private:
    MemoryBitmapManager* manager_;
    int width_;
    int height_;
    Image image_;
    std::wstring output_;  // the file that is open for writing, or empty
};

}  // namespace memhost
