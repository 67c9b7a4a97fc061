#include "tools/vsqinfo/qort_parser.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <iterator>
#include <utility>

#include "tools/vsqinfo/malformed_file.h"

namespace vsqinfo {
namespace {

using std::uint32_t;
using std::uint64_t;

constexpr unsigned char kMagic[4] = {'q', 'o', 'r', 'T'};
constexpr uint32_t kVersion = 3;
constexpr uint64_t kHeaderSize = 64;
constexpr uint64_t kVersionOffset = 4;
constexpr uint64_t kHasFramesOffset = 8;
constexpr uint64_t kFramesOffsetOffset = 12;
constexpr uint64_t kDataEndOffset = 40;

constexpr uint64_t kBlockHeadSize = 8;
constexpr uint64_t kSizeInHead = 4;
constexpr uint64_t kWordSize = 4;
constexpr uint64_t kTriangleSize = 3 * kWordSize;
constexpr uint64_t kFrameWords = 10;

constexpr uint32_t tag_of(QortArray array) {
    return static_cast<uint32_t>(array);
}

constexpr uint32_t kTriangles = tag_of(QortArray::kTriangles);
constexpr uint32_t kVertices = tag_of(QortArray::kVertices);
constexpr uint32_t kNormals = tag_of(QortArray::kNormals);
constexpr uint32_t kNormalIndices = tag_of(QortArray::kNormalIndices);
constexpr uint32_t kUvs = tag_of(QortArray::kUvs);
constexpr uint32_t kUvIndices = tag_of(QortArray::kUvIndices);
constexpr uint32_t kColours = tag_of(QortArray::kColours);
constexpr uint32_t kInterleaved = tag_of(QortArray::kInterleaved);
constexpr uint32_t kFrames = tag_of(QortArray::kFrames);

struct TagInfo {
    const char* what;
    uint64_t element_size;
};

constexpr TagInfo kTags[] = {
    {"", 0},
    {"triangles", kTriangleSize},
    {"vertices", 3 * kWordSize},
    {"normals", 3 * kWordSize},
    {"indices of normals", kTriangleSize},
    {"texture coordinates", 2 * kWordSize},
    {"indices of texture coordinates", kTriangleSize},
    {"colours", 3 * kWordSize},
    {"interleaved vertices", 8 * kWordSize},
    {"frames", kFrameWords* kWordSize},
};

uint32_t word_at(const unsigned char* bytes) {
    return bytes[0] | uint32_t{bytes[1]} << 8 | uint32_t{bytes[2]} << 16 | uint32_t{bytes[3]} << 24;
}

float float_of(uint32_t word) {
    float number;
    static_assert(sizeof number == sizeof word, "a float of the file has 32 bits");
    std::memcpy(&number, &word, sizeof number);
    return number;
}

std::string block_text(uint32_t tag) {
    return std::string("the block of ") + kTags[tag].what;
}

}  // namespace

const QortParser::FrameRange QortParser::kTriangleRange = {
    &QortFrame::triangles_start, &QortFrame::triangles_count, 8, "triangles"};
const QortParser::FrameRange QortParser::kVertexRange = {
    &QortFrame::vertices_start, &QortFrame::vertices_count, 16, "vertices"};
const QortParser::FrameRange QortParser::kNormalRange = {&QortFrame::normals_start,
                                                         &QortFrame::normals_count, 24, "normals"};
const QortParser::FrameRange QortParser::kUvRange = {&QortFrame::uvs_start, &QortFrame::uvs_count,
                                                     32, "texture coordinates"};

QortSummary QortParser::read() {
    read_header();
    read_block_head();
    if (has_frames_) {
        read_frames();
    }
    const LargestIndex largest_vertex = read_indices(kTriangles, summary_.triangles);
    check_ranges(kTriangleRange, summary_.triangles);

    summary_.is_interleaved = block_is(kInterleaved);
    if (summary_.is_interleaved) {
        read_interleaved(largest_vertex);
    } else {
        read_separate_arrays(largest_vertex);
    }
    check_end();
    summary_.file_size = source_.offset();
    return std::move(summary_);
}

void QortParser::read_header() {
    for (const unsigned char wanted : kMagic) {
        const int next = source_.peek();
        if (next == ByteSource::kEnd) {
            fail(source_.offset(), "the file ends inside its header", Check::kCutShort);
        }
        if (next != wanted) {
            fail(source_.offset(), "a mesh file begins with \"qorT\"", Check::kHeader);
        }
        source_.drop();
    }
    constexpr char kHeader[] = "its header";
    summary_.version = read_word(kHeader);
    if (summary_.version != kVersion) {
        fail(kVersionOffset, "version " + std::to_string(summary_.version) + " is not known",
             Check::kHeader);
    }
    const uint32_t has_frames = read_word(kHeader);
    if (has_frames > 1) {
        fail(kHasFramesOffset,
             "the mark for frames is " + std::to_string(has_frames) + ", not 0 or 1",
             Check::kHeader);
    }
    has_frames_ = has_frames == 1;
    const uint32_t frames_offset = read_word(kHeader);
    if (frames_offset != (has_frames_ ? kHeaderSize : 0)) {
        fail(kFramesOffsetOffset, "the frames do not begin at " + std::to_string(frames_offset),
             Check::kHeader);
    }
    for (std::array<float, 3>* corner : {&summary_.box_minimum, &summary_.box_maximum}) {
        for (float& coordinate : *corner) {
            coordinate = float_of(read_word(kHeader));
        }
    }
    const uint64_t low = read_word(kHeader);
    data_end_ = low | uint64_t{read_word(kHeader)} << 32;
    for (; source_.offset() < kHeaderSize; source_.drop()) {
        const int next = source_.peek();
        if (next == ByteSource::kEnd) {
            fail(source_.offset(), std::string("the file ends inside ") + kHeader,
                 Check::kCutShort);
        }
        if (next != 0) {
            fail(source_.offset(), "a reserved byte of the header is not 0", Check::kHeader);
        }
    }
    data_size_ = kHeaderSize;
    if (!has_frames_ && data_end_ != kHeaderSize) {
        fail(kDataEndOffset, "the end of the data is not " + std::to_string(kHeaderSize),
             Check::kHeader);
    }
}

void QortParser::read_frames() {
    const uint64_t count = begin_block(kFrames);
    uint32_t record[kFrameWords];
    uint64_t filled = 0;
    read_words(count * kFrameWords, [&](uint32_t word, uint64_t) {
        record[filled++] = word;
        if (filled == kFrameWords) {
            summary_.frames.push_back({record[0], float_of(record[1]), record[2], record[3],
                                       record[4], record[5], record[6], record[7], record[8],
                                       record[9]});
            filled = 0;
        }
    });
    end_block();
}

void QortParser::read_separate_arrays(const LargestIndex& largest_vertex) {
    summary_.vertices = read_positions(kVertices);
    check_ranges(kVertexRange, summary_.vertices);
    check_largest(largest_vertex, indexed_count(kVertexRange, summary_.vertices), "vertices");

    read_attributes(kNormals, kNormalIndices, kNormalRange, summary_.normals,
                    summary_.normal_indices);
    read_attributes(kUvs, kUvIndices, kUvRange, summary_.uvs, summary_.uv_indices);

    if (block_is(kColours)) {
        const uint64_t offset = block_->offset;
        summary_.colours = read_elements(kColours);
        if (summary_.colours != summary_.vertices) {
            fail(offset + kSizeInHead, "there are not as many colours as vertices",
                 Check::kMeshLengths);
        }
    }
}

// The frames and the end of the data describe the arrays before they were interleaved, so they are
// not checked here.
void QortParser::read_interleaved(const LargestIndex& largest_vertex) {
    summary_.vertices = read_positions(kInterleaved);
    check_largest(largest_vertex, summary_.vertices, "vertices");
}

// Reads normals or texture coordinates, if there are any. They have indices of their own, or there
// is one for each vertex.
void QortParser::read_attributes(uint32_t tag, uint32_t index_tag, const FrameRange& range,
                                 uint64_t& count, uint64_t& index_count) {
    if (!block_is(tag)) {
        check_ranges(range, 0);
        return;
    }
    const uint64_t block_offset = block_->offset;
    count = read_elements(tag);
    check_ranges(range, count);
    if (!block_is(index_tag)) {
        check_parallel(range, count, block_offset);
        return;
    }
    const uint64_t index_offset = block_->offset;
    const LargestIndex largest = read_indices(index_tag, index_count);
    if (index_count != summary_.triangles) {
        fail(index_offset + kSizeInHead,
             std::string("there are not as many ") + kTags[index_tag].what + " as triangles",
             Check::kMeshLengths);
    }
    check_largest(largest, indexed_count(range, count), range.what);
}

uint64_t QortParser::read_elements(uint32_t tag) {
    const uint64_t count = begin_block(tag);
    read_words(block_->size / kWordSize, [](uint32_t, uint64_t) {});
    end_block();
    return count;
}

QortParser::LargestIndex QortParser::read_indices(uint32_t tag, uint64_t& count) {
    count = begin_block(tag);
    LargestIndex largest{0, source_.offset()};
    read_words(block_->size / kWordSize, [&largest](uint32_t index, uint64_t offset) {
        if (index > largest.index) {
            largest = {index, offset};
        }
    });
    end_block();
    return largest;
}

// The position comes first in both forms of a vertex. NaN counts as inside the box.
uint64_t QortParser::read_positions(uint32_t tag) {
    const uint64_t count = begin_block(tag);
    const std::size_t words_per_vertex = kTags[tag].element_size / kWordSize;
    std::size_t place = 0;
    read_words(block_->size / kWordSize, [&](uint32_t word, uint64_t offset) {
        if (place < 3) {
            const float coordinate = float_of(word);
            if (!std::isnan(coordinate) && !(coordinate >= summary_.box_minimum[place] &&
                                             coordinate <= summary_.box_maximum[place])) {
                fail(offset, "a vertex lies outside of the box in the header", Check::kMeshBox);
            }
        }
        place = place + 1 < words_per_vertex ? place + 1 : 0;
    });
    end_block();
    return count;
}

void QortParser::check_end() const {
    if (block_) {
        fail(block_->offset, block_text(block_->tag) + " is not allowed here");
    }
}

void QortParser::read_block_head() {
    const uint64_t offset = source_.offset();
    if (source_.peek() == ByteSource::kEnd) {
        if (has_frames_ && !summary_.is_interleaved && data_size_ < data_end_) {
            fail(offset,
                 "the file ends " + std::to_string(data_end_ - data_size_) +
                     " bytes before the end of its data",
                 Check::kCutShort);
        }
        block_.reset();
        return;
    }
    constexpr char kHead[] = "the head of a block";
    const uint32_t tag = read_word(kHead);
    if (tag == 0 || tag >= std::size(kTags)) {
        fail(offset, "no block has the tag " + std::to_string(tag));
    }
    const uint32_t size = read_word(kHead);
    if (size == 0 || size % kTags[tag].element_size != 0) {
        fail(offset + kSizeInHead, block_text(tag) + " has " + std::to_string(size) +
                                       " bytes, not a positive multiple of " +
                                       std::to_string(kTags[tag].element_size));
    }
    const std::optional<uint64_t> left = source_.bytes_left();
    if (left && *left < size) {
        fail(source_.offset() + *left, "the file ends inside " + block_text(tag), Check::kCutShort);
    }
    block_ = Block{tag, offset, size};
}

// Returns the number of the block's elements.
uint64_t QortParser::begin_block(uint32_t tag) {
    if (!block_) {
        fail(source_.offset(), "the file ends before " + block_text(tag), Check::kCutShort);
    }
    if (block_->tag != tag) {
        fail(block_->offset, block_text(block_->tag) + " comes instead of " + block_text(tag));
    }
    return block_->size / kTags[tag].element_size;
}

// Reads the head of the next block as well.
void QortParser::end_block() {
    const uint32_t tag = block_->tag;
    data_size_ += block_->size;
    if (has_frames_ && !summary_.is_interleaved && data_size_ > data_end_) {
        fail(kDataEndOffset, "the data is longer than the header says", Check::kMeshEnd);
    }
    const bool may_be_whole = tag != kFrames && tag != kTriangles;
    const bool is_whole = tag == kColours || tag == kInterleaved ||
                          (may_be_whole && has_frames_ && data_size_ == data_end_);
    if (is_whole && source_.peek() != ByteSource::kEnd) {
        fail(source_.offset(), "the file goes on after the end of the data", Check::kMeshEnd);
    }
    read_block_head();
}

void QortParser::check_ranges(const FrameRange& range, uint64_t total) const {
    uint64_t used = 0;
    for (std::size_t i = 0; i < summary_.frames.size(); ++i) {
        const QortFrame& frame = summary_.frames[i];
        const uint64_t end = uint64_t{frame.*range.start} + frame.*range.count;
        if (end > total) {
            fail(record_offset(i) + range.offset,
                 "a frame uses " + std::string(range.what) + " up to " + std::to_string(end) +
                     ", but the file has " + std::to_string(total),
                 Check::kMeshFrames);
        }
        used = std::max(used, end);
    }
    if (has_frames_ && used < total) {
        fail(record_offset(summary_.frames.size() - 1) + range.offset,
             "no frame uses the last " + std::to_string(total - used) + " " + range.what,
             Check::kMeshFrames);
    }
}

// Without indices of their own, there must be one element for each vertex.
void QortParser::check_parallel(const FrameRange& range, uint64_t total,
                                uint64_t block_offset) const {
    const std::string reason =
        std::string("there are not as many ") + range.what + " as vertices, but no indices";
    if (!has_frames_ && total != summary_.vertices) {
        fail(block_offset + kSizeInHead, reason, Check::kMeshLengths);
    }
    for (std::size_t i = 0; i < summary_.frames.size(); ++i) {
        if (summary_.frames[i].*range.count != summary_.frames[i].vertices_count) {
            fail(record_offset(i) + range.offset + kWordSize, reason, Check::kMeshLengths);
        }
    }
}

void QortParser::check_largest(const LargestIndex& largest, uint64_t count,
                               const char* what) const {
    if (largest.index >= count) {
        fail(largest.offset,
             "index " + std::to_string(largest.index) + " of " + std::to_string(count) + " " + what,
             Check::kMeshIndex);
    }
}

// Indices count from the start of a frame's range. If every frame has all the triangles, the
// smallest range limits the indices.
uint64_t QortParser::indexed_count(const FrameRange& range, uint64_t total) const {
    uint64_t smallest = total;
    for (const QortFrame& frame : summary_.frames) {
        if (frame.triangles_count != summary_.triangles) {
            return total;
        }
        smallest = std::min<uint64_t>(smallest, frame.*range.count);
    }
    return smallest;
}

uint64_t QortParser::record_offset(std::size_t frame) const {
    return kHeaderSize + kBlockHeadSize + frame * kTags[kFrames].element_size;
}

uint32_t QortParser::read_word(const char* where) {
    unsigned char bytes[kWordSize];
    if (source_.read(bytes, sizeof bytes) != sizeof bytes) {
        fail(source_.offset(), std::string("the file ends inside ") + where, Check::kCutShort);
    }
    return word_at(bytes);
}

template <typename Visit>
void QortParser::read_words(uint64_t count, Visit visit) {
    constexpr std::size_t kWordsAtOnce = 4096;
    unsigned char bytes[kWordsAtOnce * kWordSize];
    uint32_t numbers[kWordsAtOnce];
    const bool is_listened_to = listener_.array_begins(
        static_cast<QortArray>(block_->tag), block_->size / kTags[block_->tag].element_size);
    while (count > 0) {
        const std::size_t words = static_cast<std::size_t>(std::min<uint64_t>(count, kWordsAtOnce));
        const uint64_t offset = source_.offset();
        if (source_.read(bytes, words * kWordSize) != words * kWordSize) {
            fail(source_.offset(), "the file ends inside " + block_text(block_->tag),
                 Check::kCutShort);
        }
        for (std::size_t i = 0; i < words; ++i) {
            numbers[i] = word_at(bytes + i * kWordSize);
            visit(numbers[i], offset + i * kWordSize);
        }
        if (is_listened_to) {
            listener_.array_words(numbers, words, offset);
        }
        count -= words;
    }
}

void QortParser::fail(uint64_t offset, const std::string& reason, Check check) const {
    throw MalformedFile({offset, 0}, reason, check);
}

}  // namespace vsqinfo
