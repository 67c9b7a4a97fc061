#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tools/vsqinfo/checks/block_path.h"
#include "tools/vsqinfo/checks/file_search.h"
#include "tools/vsqinfo/checks/findings.h"
#include "tools/vsqinfo/checks/scene_check.h"

namespace vsqinfo {

/// All checks of a scene, as one listener for `read_vsq`:
///
///     Findings findings;
///     const FileSearch search = FileSearch::beside(path);
///     SceneChecks checks(findings, &search, nullptr);
///     checks.scene_ends(read_vsq(stream, &checks));
///
/// A fault after which the file can be read on becomes a finding.
class SceneChecks final : public VsqListener {
public:
    /// Borrows `findings` and `further`, a listener that gets blocks and matrices as well and may
    /// be null. Without a `search`, no file is looked for.
    SceneChecks(Findings& findings, const FileSearch* search, VsqListener* further);

    void block_begins(const VsqBlock& block) override;
    void block_ends() override;
    void matrix(const VsqMatrix& matrix, bool replaces, FilePlace place) override;
    void statement(const VsqStatement& statement) override;
    void parameter(const VsqParameter& parameter) override;
    bool array_begins(const VsqArray& array) override;
    void array_numbers(const VsqNumbers& numbers) override;
    void array_ends(const VsqArrayEnd& end) override;
    void name(std::string_view bytes, bool is_hex, FilePlace place) override;
    void number(std::string_view word, FilePlace place) override;
    void fault(Check check, FilePlace place, const std::string& reason) override;

    /// Call this once the whole file has been read.
    void scene_ends(const VsqSummary& summary);

private:
    Findings& findings_;
    VsqListener* further_;
    BlockPath path_;
    std::vector<std::unique_ptr<SceneCheck>> checks_;
    // For each open array, the checks that want its numbers.
    std::vector<std::vector<SceneCheck*>> wanting_;
};

}  // namespace vsqinfo
