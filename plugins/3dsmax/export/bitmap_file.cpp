#include "plugins/3dsmax/export/bitmap_file.h"

#include "plugins/3dsmax/export/name_notes.h"
#include "plugins/3dsmax/export/narrow_name.h"

bool is_bitmap_texmap(Texmap* texmap) {
    return texmap->ClassID() == Class_ID(BMTEX_CLASS_ID, 0);
}

std::optional<std::string> bitmap_file(BitmapTex& texmap, TimeValue time, const NodeNotes& notes) {
    Bitmap* const bitmap = texmap.GetBitmap(time);
    if (bitmap == nullptr) {
        return std::nullopt;
    }
    const MCHAR* const name = texmap.GetMapName();
    BitmapInfo info(name == nullptr ? L"" : name);
    info.SetCurrentFrame(0);
    BitmapManager* const manager = bitmap->Manager();
    if (manager == nullptr) {
        return std::nullopt;
    }
    manager->GetImageInfo(&info, nullptr);
    const MaxSDK::Util::Path path = info.GetPathEx().GetResolvedAbsolutePath();
    NoteName(notes, path.GetCStr(), "the picture");
    return NarrowName(path.GetCStr());
}
