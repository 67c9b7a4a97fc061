#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "plugins/3dsmax/export/export_notes.h"

/// Notes what `NarrowName` does to a name or path. `whose` says what has the name, such as "the
/// material".
void NoteName(const NodeNotes& notes, const MCHAR* name, const char* whose);

/// The names of nodes that stand beside each other in the scene. Names are compared by their
/// hashes, so a pair among very many could be taken for the same.
class SiblingNames {
public:
    /// Notes whether the name changes, comes out empty or is there already, and adds it. `narrow`
    /// is the node's name in the scene; `is_faithful` is false if characters were lost.
    void NoteNext(const NodeNotes& notes, const std::string& narrow, bool is_faithful) {
        const bool is_new = add(std::hash<std::string>()(narrow));
        if (!is_new || !is_faithful || narrow.empty()) {
            NoteOddName(notes, narrow, is_faithful, is_new);
        }
    }

private:
    static constexpr std::size_t kFew = 8;

    bool add(std::size_t hash) {
        for (std::size_t i = 0; i < count_ && i < kFew; ++i) {
            if (few_[i] == hash) {
                return false;
            }
        }
        if (count_ < kFew) {
            few_[count_++] = hash;
            return true;
        }
        return add_to_table(hash);
    }

    bool add_to_table(std::size_t hash);
    static void NoteOddName(const NodeNotes& notes, const std::string& narrow, bool is_faithful,
                            bool is_new);

    std::array<std::size_t, kFew> few_{};  // the first hashes
    std::size_t count_ = 0;
    std::vector<std::size_t> table_;  // the others; 0 marks a free place
};
