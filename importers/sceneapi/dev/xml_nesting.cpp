#include "importers/sceneapi/dev/xml_nesting.h"

#include <cctype>
#include <cstring>

namespace qor {

namespace {

constexpr int kDeepest = 256;

bool begins_with(const char* text, const char* beginning) {
    return std::strncmp(text, beginning, std::strlen(beginning)) == 0;
}

// Where the text continues behind the next `end`, or at its own end.
const char* behind(const char* text, const char* end) {
    const char* found = std::strstr(text, end);
    return found != nullptr ? found + std::strlen(end) : text + std::strlen(text);
}

// A byte above 127 belongs to a character of UTF-8.
bool begins_name(char c) {
    const unsigned char byte = static_cast<unsigned char>(c);
    return byte >= 127 || std::isalpha(byte) || byte == '_';
}

// Skips the tag from behind its name, with quoted values. Sets `is_empty` for one that ends in
// "/>".
const char* behind_tag(const char* text, bool& is_empty) {
    is_empty = false;
    for (; *text != '\0'; ++text) {
        if (*text == '>') {
            return text + 1;
        }
        if (*text == '"' || *text == '\'') {
            text = std::strchr(text + 1, *text);
            if (text == nullptr) {
                return "";  // the library refuses the text here
            }
        } else if (begins_with(text, "/>")) {
            is_empty = true;
        }
    }
    return text;
}

}  // namespace

bool IsNestedTooDeep(const char* xml) {
    int depth = 0;
    for (const char* text = std::strchr(xml, '<'); text != nullptr; text = std::strchr(text, '<')) {
        if (begins_with(text, "<!--")) {
            text = behind(text, "-->");
        } else if (begins_with(text, "<![CDATA[")) {
            text = behind(text, "]]>");
        } else if (begins_name(text[1])) {
            bool is_empty = false;
            text = behind_tag(text + 1, is_empty);
            if (++depth > kDeepest) {
                return true;
            }
            depth -= is_empty ? 1 : 0;
        } else {
            depth -= begins_with(text, "</") && depth > 0 ? 1 : 0;
            text = behind(text, ">");
        }
    }
    return false;
}

}  // namespace qor
