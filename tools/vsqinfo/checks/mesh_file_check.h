#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "tools/vsqinfo/checks/findings.h"
#include "tools/vsqinfo/qort_listener.h"
#include "tools/vsqinfo/qort_summary.h"

namespace vsqinfo {

/// Checks a mesh file while it is read: numbers that aren't finite, triangles without area,
/// normals, the box, and the order of the frames.
class MeshFileCheck final : public QortListener {
public:
    /// Borrowed.
    explicit MeshFileCheck(Findings& findings) : findings_(findings) {}

    bool array_begins(QortArray array, std::uint64_t elements) override;
    void array_words(const std::uint32_t* words, std::size_t count, std::uint64_t offset) override;

    /// Call this once the file has been read.
    void file_ends(const QortSummary& summary);

private:
    void add_element();
    void add_float(float number);
    void end_array();
    void check_box(const QortSummary& summary);
    void check_frames(const QortSummary& summary);

    Findings& findings_;
    QortArray array_ = QortArray::kFrames;
    std::uint64_t elements_ = 0;  // of the array that is being read
    FilePlace place_;             // of its first word
    std::size_t element_words_ = 0;
    std::array<std::uint32_t, 8> element_{};
    std::size_t filled_ = 0;

    std::uint64_t not_finite_ = 0;
    std::uint64_t degenerate_ = 0;
    std::uint64_t odd_normals_ = 0;
    std::array<float, 3> minimum_;
    std::array<float, 3> maximum_;
    bool has_vertices_ = false;
};

}  // namespace vsqinfo
