#include "platform/registry.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

#include "platform/folders.h"
#include "platform/wide_text.h"

namespace platform {

namespace {

std::string folded(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return text;
}

// Converts little-endian UTF-16.
std::string utf8_from_utf16(const std::string& bytes) {
    std::wstring units;
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        units += static_cast<wchar_t>(static_cast<unsigned char>(bytes[i]) |
                                      static_cast<unsigned char>(bytes[i + 1]) << 8);
    }
    return utf8_from_wide(units);
}

// The contents of the registry file as UTF-8.
std::string registry_text() {
    std::ifstream file(user_configuration_folder() + "/registry.reg", std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const bool is_utf16 = text.compare(0, 2, "\xff\xfe") == 0;
    return is_utf16 ? utf8_from_utf16(text.substr(2)) : text;
}

// Removes a double-quoted text from the front of `line` and returns it without its quotes. A
// backslash escapes the next character. Returns nullopt if `line` doesn't begin with a complete
// one.
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

// Parses hexadecimal bytes such as "25,00,41,00". Returns nullopt for any other text.
std::optional<std::string> parse_bytes(const std::string& list) {
    std::string bytes;
    std::istringstream items(list);
    for (std::string item; std::getline(items, item, ',');) {
        char* end = nullptr;
        const unsigned long byte = std::strtoul(item.c_str(), &end, 16);
        if (end == item.c_str() || byte > 0xff) {
            return std::nullopt;
        }
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

// Makes a value from its bytes. This is how Windows exports types without a short form and damaged
// values.
RegistryValue value_of_bytes(RegistryType type, const std::string& bytes) {
    RegistryValue value{type, {}, {}, bytes.size()};
    if (type == RegistryType::kText || type == RegistryType::kExpandableText) {
        const std::string text = utf8_from_utf16(bytes);
        value.text = text.substr(0, text.find('\0'));
    } else if (type == RegistryType::kNumber && bytes.size() == sizeof(std::uint32_t)) {
        std::uint32_t number = 0;
        for (size_t i = 0; i < bytes.size(); ++i) {
            number |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])) << 8 * i;
        }
        value.number = number;
    }
    return value;
}

// Parses the right side of a value's line. Returns nullopt for a form that no export contains.
std::optional<RegistryValue> parse_value(std::string text) {
    if (std::optional<std::string> quoted = take_quoted(text)) {
        const std::size_t size = (wide_from_utf8(*quoted).size() + 1) * 2;  // with the terminator
        return RegistryValue{RegistryType::kText, std::move(*quoted), {}, size};
    }
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos) {
        return std::nullopt;
    }
    const std::string kind = folded(text.substr(0, colon));
    const std::string data = text.substr(colon + 1);
    unsigned type = 0;
    if (kind == "dword") {
        const unsigned long number = std::strtoul(data.c_str(), nullptr, 16);
        return RegistryValue{
            RegistryType::kNumber, {}, static_cast<std::uint32_t>(number), sizeof(std::uint32_t)};
    }
    if (std::sscanf(kind.c_str(), "hex(%x)", &type) == 1) {
        if (const std::optional<std::string> bytes = parse_bytes(data)) {
            return value_of_bytes(static_cast<RegistryType>(type), *bytes);
        }
    }
    return std::nullopt;
}

// Reads the next line without its line end. A line that ends in a backslash is joined with the
// next.
bool read_line(std::istream& file, std::string& line) {
    line.clear();
    for (std::string part; std::getline(file, part);) {
        if (!part.empty() && part.back() == '\r') {
            part.pop_back();
        }
        line +=
            line.empty() ? part : part.substr(std::min(part.find_first_not_of(' '), part.size()));
        if (line.empty() || line.back() != '\\') {
            return true;
        }
        line.pop_back();
    }
    return !line.empty();
}

}  // namespace

struct RegistryKey::State {
    std::map<std::string, RegistryValue> values;  // the keys are lower-case names
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
    for (std::string line; read_line(file, line);) {
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
