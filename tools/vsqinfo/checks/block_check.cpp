#include "tools/vsqinfo/checks/block_check.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>

#include "tools/vsqinfo/vsq_tokens.h"

namespace vsqinfo {
namespace {

constexpr std::int64_t kKnownVersion = 9;

std::string text_of(const VsqBlock& block) {
    return std::string(block.keyword) + " " + shown(block.name);
}

double determinant(const VsqMatrix& m) {
    return m[0] * (m[5] * m[10] - m[6] * m[9]) - m[1] * (m[4] * m[10] - m[6] * m[8]) +
           m[2] * (m[4] * m[9] - m[5] * m[8]);
}

// Compared with a matrix of rows of the same lengths at right angles, because the numbers have only
// six digits.
bool is_singular(const VsqMatrix& m) {
    constexpr double kSmallest = 1e-6;
    const double full =
        std::hypot(m[0], m[1], m[2]) * std::hypot(m[4], m[5], m[6]) * std::hypot(m[8], m[9], m[10]);
    return !(std::abs(determinant(m)) > kSmallest * full);
}

}  // namespace

void BlockCheck::block_begins(const VsqBlock& block) {
    if (path().depth() == 1) {
        check_top_block(block);
    }
    check_kind(block);
    for (const std::string_view keyword : {"group", "object", "material", "light"}) {
        if (block.keyword == keyword && block.name.empty()) {
            found(Check::kNameEmpty, block.place, std::string(keyword) + " without a name");
        }
    }
    if (!open_.empty()) {
        Contents& around = open_.back();
        if (block.keyword == "object" && !block.is_definition &&
            !around.object_names.insert(block.name).second) {
            found(Check::kNameTwice, block.place, text_of(block));
        }
        if (block.keyword == "geometry" && !block.is_definition && ++around.geometries == 2) {
            found(Check::kGeometryTwice, block.place, text_of(*path().around()));
        }
        if (block.keyword == "shader" && path().around()->keyword == "material" &&
            !block.is_definition) {
            count_assignment(block.name, block.place);
        }
    }
    open_.emplace_back();
}

void BlockCheck::check_top_block(const VsqBlock& block) {
    if (block.keyword == "group" && !block.is_definition) {
        if (has_root_) {
            found(Check::kRootTwice, block.place, text_of(block));
        }
        has_root_ = true;
    } else if (has_root_) {
        found(Check::kBehindRoot, block.place, text_of(block));
    }
}

void BlockCheck::check_kind(const VsqBlock& block) {
    constexpr std::string_view kGeometries[] = {"triangles", "qor_curves", "instance"};
    constexpr std::string_view kAnimations[] = {"fbx_animation_2", "fbx_animation",
                                                "deformable_qortlib", "deformable"};
    const auto is_one_of = [&block](const auto& kinds) {
        return std::find(std::begin(kinds), std::end(kinds), block.type) != std::end(kinds);
    };
    if (block.keyword == "geometry" && !is_one_of(kGeometries)) {
        found(Check::kGeometryKind, block.place, shown(block.type) + " in " + path().shown());
    }
    if (block.keyword == "animation" && !is_one_of(kAnimations)) {
        found(Check::kAnimationKind, block.place, shown(block.type) + " in " + path().shown());
    }
}

void BlockCheck::block_ends() {
    const VsqBlock& block = *path().innermost();
    if (block.keyword == "object" && open_.back().geometries == 0) {
        found(Check::kObjectBare, block.place, text_of(block));
    }
    if (block.keyword == "material" && !block.is_change && open_.back().surfaces == 0) {
        found(Check::kMaterialBare, block.place, text_of(block));
    }
    open_.pop_back();
}

void BlockCheck::matrix(const VsqMatrix& matrix, bool, FilePlace place) {
    const std::string where = path().shown();
    if (!open_.empty() && ++open_.back().matrices == 2) {
        found(Check::kMatrixTwice, place, where);
    }
    if (!std::all_of(matrix.begin(), matrix.end(), [](double x) { return std::isfinite(x); })) {
        found(Check::kMatrixNotFinite, place, where);
        return;
    }
    if (is_singular(matrix)) {
        found(Check::kMatrixSingular, place, where);
    }
    if (matrix[3] != 0 || matrix[7] != 0 || matrix[11] != 0 || matrix[15] != 1) {
        found(Check::kMatrixColumn, place, where);
    }
}

void BlockCheck::statement(const VsqStatement& statement) {
    const std::string_view word = statement.word;
    if (word == "version") {
        check_version(statement);
    } else if (word == "flags") {
        check_flags(statement);
    } else if (word == "#error") {
        found(Check::kErrorMessage, statement.place,
              shown(statement.text) + " in " + path().shown());
    } else if (word == "#print") {
        has_banner_ = true;
    } else if (word == "instance" && !open_.empty()) {
        ++open_.back().geometries;
    } else if (path().is_in("material")) {
        count_assignment(word, statement.place);
    }
}

void BlockCheck::check_version(const VsqStatement& statement) {
    const std::int64_t version = *statement.number;
    const std::string text = "version " + std::to_string(version);
    if (has_version_) {
        found(Check::kVersionTwice, statement.place, text);
    }
    has_version_ = true;
    if (version < 1 || version > std::numeric_limits<std::int32_t>::max()) {
        found(Check::kVersionRange, statement.place, text);
    } else if (version != kKnownVersion) {
        found(Check::kVersionUnknown, statement.place, text);
    }
    if (has_root_) {
        found(Check::kBehindRoot, statement.place, text);
    }
}

void BlockCheck::check_flags(const VsqStatement& statement) {
    const std::int64_t flags = *statement.number;
    const std::string text = "flags " + std::to_string(flags) + " of " + path().shown();
    if (flags < std::numeric_limits<std::int32_t>::min() ||
        flags > std::numeric_limits<std::uint32_t>::max()) {
        found(Check::kFlagsRange, statement.place, text);
    }
    if (open_.back().has_flags) {
        found(Check::kFlagsTwice, statement.place, text);
    }
    open_.back().has_flags = true;
}

void BlockCheck::count_assignment(std::string_view kind, FilePlace place) {
    const struct {
        std::string_view kind;
        unsigned Contents::*count;
    } assignments[] = {{"surface", &Contents::surfaces},
                       {"shadow", &Contents::shadows},
                       {"volume", &Contents::volumes},
                       {"reflection map", &Contents::reflections}};
    for (const auto& assignment : assignments) {
        if (kind == assignment.kind && ++(open_.back().*assignment.count) == 2) {
            found(Check::kAssignmentTwice, place,
                  std::string(kind) + " of a material in " + path().shown());
        }
    }
}

void BlockCheck::scene_ends(const VsqSummary&) {
    if (!has_banner_) {
        found(Check::kBannerMissing, {0, 1}, "there is no #print");
    }
}

}  // namespace vsqinfo
