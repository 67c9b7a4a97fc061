#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "plugins/3dsmax/export/host.h"
#include "plugins/3dsmax/export/note_kinds.h"

/// What an export leaves out or changes, as noted by the conversions.
///
/// Equal notes are merged: those of one kind, about nodes with the same full name, with the same
/// reason. A merged note counts its nodes. Frames of an animation and frames of a deforming mesh
/// don't add to the count. Nothing of the host is kept, so notes can outlive the scene.
///
///     ExportNotes notes;
///     notes.begin_node();
///     notes.add(Note::kMeshWithoutFaces, node, "0 vertices, 0 faces");
class ExportNotes {
public:
    /// All texts are valid UTF-8.
    struct Entry {
        Note note;
        std::string node;    ///< the full name, "arm/hand"; empty if the note is about no node
        std::string path;    ///< the file that the note is about, or empty
        std::string reason;  ///< may be empty
        std::uint64_t count;
    };

    /// Starts a pass over the scene; an animation has one for each frame.
    void begin_pass() { ++pass_; }

    /// Starts a visit of a node. Within a visit, equal notes count once.
    void begin_node() { ++visit_; }

    /// `node` is null for a note about no node. `reason` and `path` can hold any bytes: those that
    /// aren't UTF-8 count as Latin-1. If there isn't enough memory, the note is dropped.
    void add(Note note, INode* node, const std::string& reason = {},
             const std::string& path = {}) noexcept;

    /// Adds a note about no node, unless there is one of that kind.
    void add_once(Note note, const std::string& reason) noexcept;

    /// Whether `owner` is the first that names this picture file during the export. Calls with an
    /// owner that has named it before are true as well. Owners are only compared.
    bool is_first_owner(const std::wstring& file, const void* owner);

    /// Worst first: by severity, then by kind, then in the order in which they were added.
    std::vector<Entry> sorted() const;

    bool empty() const { return entries_.empty(); }

private:
    struct Counted {
        Entry entry;
        std::uint64_t visit;
        std::uint64_t pass;
        std::uint64_t count_in_pass;
    };

    void add_entry(Entry entry);

    std::vector<Counted> entries_;
    std::unordered_map<std::string, std::size_t> index_by_key_;
    std::unordered_map<std::wstring, const void*> picture_owners_;
    std::uint64_t pass_ = 0;
    std::uint64_t visit_ = 0;
};

/// The notes about one node, for conversions that don't know the node. Without notes it does
/// nothing; a caller that has to gather facts first asks whether there are notes.
struct NodeNotes {
    ExportNotes* notes = nullptr;  ///< null if nothing is noted
    INode* node = nullptr;

    explicit operator bool() const { return notes != nullptr; }
    void add(Note note, const std::string& reason = {}, const std::string& path = {}) const {
        if (notes != nullptr) {
            notes->add(note, node, reason, path);
        }
    }
};

/// The names from the top of the tree to the node, in UTF-8: "arm/hand". Of a node that lies very
/// deep, only the last names. Empty for the tree's root.
std::string FullNodeName(INode* node);

/// A text of the host in quotation marks, in UTF-8, for a reason. Null counts as empty.
std::string Quoted(const MCHAR* text);
