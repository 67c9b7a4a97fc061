#include "standins/host/memory/strict_rules.h"

#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include "standins/host/memory/memory_host.h"

namespace memhost {

StrictRules StrictRules::parse(const std::string& list) {
    StrictRules rules;
    std::istringstream names(list);
    for (std::string name; std::getline(names, name, ',');) {
        const bool is_on = name.rfind('-', 0) != 0;
        name.erase(0, is_on ? 0 : 1);
        bool is_known = false;
        std::string known = "all";
        for (const StrictRuleInfo& info : kStrictRules) {
            if (name == info.name || (name == "all" && info.keeps_answer)) {
                rules.set(info.rule, is_on);
                is_known = true;
            }
            known += std::string(", ") + info.name;
        }
        if (!is_known) {
            throw std::invalid_argument("no rule of a strict host is named '" + name +
                                        "' (known: " + known + ")");
        }
    }
    return rules;
}

std::wstring translated_name(const std::wstring& name) {
    return L"\u00dc " + name;
}

bool host_obeys(StrictRule rule) {
    const MemoryHost* const host = MemoryHost::current();
    return host != nullptr && host->strict().has(rule);
}

StrictRules strict_rules_of_environment() {
    const char* const list = std::getenv("VSQ_STRICT_HOST");
    return list == nullptr ? StrictRules() : StrictRules::parse(list);
}

std::string list_of_strict_rules() {
    std::string list;
    for (const StrictRuleInfo& info : kStrictRules) {
        list += std::string("  ") + info.name + (info.keeps_answer ? "" : " (not in all)") + ": " +
                info.sentence + "\n";
    }
    return list;
}

}  // namespace memhost
