#include "plugins/3dsmax/export/report_json.h"

namespace {

// Raised when a reader of older reports could misread new ones.
constexpr int kVersion = 1;

// `text` is valid UTF-8.
void AppendString(std::string& json, const std::string& text) {
    constexpr char kDigits[] = "0123456789abcdef";
    json += '"';
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            json += '\\';
            json += c;
        } else if (byte < 0x20) {
            json += "\\u00";
            json += kDigits[byte >> 4];
            json += kDigits[byte & 0xF];
        } else {
            json += c;
        }
    }
    json += '"';
}

void AppendMember(std::string& json, const char* name, const std::string& text) {
    AppendString(json, name);
    json += ':';
    AppendString(json, text);
    json += ',';
}

void AppendNote(std::string& json, const ExportNotes::Entry& entry) {
    const NoteKind& kind = KindOf(entry.note);
    json += '{';
    AppendMember(json, "code", kind.code);
    AppendMember(json, "severity", SeverityName(kind.severity));
    AppendMember(json, "node", entry.node);
    if (!entry.path.empty()) {
        AppendMember(json, "path", entry.path);
    }
    AppendMember(json, "reason", entry.reason);
    json += "\"count\":" + std::to_string(entry.count) + "}";
}

}  // namespace

std::string ReportJson(const ExportNotes& notes, const std::string& command) {
    std::string json = "{";
    AppendMember(json, "report", "vsqexport");
    json += "\"version\":" + std::to_string(kVersion) + ",";
    AppendMember(json, "command", command);
    json += "\"notes\":[";
    bool is_first = true;
    for (const ExportNotes::Entry& entry : notes.sorted()) {
        json += is_first ? "\n" : ",\n";
        AppendNote(json, entry);
        is_first = false;
    }
    json += is_first ? "]}\n" : "\n]}\n";
    return json;
}
