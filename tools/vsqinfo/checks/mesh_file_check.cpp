#include "tools/vsqinfo/checks/mesh_file_check.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

namespace vsqinfo {
namespace {

struct ArrayForm {
    const char* what;
    std::size_t words;      // of each element
    std::size_t positions;  // how many floats of an element are its position
    std::size_t normal;     // where its normal begins, or `kNoNormal`
    bool holds_floats;
};

constexpr std::size_t kNoNormal = 8;

// By the array's tag.
constexpr ArrayForm kForms[] = {
    {"", 1, 0, kNoNormal, false},
    {"triangles", 3, 0, kNoNormal, false},
    {"vertices", 3, 3, kNoNormal, true},
    {"normals", 3, 0, 0, true},
    {"indices of normals", 3, 0, kNoNormal, false},
    {"texture coordinates", 2, 0, kNoNormal, true},
    {"indices of texture coordinates", 3, 0, kNoNormal, false},
    {"colours", 3, 0, kNoNormal, true},
    {"interleaved vertices", 8, 3, 3, true},
    {"frames", 1, 0, kNoNormal, false},
};

const ArrayForm& form_of(QortArray array) {
    return kForms[static_cast<std::size_t>(array)];
}

float float_of(std::uint32_t word) {
    float number;
    std::memcpy(&number, &word, sizeof number);
    return number;
}

}  // namespace

bool MeshFileCheck::array_begins(QortArray array, std::uint64_t elements) {
    end_array();
    array_ = array;
    elements_ = elements;
    element_words_ = form_of(array).words;
    filled_ = 0;
    return array != QortArray::kFrames;
}

void MeshFileCheck::array_words(const std::uint32_t* words, std::size_t count,
                                std::uint64_t offset) {
    if (place_.offset == 0) {
        place_.offset = offset;
    }
    for (std::size_t i = 0; i < count; ++i) {
        element_[filled_++] = words[i];
        if (filled_ == element_words_) {
            add_element();
            filled_ = 0;
        }
    }
}

void MeshFileCheck::add_element() {
    const ArrayForm& form = form_of(array_);
    if (!form.holds_floats) {
        const bool repeats =
            element_[0] == element_[1] || element_[1] == element_[2] || element_[2] == element_[0];
        degenerate_ += array_ == QortArray::kTriangles && repeats ? 1 : 0;
        return;
    }
    float numbers[8];
    for (std::size_t i = 0; i < form.words; ++i) {
        numbers[i] = float_of(element_[i]);
        not_finite_ += std::isfinite(numbers[i]) ? 0 : 1;
    }
    for (std::size_t i = 0; i < form.positions; ++i) {
        minimum_[i] = has_vertices_ ? std::fmin(minimum_[i], numbers[i]) : numbers[i];
        maximum_[i] = has_vertices_ ? std::fmax(maximum_[i], numbers[i]) : numbers[i];
    }
    has_vertices_ = has_vertices_ || form.positions != 0;
    if (form.normal != kNoNormal) {
        constexpr double kTolerance = 0.01;
        const float* n = numbers + form.normal;
        const double square = double{n[0]} * n[0] + double{n[1]} * n[1] + double{n[2]} * n[2];
        odd_normals_ += std::abs(square - 1) > 2 * kTolerance ? 1 : 0;
    }
}

// Tells what the array that was read last has.
void MeshFileCheck::end_array() {
    const std::string of = " of " + std::to_string(elements_) + " " + form_of(array_).what;
    if (not_finite_ != 0) {
        findings_.add(Check::kMeshNotFinite, place_, std::to_string(not_finite_) + " numbers" + of);
    }
    if (degenerate_ != 0) {
        findings_.add(Check::kMeshDegenerate, place_, std::to_string(degenerate_) + of);
    }
    if (odd_normals_ != 0) {
        findings_.add(Check::kMeshNormalLength, place_, std::to_string(odd_normals_) + of);
    }
    not_finite_ = degenerate_ = odd_normals_ = 0;
    place_ = {};
}

void MeshFileCheck::file_ends(const QortSummary& summary) {
    end_array();
    check_box(summary);
    check_frames(summary);
}

void MeshFileCheck::check_box(const QortSummary& summary) {
    constexpr std::uint64_t kBoxOffset = 16;
    for (std::size_t i = 0; i < 3 && has_vertices_; ++i) {
        if (summary.box_minimum[i] < minimum_[i] || summary.box_maximum[i] > maximum_[i]) {
            const std::string axis(1, "xyz"[i]);
            findings_.add(Check::kMeshBoxLarge, {kBoxOffset, 0}, "on the axis " + axis);
        }
    }
}

void MeshFileCheck::check_frames(const QortSummary& summary) {
    constexpr std::uint64_t kFirstRecord = 72;
    constexpr std::uint64_t kRecordSize = 40;
    for (std::size_t i = 1; i < summary.frames.size(); ++i) {
        const QortFrame& before = summary.frames[i - 1];
        const QortFrame& frame = summary.frames[i];
        const FilePlace place{kFirstRecord + i * kRecordSize, 0};
        const std::string text = "frame " + std::to_string(frame.number) + " follows frame " +
                                 std::to_string(before.number);
        if (!(frame.time > before.time) || frame.number <= before.number) {
            findings_.add(Check::kMeshFrameOrder, place, text);
        } else if (frame.number > before.number + 1) {
            findings_.add(Check::kMeshFrameGap, place, text);
        }
    }
}

}  // namespace vsqinfo
