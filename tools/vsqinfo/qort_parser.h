#pragma once

#include <cstdint>
#include <istream>
#include <optional>
#include <string>

#include "tools/vsqinfo/byte_source.h"
#include "tools/vsqinfo/check_table.h"
#include "tools/vsqinfo/qort_listener.h"
#include "tools/vsqinfo/qort_summary.h"

namespace vsqinfo {

/// Reads one mesh file in one pass, for `read_qort`.
class QortParser {
public:
    /// Both are borrowed; `listener` may be null.
    QortParser(std::istream& stream, QortListener* listener)
        : source_(stream), listener_(listener ? *listener : no_listener_) {}

    /// Call this only once.
    QortSummary read();

private:
    struct Block {
        std::uint32_t tag;
        std::uint64_t offset;  // of the block's head
        std::uint64_t size;    // of its payload in bytes
    };

    // The largest index into an array, kept because the array may come after its indices.
    struct LargestIndex {
        std::uint64_t index = 0;
        std::uint64_t offset = 0;
    };

    // A range of array elements in the record of a frame.
    struct FrameRange {
        std::uint32_t QortFrame::*start;
        std::uint32_t QortFrame::*count;
        std::uint64_t offset;  // of the start in the record; the count follows it
        const char* what;
    };
    static const FrameRange kTriangleRange;
    static const FrameRange kVertexRange;
    static const FrameRange kNormalRange;
    static const FrameRange kUvRange;

    void read_header();
    void read_frames();
    void read_separate_arrays(const LargestIndex& largest_vertex);
    void read_interleaved(const LargestIndex& largest_vertex);
    std::uint64_t read_elements(std::uint32_t tag);
    LargestIndex read_indices(std::uint32_t tag, std::uint64_t& count);
    std::uint64_t read_positions(std::uint32_t tag);
    void read_attributes(std::uint32_t tag, std::uint32_t index_tag, const FrameRange& range,
                         std::uint64_t& count, std::uint64_t& index_count);
    void check_end() const;

    // Blocks.
    void read_block_head();
    bool block_is(std::uint32_t tag) const { return block_ && block_->tag == tag; }
    std::uint64_t begin_block(std::uint32_t tag);
    void end_block();

    // Agreement of frames, arrays and indices.
    void check_ranges(const FrameRange& range, std::uint64_t total) const;
    void check_parallel(const FrameRange& range, std::uint64_t total,
                        std::uint64_t block_offset) const;
    void check_largest(const LargestIndex& largest, std::uint64_t count, const char* what) const;
    std::uint64_t indexed_count(const FrameRange& range, std::uint64_t total) const;
    std::uint64_t record_offset(std::size_t frame) const;

    // Bytes.
    std::uint32_t read_word(const char* where);
    template <typename Visit>
    void read_words(std::uint64_t count, Visit visit);
    [[noreturn]] void fail(std::uint64_t offset, const std::string& reason,
                           Check check = Check::kMeshBlocks) const;

    QortListener no_listener_;
    ByteSource source_;
    QortListener& listener_;
    QortSummary summary_;
    bool has_frames_ = false;
    std::uint64_t data_end_ = 0;   // from the header
    std::uint64_t data_size_ = 0;  // bytes of the header and the payloads so far
    std::optional<Block> block_;   // the block whose head was read last; nothing at the end
};

}  // namespace vsqinfo
