#pragma once

#include <string_view>
#include <vector>

#include "tools/vsqinfo/checks/scene_check.h"

namespace vsqinfo {

/// Checks how things are written: names, numbers, the form of parameters, and words that look like
/// misspelt statements.
class SpellingCheck final : public SceneCheck {
public:
    using SceneCheck::SceneCheck;

    void block_begins(const VsqBlock& block) override;
    void block_ends() override;
    void statement(const VsqStatement& statement) override;
    void parameter(const VsqParameter& parameter) override;
    bool array_begins(const VsqArray& array) override;
    void name(std::string_view bytes, bool is_hex, FilePlace place) override;
    void number(std::string_view word, FilePlace place) override;

private:
    void check_plain_name(std::string_view name, FilePlace place);
    void check_form(std::string_view name, bool is_quoted, FilePlace place);

    std::vector<bool> takes_quoted_;  // for each open block
};

/// Whether a writer gives a number that form: an integer, "%g" or sixteen decimals.
bool is_writers_form(std::string_view word);

/// The statement or block that `word` is a misspelling of: one letter is wrong, missing or too
/// much, or two are swapped. Empty if there is none.
std::string_view likely_keyword(std::string_view word);

}  // namespace vsqinfo
