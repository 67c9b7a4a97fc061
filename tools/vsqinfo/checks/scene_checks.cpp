#include "tools/vsqinfo/checks/scene_checks.h"

#include "tools/vsqinfo/checks/array_check.h"
#include "tools/vsqinfo/checks/block_check.h"
#include "tools/vsqinfo/checks/file_check.h"
#include "tools/vsqinfo/checks/parameter_check.h"
#include "tools/vsqinfo/checks/reference_check.h"
#include "tools/vsqinfo/checks/spelling_check.h"

namespace vsqinfo {

SceneChecks::SceneChecks(Findings& findings, const FileSearch* search, VsqListener* further)
    : findings_(findings), further_(further) {
    checks_.push_back(std::make_unique<SpellingCheck>(path_, findings));
    checks_.push_back(std::make_unique<BlockCheck>(path_, findings));
    checks_.push_back(std::make_unique<ParameterCheck>(path_, findings));
    checks_.push_back(std::make_unique<ReferenceCheck>(path_, findings));
    checks_.push_back(std::make_unique<ArrayCheck>(path_, findings));
    if (search) {
        checks_.push_back(std::make_unique<FileCheck>(path_, findings, *search));
    }
}

void SceneChecks::block_begins(const VsqBlock& block) {
    path_.open(block);
    for (const auto& check : checks_) {
        check->block_begins(block);
    }
    if (further_) {
        further_->block_begins(block);
    }
}

void SceneChecks::block_ends() {
    for (const auto& check : checks_) {
        check->block_ends();
    }
    path_.close();
    if (further_) {
        further_->block_ends();
    }
}

void SceneChecks::matrix(const VsqMatrix& matrix, bool replaces, FilePlace place) {
    for (const auto& check : checks_) {
        check->matrix(matrix, replaces, place);
    }
    if (further_) {
        further_->matrix(matrix, replaces, place);
    }
}

void SceneChecks::statement(const VsqStatement& statement) {
    for (const auto& check : checks_) {
        check->statement(statement);
    }
}

void SceneChecks::parameter(const VsqParameter& parameter) {
    for (const auto& check : checks_) {
        check->parameter(parameter);
    }
}

bool SceneChecks::array_begins(const VsqArray& array) {
    std::vector<SceneCheck*> wanting;
    for (const auto& check : checks_) {
        if (check->array_begins(array)) {
            wanting.push_back(check.get());
        }
    }
    wanting_.push_back(std::move(wanting));
    return !wanting_.back().empty();
}

void SceneChecks::array_numbers(const VsqNumbers& numbers) {
    for (SceneCheck* check : wanting_.back()) {
        check->array_numbers(numbers);
    }
}

void SceneChecks::array_ends(const VsqArrayEnd& end) {
    for (const auto& check : checks_) {
        check->array_ends(end);
    }
    wanting_.pop_back();
}

void SceneChecks::name(std::string_view bytes, bool is_hex, FilePlace place) {
    for (const auto& check : checks_) {
        check->name(bytes, is_hex, place);
    }
}

void SceneChecks::number(std::string_view word, FilePlace place) {
    for (const auto& check : checks_) {
        check->number(word, place);
    }
}

void SceneChecks::fault(Check check, FilePlace place, const std::string& reason) {
    findings_.add(check, place, reason);
}

void SceneChecks::scene_ends(const VsqSummary& summary) {
    for (const auto& check : checks_) {
        check->scene_ends(summary);
    }
}

}  // namespace vsqinfo
