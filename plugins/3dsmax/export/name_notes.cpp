#include "plugins/3dsmax/export/name_notes.h"

#include "plugins/3dsmax/export/hair_attributes.h"
#include "plugins/3dsmax/export/narrow_name.h"
#include "plugins/3dsmax/export/node_object.h"

namespace {

// `owner` says whose name it is. The renderer reads a name up to the first null.
void NoteChangedName(const NodeNotes& notes, const std::string& narrow, const std::string& owner) {
    std::wstring shown;
    for (const char byte : narrow.substr(0, narrow.find('\0'))) {
        shown += static_cast<wchar_t>(static_cast<unsigned char>(byte));
    }
    if (shown.empty()) {
        notes.add(Note::kNameEmpty, owner);
    } else {
        notes.add(Note::kNameNarrowed, owner + " is " + Quoted(shown.c_str()) + " in the scene");
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
    bool is_faithful = true;
    const std::string narrow = NarrowName(name, is_faithful);
    if (!is_faithful || narrow.empty()) {
        NoteChangedName(notes, narrow, whose + (" " + Quoted(name)));
    }
}

void SiblingNames::NoteOddName(const NodeNotes& notes, const std::string& narrow, bool is_faithful,
                               bool is_new) {
    notes.notes->begin_node();
    if (!is_faithful || narrow.empty()) {
        NoteChangedName(notes, narrow, "the node's own name");
    }
    if (!is_new && !IsMadeOfHair(notes.node)) {
        notes.add(Note::kNameTwice);
    }
}

bool SiblingNames::add_to_table(std::size_t hash) {
    hash += hash == 0 ? 1 : 0;
    const auto place_of = [this](std::size_t wanted) {
        const std::size_t mask = table_.size() - 1;
        std::size_t i = wanted & mask;
        while (table_[i] != 0 && table_[i] != wanted) {
            i = (i + 1) & mask;
        }
        return i;
    };
    if (2 * count_ >= table_.size()) {
        std::vector<std::size_t> old(4 * count_, 0);
        old.swap(table_);
        for (const std::size_t known : old) {
            if (known != 0) {
                table_[place_of(known)] = known;
            }
        }
    }
    std::size_t& place = table_[place_of(hash)];
    if (place == hash) {
        return false;
    }
    place = hash;
    ++count_;
    return true;
}
