#include "standins/host/memory/bitmap_manager.h"

#include <algorithm>
#include <cwctype>
#include <optional>

#include "standins/host/memory/image_file.h"
#include "standins/host/memory/strict_rules.h"

namespace memhost {
namespace {

constexpr BMMRES kFailure = 1;

bool ends_like_png(const std::wstring& path) {
    const std::wstring ending = L".png";
    return path.size() > ending.size() &&
           std::equal(ending.rbegin(), ending.rend(), path.rbegin(), [](wchar_t a, wchar_t b) {
               return static_cast<std::wint_t>(a) == std::towlower(static_cast<std::wint_t>(b));
           });
}

WORD limited_to_word(int size) {
    return static_cast<WORD>(std::min(size, 0xFFFF));
}

}  // namespace

Bitmap* MemoryBitmapManager::Create(BitmapInfo* info) {
    if (refuses_) {
        return nullptr;
    }
    ++record_.created;
    ++record_.alive;
    return new MemoryBitmap(this, info->Width(), info->Height());
}

BMMRES MemoryBitmapManager::GetImageInfo(BitmapInfo* info, const MCHAR* filename) {
    ++record_.asked;
    if (filename) {
        info->SetName(filename);
    }
    const std::optional<ImageSize> size = read_image_size(info->Name());
    if (!size) {
        return kFailure;
    }
    info->SetType(BMM_TRUE_32);
    info->SetWidth(limited_to_word(size->width));
    info->SetHeight(limited_to_word(size->height));
    return BMMRES_SUCCESS;
}

Image& MemoryBitmap::image() {
    if (image_.pixels.empty()) {
        image_ = Image(width_, height_);
    }
    return image_;
}

BMMRES MemoryBitmap::OpenOutput(BitmapInfo* info) {
    const std::wstring path = info->Name();
    if (!ends_like_png(path) || host_obeys(StrictRule::kBitmapWriteFails)) {
        return kFailure;
    }
    output_ = path;
    return BMMRES_SUCCESS;
}

BMMRES MemoryBitmap::Write(BitmapInfo*, int) {
    if (output_.empty() || !write_png(output_, image())) {
        return kFailure;
    }
    ++manager_->record_.written;
    return BMMRES_SUCCESS;
}

int MemoryBitmap::Close(BitmapInfo*, int) {
    output_.clear();
    return BMMRES_SUCCESS;
}

void MemoryBitmap::DeleteThis() {
    --manager_->record_.alive;
    delete this;
}

}  // namespace memhost
