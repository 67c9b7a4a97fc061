#include "tools/vsqexport/import/distinct_names.h"

#include "standins/host/memory/host_text.h"

namespace vsqexport {
namespace {

std::string narrow(const std::string& name_utf8) {
    std::string text;
    for (const wchar_t unit : memhost::units_from_utf8(name_utf8)) {
        text += static_cast<char>(static_cast<unsigned char>(unit & 0xFF));
    }
    return text;
}

}  // namespace

std::string DistinctNames::distinct(const std::string& name_utf8) {
    const std::string wanted = narrow(name_utf8);
    std::string name = name_utf8;
    if (!taken_.insert(wanted).second) {
        int& number = last_numbers_.emplace(wanted, 1).first->second;
        std::string mark;
        do {
            mark = " " + std::to_string(++number);
        } while (!taken_.insert(wanted + mark).second);
        name += mark;
    }
    return name;
}

std::string DistinctNames::told_apart(const std::string& name_utf8) {
    const auto known = chosen_.find(name_utf8);
    return known != chosen_.end() ? known->second
                                  : chosen_.emplace(name_utf8, distinct(name_utf8)).first->second;
}

}  // namespace vsqexport
