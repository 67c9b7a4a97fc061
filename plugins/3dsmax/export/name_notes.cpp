#include "plugins/3dsmax/export/name_notes.h"

#include <algorithm>
#include <cwchar>

#include "plugins/3dsmax/export/hair_attributes.h"
#include "plugins/3dsmax/export/narrow_name.h"
#include "plugins/3dsmax/export/node_object.h"

namespace {

constexpr std::size_t kMostUnits = 1023;

struct NameFacts {
    std::uint64_t hash = 0;
    bool fits = true;  // into one byte per unit
    std::size_t units = 0;
};

NameFacts FactsOf(const MCHAR* name) {
    NameFacts facts;
    wchar_t all = 0;
    std::uint64_t hash = 0x9e3779b97f4a7c15u;
    const MCHAR* unit = name;
    for (; *unit != 0; ++unit) {
        all = static_cast<wchar_t>(all | *unit);
        hash = (hash ^ static_cast<std::uint64_t>(*unit)) * 0x100000001b3u;
    }
    facts.units = static_cast<std::size_t>(unit - name);
    facts.fits = (all & ~0xFF) == 0 && facts.units <= kMostUnits;
    facts.hash = hash ^ (hash >> 32);
    return facts;
}

std::string Whose(const char* whose, const MCHAR* name) {
    return *whose == 0 ? std::string("the node's own name") : whose + (" " + Quoted(name));
}

void NoteChangedName(const NodeNotes& notes, const MCHAR* name, const NameFacts& facts,
                     const char* whose) {
    const std::string narrow = NarrowName(name);
    // The renderer reads the name up to the first null.
    if (facts.units == 0 || narrow[0] == '\0') {
        notes.add(Note::kNameEmpty, Whose(whose, name));
    } else if (!facts.fits) {
        std::wstring shown;
        for (const char byte : narrow.substr(0, narrow.find('\0'))) {
            shown += static_cast<wchar_t>(static_cast<unsigned char>(byte));
        }
        notes.add(Note::kNameNarrowed,
                  Whose(whose, name) + " is " + Quoted(shown.c_str()) + " in the scene");
    }
}

// The splines of hair get the name of their mesh on purpose.
bool IsMadeOfHair(INode* node) {
    Object* const object = KindObject(node);
    return object != nullptr && find_hair_attributes(object, 0).has_value();
}

}  // namespace

void NoteName(const NodeNotes& notes, const MCHAR* name, const char* whose) {
    if (!notes) {
        return;
    }
    const MCHAR* const text = name == nullptr ? L"" : name;
    const NameFacts facts = FactsOf(text);
    if (!facts.fits || facts.units == 0) {
        NoteChangedName(notes, text, facts, whose);
    }
}

void SiblingNames::NoteChildren(ExportNotes& notes, INode* parent) {
    const int count = parent->NumberOfChildren();
    if (count == 0) {
        return;
    }
    begin(count);
    for (int i = 0; i < count; ++i) {
        NoteNext(notes, parent->GetChildNode(i));
    }
}

void SiblingNames::begin(int count) {
    std::size_t size = 8;
    while (size < 2 * static_cast<std::size_t>(count)) {
        size *= 2;
    }
    mask_ = size - 1;
    places_.assign(size, {nullptr, 0});
}

void SiblingNames::NoteNext(ExportNotes& notes, INode* node) {
    const MCHAR* const name = node->GetName();
    const MCHAR* const text = name == nullptr ? L"" : name;
    const NameFacts facts = FactsOf(text);
    if (!facts.fits || facts.units == 0) {
        notes.begin_node();
        NoteChangedName({&notes, node}, text, facts, "");
    }
    if (!is_new(text, facts.hash) && !IsMadeOfHair(node)) {
        notes.begin_node();
        notes.add(Note::kNameTwice, node);
    }
}

bool SiblingNames::is_new(const MCHAR* name, std::uint64_t hash) {
    for (std::size_t i = hash & mask_;; i = (i + 1) & mask_) {
        Place& place = places_[i];
        if (place.name == nullptr) {
            place = {name, hash};
            return true;
        }
        if (place.hash == hash && std::wcscmp(place.name, name) == 0) {
            return false;
        }
    }
}
