#include "plugins/3dsmax/export/material_notes.h"

#include <algorithm>
#include <cstddef>

#include "importers/sceneapi/dev/installation.h"
#include "platform/wide_text.h"
#include "plugins/3dsmax/export/mesh_notes.h"
#include "plugins/3dsmax/export/name_notes.h"

namespace {

constexpr const char* kKindNames[] = {"diffuse", "bump", "specular", "opacity"};

// The forms of these two in the genuine headers are unverified, so each is called in one place.
float OpacityOf(StdMat& mtl, TimeValue time) {
    return mtl.GetOpacity(time);
}

float SelfIlluminationOf(StdMat& mtl, TimeValue time) {
    return mtl.GetSelfIllum(time);
}

// Windows allows 259 characters in a path, and no system more than 255 bytes in a name.
std::string LikelyCause(const std::string& path) {
    constexpr std::size_t kLongestName = 255;
    const std::string name = path.substr(path.find_last_of("/\\") + 1);
    if (name.size() > kLongestName) {
        return "its name has " + std::to_string(name.size()) + " bytes, which may be too long";
    }
    if (qor::Installation::get()
            .resource_folder(qor::kOldestRenderer, qor::kNewestRenderer)
            .empty()) {
        return "no renderer is registered, so the path is relative";
    }
    if (std::any_of(name.begin(), name.end(),
                    [](char c) { return static_cast<unsigned char>(c) < 0x20; })) {
        return "its name has control characters";
    }
    return "the folder may be missing or read-only, or the disk full";
}

}  // namespace

std::string MaterialText(Mtl* mtl) {
    return mtl == nullptr ? std::string("no material")
                          : "material " + Quoted(mtl->GetName().data());
}

std::string MapText(Mtl* mtl, TextureKind kind) {
    return MaterialText(mtl) + ", " + kKindNames[static_cast<int>(kind)] + " map";
}

void NoteStandardValues(const MaterialEntry& entry, StdMat& mtl) {
    if (!entry.notes) {
        return;
    }
    const float opacity = OpacityOf(mtl, entry.time);
    if (opacity != 1.0f) {
        entry.notes.add(Note::kMaterialOpacity,
                        MaterialText(&mtl) + ", opacity " + std::to_string(opacity));
    }
    const float glow = SelfIlluminationOf(mtl, entry.time);
    if (glow != 0.0f) {
        entry.notes.add(Note::kMaterialSelfIllumination,
                        MaterialText(&mtl) + ", self-illumination " + std::to_string(glow));
    }
}

void NoteGenericClass(const MaterialEntry& entry, Mtl* mtl) {
    if (entry.notes) {
        entry.notes.add(Note::kMaterialGeneric,
                        MaterialText(mtl) + ", " + ClassText(mtl->ClassID()));
    }
}

void NoteMapNotSent(const MaterialEntry& entry, Mtl* mtl, const MCHAR* slot) {
    if (entry.notes) {
        entry.notes.add(Note::kMapSlotNotSent, MaterialText(mtl) + ", slot " + Quoted(slot));
    }
}

void NoteSlotsFrom(const MaterialEntry& entry, Mtl* mtl, int first) {
    const int count = entry.notes ? mtl->NumSubTexmaps() : 0;
    for (int slot = first; slot < count; ++slot) {
        if (mtl->GetSubTexmap(slot) != nullptr && mtl->SubTexmapOn(slot) != 0) {
            NoteMapNotSent(entry, mtl, mtl->GetSubTexmapSlotName(slot, true).data());
        }
    }
}

void NoteSecondChannels(const MaterialEntry& entry) {
    if (!entry.notes) {
        return;
    }
    const int chosen = entry.coordinate_channel();
    const struct {
        TextureKind kind;
        int channel;
    } maps[] = {{TextureKind::kDiffuse, entry.diffuse_channel},
                {TextureKind::kOpacity, entry.opacity_channel},
                {TextureKind::kBump, entry.bump_channel},
                {TextureKind::kSpecular, entry.specular_channel}};
    for (const auto& map : maps) {
        if (map.channel >= 0 && map.channel != chosen) {
            const std::string sent =
                chosen < 0 ? std::string("none") : "channel " + std::to_string(chosen);
            entry.notes.add(Note::kMeshSecondChannel,
                            MapText(entry.host_material, map.kind) + " on channel " +
                                std::to_string(map.channel) + ", sent: " + sent);
        }
    }
}

void NoteUnsoundCoordinates(const MaterialEntry& entry) {
    if (entry.notes) {
        entry.notes.add(Note::kMeshCoordinatesOutOfRange, MaterialText(entry.host_material));
    }
}

void NoteMissingChannel(const MaterialEntry& entry, Mtl* mtl, TextureKind kind, int channel) {
    if (entry.notes) {
        entry.notes.add(Note::kMeshChannelMissing,
                        MapText(mtl, kind) + ", channel " + std::to_string(channel));
    }
}

void NoteMissingBitmap(const MaterialEntry& entry, Mtl* mtl, BitmapTex& texmap, TextureKind kind) {
    const MCHAR* const name = texmap.GetMapName();
    entry.notes.add(Note::kBitmapMissing, MapText(mtl, kind),
                    platform::utf8_from_wide(name == nullptr ? L"" : name));
}

void NoteBaked(const MaterialEntry& entry, Mtl* mtl, Texmap* texmap, TextureKind kind,
               const std::wstring& path, BakeResult result) {
    const std::string path_utf8 = platform::utf8_from_wide(path);
    NoteName(entry.notes, path.c_str(), "the picture");
    if (result != BakeResult::kWritten) {
        entry.notes.add(result == BakeResult::kNotDrawn ? Note::kMapNotDrawn : Note::kMapNotWritten,
                        MapText(mtl, kind), path_utf8);
    }
    if (!entry.notes.notes->is_first_owner(path, texmap)) {
        entry.notes.add(Note::kMapPictureShared, MapText(mtl, kind), path_utf8);
    }
}

void NoteUnwrittenLibrary(const NodeNotes& notes, const std::string& path) {
    notes.add(Note::kLibraryNotWritten, LikelyCause(path), path);
}
