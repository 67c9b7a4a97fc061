#include "plugins/3dsmax/export/texture_baking.h"

#include <map>
#include <memory>
#include <optional>
#include <utility>

#include "model/smart_material.h"
#include "platform/wide_text.h"
#include "plugins/3dsmax/export/bitmap_file.h"
#include "plugins/3dsmax/export/material_entry.h"
#include "plugins/3dsmax/export/material_notes.h"
#include "plugins/3dsmax/export/narrow_name.h"
#include "plugins/3dsmax/export/renderer_textures.h"

namespace {

// Where a texture of one kind goes, and the word for the kind in the name of a baked file.
struct TextureTarget {
    const wchar_t* word;
    int MaterialEntry::*channel;
    void (qor::SmartMaterial::*set_texture)(std::string);
};

// In the order of `TextureKind`.
constexpr TextureTarget kTargets[] = {
    {L"diffuse", &MaterialEntry::diffuse_channel, &qor::SmartMaterial::set_diffuse_texture},
    {L"bump", &MaterialEntry::bump_channel, &qor::SmartMaterial::set_bump_texture},
    {L"specular", &MaterialEntry::specular_channel, &qor::SmartMaterial::set_specular_texture},
    {L"opacity", &MaterialEntry::opacity_channel, &qor::SmartMaterial::set_opacity_texture},
};

const TextureTarget& target_of(TextureKind kind) {
    return kTargets[static_cast<int>(kind)];
}

constexpr WORD kBakedSize = 1024;  // pixels, in both directions

// Every file baked since the plug-in was loaded.
std::map<std::wstring, BakeResult> baked_textures;

struct BitmapDeleter {
    void operator()(Bitmap* bitmap) const { bitmap->DeleteThis(); }
};

// The material's name is used unchanged, so that users can recognise the file. If it isn't a valid
// file name, the renderer finds no texture.
std::wstring baked_file(Mtl* mtl, const TextureTarget& target) {
    return platform::wide_from_utf8(GetRendererTexturesFolder()) + mtl->GetName().data() + L"_" +
           target.word + L".png";
}

void apply_bitmap(MaterialEntry& entry, Mtl* mtl, BitmapTex& texmap, TextureKind kind) {
    const TextureTarget& target = target_of(kind);
    texmap.GetUVTransform(entry.uv_transform);
    if (std::optional<std::string> file = bitmap_file(texmap, entry.time, entry.notes)) {
        (entry.material.get()->*target.set_texture)(std::move(*file));
    } else if (entry.notes) {
        NoteMissingBitmap(entry, mtl, texmap, kind);
    }
}

void apply_baked(MaterialEntry& entry, Mtl* mtl, Texmap* texmap, TextureKind kind) {
    const TextureTarget& target = target_of(kind);
    const std::wstring path = baked_file(mtl, target);
    const BakeResult result = bake_texmap(texmap, path);
    if (entry.notes) {
        NoteBaked(entry, mtl, texmap, kind, path, result);
    }
    (entry.material.get()->*target.set_texture)(NarrowName(path.c_str()));
    // Drawing a map can update it and so change its channel.
    entry.*target.channel = texmap->GetMapChannel();
}

}  // namespace

void apply_texmap(MaterialEntry& entry, Mtl* mtl, const Mesh& mesh, Texmap* texmap,
                  TextureKind kind) {
    if (texmap == nullptr) {
        return;
    }
    const int channel = texmap->GetMapChannel();
    if (!mesh.mapSupport(channel)) {
        NoteMissingChannel(entry, mtl, kind, channel);
        return;
    }
    entry.*target_of(kind).channel = channel;
    if (is_bitmap_texmap(texmap)) {
        apply_bitmap(entry, mtl, *static_cast<BitmapTex*>(texmap), kind);
    } else {
        apply_baked(entry, mtl, texmap, kind);
    }
}

BakeResult bake_texmap(Texmap* texmap, const std::wstring& path) {
    const auto known = baked_textures.find(path);
    if (known != baked_textures.end()) {
        return known->second;
    }
    BitmapInfo info;
    info.SetName(path.c_str());
    info.SetType(BMM_TRUE_32);
    info.SetWidth(kBakedSize);
    info.SetHeight(kBakedSize);
    const std::unique_ptr<Bitmap, BitmapDeleter> bitmap(TheManager->Create(&info));
    if (!bitmap) {
        return BakeResult::kNotDrawn;
    }

    // The path is kept even if the file can't be written. So a folder without write access costs
    // one drawing, not one per export.
    BakeResult& result = baked_textures[path];
    result = BakeResult::kNotWritten;
    // A map needn't be ready to draw itself. The host calls these before it renders, too.
    constexpr TimeValue kDrawnTime = 0;
    Interval valid = FOREVER;
    texmap->Update(kDrawnTime, valid);
    texmap->LoadMapFiles(kDrawnTime);
    texmap->RenderBitmap(kDrawnTime, bitmap.get(), 1.0f, FALSE);
    const bool is_open = bitmap->OpenOutput(&info) == BMMRES_SUCCESS;
    const bool is_written = bitmap->Write(&info, BMM_SINGLEFRAME) == BMMRES_SUCCESS;
    bitmap->Close(&info, BMM_CLOSE_COMPLETE);
    if (is_open && is_written) {
        result = BakeResult::kWritten;
    }
    return result;
}
