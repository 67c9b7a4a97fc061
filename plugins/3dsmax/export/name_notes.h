#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "plugins/3dsmax/export/export_notes.h"

/// Notes what `NarrowName` does to a name or path. `whose` says what has the name, such as "its
/// material"; it is empty for the name of the node itself.
void NoteName(const NodeNotes& notes, const MCHAR* name, const char* whose = "");

/// Notes the names of nodes that stand beside each other: those that change or come out empty, and
/// those that occur twice.
class SiblingNames {
public:
    void NoteChildren(ExportNotes& notes, INode* parent);

    /// Starts a list of that many siblings.
    void begin(int count);
    void NoteNext(ExportNotes& notes, INode* node);

private:
    // One name of the list. The table has at least twice as many places as there are names.
    struct Place {
        const MCHAR* name;  // null for a free place
        std::uint64_t hash;
    };

    bool is_new(const MCHAR* name, std::uint64_t hash);

    std::vector<Place> places_;
    std::size_t mask_ = 0;
};
