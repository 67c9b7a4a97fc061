#include "plugins/3dsmax/export/report_log.h"

#include <algorithm>

#include "importers/sceneapi/dev/log.h"

namespace {

constexpr std::size_t kNodesInALine = 3;

qor::LogLevel LevelOf(NoteSeverity severity) {
    switch (severity) {
        case NoteSeverity::kFailed:
            return qor::kLogError;
        case NoteSeverity::kLost:
            return qor::kLogWarning;
        default:
            return qor::kLogInfo;
    }
}

std::string EntryText(const ExportNotes::Entry& entry) {
    std::string text = entry.node;
    for (const std::string* part : {&entry.path, &entry.reason}) {
        if (!part->empty()) {
            text += (text.empty() ? "" : ", ") + *part;
        }
    }
    return text;
}

// A note is one line, whatever its texts hold.
std::string InOneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
    return text;
}

// The line for the notes from `first` up to `end`, which are of one kind.
template <typename Iterator>
std::string LineOf(Iterator first, Iterator end) {
    std::uint64_t count = 0;
    std::string nodes;
    for (Iterator entry = first; entry != end; ++entry) {
        count += entry->count;
        if (static_cast<std::size_t>(entry - first) < kNodesInALine) {
            nodes += (entry == first ? ": " : "; ") + EntryText(*entry);
        }
    }
    if (static_cast<std::size_t>(end - first) > kNodesInALine) {
        nodes += "; ...";
    }
    const NoteKind& kind = KindOf(first->note);
    std::string sentence = kind.sentence;
    sentence.pop_back();  // the full stop
    return InOneLine(std::string(kind.code) + " (" + std::to_string(count) + "): " + sentence +
                     (nodes == ": " ? "." : nodes));
}

}  // namespace

void LogReport(const ExportNotes& notes) {
    if (notes.empty() || qor::Output2FILE::stream() == nullptr) {
        return;
    }
    const std::vector<ExportNotes::Entry> entries = notes.sorted();
    for (auto first = entries.begin(); first != entries.end();) {
        const auto end = std::find_if(first, entries.end(), [first](const ExportNotes::Entry& e) {
            return e.note != first->note;
        });
        QOR_LOG(LevelOf(KindOf(first->note).severity)) << LineOf(first, end);
        first = end;
    }
}
