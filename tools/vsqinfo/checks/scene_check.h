#pragma once

#include <string>

#include "tools/vsqinfo/checks/block_path.h"
#include "tools/vsqinfo/checks/findings.h"
#include "tools/vsqinfo/vsq_listener.h"
#include "tools/vsqinfo/vsq_summary.h"

namespace vsqinfo {

/// A group of checks on one subject, which listens to a scene while it is read.
///
/// `SceneChecks` keeps the path: it opens a block before `block_begins` and closes it after
/// `block_ends`.
class SceneCheck : public VsqListener {
public:
    /// Both are borrowed.
    SceneCheck(const BlockPath& path, Findings& findings) : path_(path), findings_(findings) {}

    /// Called once the whole file has been read.
    virtual void scene_ends(const VsqSummary&) {}

    /// `SceneChecks` records the faults, once for all checks.
    void fault(Check, FilePlace, const std::string&) final {}

protected:
    const BlockPath& path() const { return path_; }

    void found(Check check, FilePlace place, std::string text) {
        findings_.add(check, place, std::move(text));
    }

private:
    const BlockPath& path_;
    Findings& findings_;
};

}  // namespace vsqinfo
