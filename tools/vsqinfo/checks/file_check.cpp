#include "tools/vsqinfo/checks/file_check.h"

#include "tools/vsqinfo/qort_reader.h"
#include "tools/vsqinfo/vsq_tokens.h"

namespace vsqinfo {
namespace {

constexpr char kRendererPicture[] = "startup.hdr";

}  // namespace

void FileCheck::parameter(const VsqParameter& parameter) {
    if (parameter.form != ValueForm::kText || parameter.value.empty()) {
        return;
    }
    const bool is_file = parameter.name == "file";
    const bool is_mesh_file = is_file && path().is_in("geometry");
    const bool is_texture = path().is_in("shader") && (is_file || parameter.name == "texture");
    const std::string file(parameter.value);
    // A longer path hasn't been kept whole.
    if ((!is_mesh_file && !is_texture) || file.size() >= VsqTokens::kKeptText ||
        !seen_.insert(file).second) {
        return;
    }
    if (is_mesh_file) {
        check_mesh_file(file, parameter.place);
    } else {
        check_texture(file, parameter.place);
    }
}

void FileCheck::check_texture(const std::string& file, FilePlace place) {
    if (file == kRendererPicture) {
        found(Check::kRendererFile, place, shown(file));
    } else if (!search_.open(file)) {
        found(Check::kTextureMissing, place, search_.missing_text(file));
    }
}

void FileCheck::check_mesh_file(const std::string& file, FilePlace place) {
    std::optional<std::ifstream> stream = search_.open(file);
    if (!stream) {
        found(Check::kMeshFileMissing, place, search_.missing_text(file));
        return;
    }
    try {
        read_qort(*stream);
    } catch (const std::runtime_error& error) {
        found(Check::kMeshFileMalformed, place, shown(file) + ": " + error.what());
    }
}

}  // namespace vsqinfo
