#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "standins/host/memory/host_text.h"
#include "tools/vsqexport/import/model_import.h"

inline const std::string kModels = VSQ_TEST_MODELS "/";

/// Tests of real models need the package that contains them.
#define SKIP_WITHOUT_MODELS()                                              \
    if (!std::filesystem::is_directory(VSQ_TEST_MODELS)) {                 \
        GTEST_SKIP() << "assimp-testmodels is not at " << VSQ_TEST_MODELS; \
    }

/// The warnings, each with its code in front.
inline std::vector<std::string> texts_of(const vsqexport::ImportWarnings& warnings) {
    std::vector<std::string> texts;
    for (const vsqexport::ImportWarning& warning : warnings) {
        texts.push_back(warning.code + (": " + warning.text));
    }
    return texts;
}

/// The scene that is imported from a model file.
struct ImportedModel : memhost::SceneBuilder {
    explicit ImportedModel(const std::string& path, const vsqexport::ImportOptions& options = {})
        : warnings(texts_of(vsqexport::import_model(path, *this, options))) {}

    /// The first node of that name. Throws, which fails the test, if there is none.
    memhost::MemoryNode& find(const std::string& name) {
        for (const auto& node : host().nodes()) {
            if (memhost::utf8_from_units(node->GetName()) == name) {
                return *node;
            }
        }
        throw std::runtime_error("the model has no node " + name);
    }

    /// The object of the node of that name.
    template <typename ObjectKind>
    ObjectKind& object(const std::string& name) {
        return dynamic_cast<ObjectKind&>(*find(name).EvalWorldState(0).obj);
    }

    std::vector<std::string> warnings;
};
