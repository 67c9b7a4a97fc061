#include "plugins/3dsmax/export/export_notes.h"

#include <algorithm>
#include <utility>

#include "platform/wide_text.h"

namespace {

// A tree can be so deep that the full names of all its nodes wouldn't fit into memory.
constexpr std::size_t kMostNames = 64;

std::string ValidUtf8(const std::string& bytes) {
    return platform::utf8_from_wide(platform::wide_from_utf8(bytes));
}

}  // namespace

std::string FullNodeName(INode* node) {
    std::vector<const MCHAR*> names;
    INode* parent = node == nullptr ? nullptr : node->GetParentNode();
    for (; parent != nullptr && names.size() <= kMostNames; parent = node->GetParentNode()) {
        names.push_back(node->GetName());
        node = parent;
    }
    std::string full;
    if (names.size() > kMostNames) {
        names.pop_back();
        full = "...";
    }
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        full += name == names.rbegin() && full.empty() ? "" : "/";
        full += platform::utf8_from_wide(*name == nullptr ? L"" : *name);
    }
    return full;
}

std::string Quoted(const MCHAR* text) {
    return "'" + platform::utf8_from_wide(text == nullptr ? L"" : text) + "'";
}

void ExportNotes::add(Note note, INode* node, const std::string& reason,
                      const std::string& path) noexcept {
    try {
        add_entry({note, FullNodeName(node), ValidUtf8(path), ValidUtf8(reason), 0});
    } catch (...) {
        // The export itself goes on.
    }
}

void ExportNotes::add_once(Note note, const std::string& reason) noexcept {
    const auto is_known = [note](const Counted& known) { return known.entry.note == note; };
    if (std::none_of(entries_.begin(), entries_.end(), is_known)) {
        begin_node();
        add(note, nullptr, reason);
    }
}

void ExportNotes::add_entry(Entry entry) {
    std::string key = KindOf(entry.note).code;
    for (const std::string* part : {&entry.node, &entry.path, &entry.reason}) {
        if (part != &entry.reason || !KindOf(entry.note).facts_move) {
            key += '\0' + *part;
        }
    }
    const auto [place, is_new] = index_by_key_.try_emplace(std::move(key), entries_.size());
    if (is_new) {
        entry.count = 1;
        entries_.push_back({std::move(entry), visit_, pass_, 1});
        return;
    }
    Counted& known = entries_[place->second];
    if (known.pass != pass_) {
        known.pass = pass_;
        known.count_in_pass = 0;
    } else if (known.visit == visit_) {
        return;
    }
    known.visit = visit_;
    ++known.count_in_pass;
    known.entry.count = std::max(known.entry.count, known.count_in_pass);
}

bool ExportNotes::is_first_owner(const std::wstring& file, const void* owner) {
    return picture_owners_.try_emplace(file, owner).first->second == owner;
}

std::vector<ExportNotes::Entry> ExportNotes::sorted() const {
    std::vector<Entry> all;
    all.reserve(entries_.size());
    for (const Counted& counted : entries_) {
        all.push_back(counted.entry);
    }
    // The kinds are in the order of their severities.
    std::stable_sort(all.begin(), all.end(),
                     [](const Entry& a, const Entry& b) { return a.note < b.note; });
    return all;
}
