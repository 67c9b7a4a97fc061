#include "platform/registry.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

#include "platform/folders.h"

namespace platform {

namespace {

std::string folded(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return text;
}

void append_utf8(std::string& text, std::uint32_t character) {
    if (character < 0x80) {
        text += static_cast<char>(character);
        return;
    }
    constexpr std::uint32_t kLeads[] = {0xc0, 0xe0, 0xf0};
    const int lead = character < 0x800 ? 0 : character < 0x10000 ? 1 : 2;
    text += static_cast<char>(kLeads[lead] | character >> 6 * (lead + 1));
    for (int left = lead; left >= 0; --left) {
        text += static_cast<char>(0x80 | (character >> 6 * left & 0x3f));
    }
}

// From units of 16 bits, their low bytes first. A surrogate without its partner becomes U+FFFD.
std::string utf8_from_utf16(const std::string& bytes) {
    std::string text;
    std::uint32_t high = 0;  // the surrogate in front, or 0
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const std::uint32_t unit =
            static_cast<unsigned char>(bytes[i]) | static_cast<unsigned char>(bytes[i + 1]) << 8;
        const bool is_high = (unit & 0xfc00) == 0xd800;
        const bool is_low = (unit & 0xfc00) == 0xdc00;
        if (high != 0 && is_low) {
            append_utf8(text, 0x10000 + ((high & 0x3ff) << 10) + (unit & 0x3ff));
        } else {
            if (high != 0) {
                append_utf8(text, 0xfffd);
            }
            if (!is_high) {
                append_utf8(text, is_low ? 0xfffd : unit);
            }
        }
        high = is_high ? unit : 0;
    }
    return text;
}

// Of the whole file, as UTF-8.
std::string registry_text() {
    std::ifstream file(user_configuration_folder() + "/registry.reg", std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const bool is_utf16 = text.compare(0, 2, "\xff\xfe") == 0;
    return is_utf16 ? utf8_from_utf16(text.substr(2)) : text;
}

// Takes a text in double quotes off the front of `line`, in which a backslash guards the character
// behind it. Nothing if there is none.
std::optional<std::string> take_quoted(std::string& line) {
    if (line.empty() || line.front() != '"') {
        return std::nullopt;
    }
    std::string text;
    for (size_t i = 1; i < line.size(); ++i) {
        if (line[i] == '"') {
            line.erase(0, i + 1);
            return text;
        }
        if (line[i] == '\\' && i + 1 < line.size()) {
            ++i;
        }
        text += line[i];
    }
    return std::nullopt;
}

// A character takes one unit of 16 bits, those of four bytes two, and the terminator one more.
std::size_t stored_size(const std::string& text_utf8) {
    std::size_t units = 1;
    for (const char c : text_utf8) {
        const auto byte = static_cast<unsigned char>(c);
        const bool continues = (byte & 0xc0) == 0x80;
        units += continues ? 0 : byte >= 0xf0 ? 2 : 1;
    }
    return units * 2;
}

// The right side of a value's line, or nothing for a form that nobody here asks for.
std::optional<RegistryValue> parse_value(std::string text) {
    if (std::optional<std::string> quoted = take_quoted(text)) {
        const std::size_t size = stored_size(*quoted);
        return RegistryValue{RegistryType::kText, std::move(*quoted), 0, size};
    }
    const std::string number_mark = "dword:";
    if (text.compare(0, number_mark.size(), number_mark) == 0) {
        const unsigned long number = std::strtoul(text.c_str() + number_mark.size(), nullptr, 16);
        return RegistryValue{
            RegistryType::kNumber, {}, static_cast<std::uint32_t>(number), sizeof(std::uint32_t)};
    }
    return std::nullopt;
}

}  // namespace

struct RegistryKey::State {
    std::map<std::string, RegistryValue> values;  // by folded name
};

RegistryKey::RegistryKey(std::unique_ptr<State> state) : state_(std::move(state)) {}
RegistryKey::RegistryKey(RegistryKey&&) noexcept = default;
RegistryKey& RegistryKey::operator=(RegistryKey&&) noexcept = default;
RegistryKey::~RegistryKey() = default;

std::optional<RegistryKey> RegistryKey::open(RegistryHive hive, const std::string& path) {
    const std::string hive_name =
        hive == RegistryHive::kCurrentUser ? "HKEY_CURRENT_USER" : "HKEY_LOCAL_MACHINE";
    const std::string wanted = folded("[" + hive_name + "\\" + path + "]");

    std::unique_ptr<State> state;
    bool inside = false;
    std::istringstream file(registry_text());
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (!line.empty() && line.front() == '[') {
            inside = folded(line) == wanted;
            if (inside && !state) {
                state = std::make_unique<State>();
            }
            continue;
        }
        if (!inside) {
            continue;
        }
        const std::optional<std::string> name = take_quoted(line);
        if (!name || line.empty() || line.front() != '=') {
            continue;
        }
        if (std::optional<RegistryValue> value = parse_value(line.substr(1))) {
            state->values[folded(*name)] = std::move(*value);
        }
    }
    if (!state) {
        return std::nullopt;
    }
    return RegistryKey(std::move(state));
}

std::optional<RegistryValue> RegistryKey::read(const std::string& name) const {
    const auto found = state_->values.find(folded(name));
    if (found == state_->values.end()) {
        return std::nullopt;
    }
    return found->second;
}

}  // namespace platform
