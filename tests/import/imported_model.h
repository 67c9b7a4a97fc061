#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "standins/host/memory/host_text.h"
#include "tools/vsqexport/import/model_import.h"

inline const std::string kModels = VSQ_TEST_MODELS "/";

/// The tests of real models need the package that holds them.
#define SKIP_WITHOUT_MODELS()                                              \
    if (!std::filesystem::is_directory(VSQ_TEST_MODELS)) {                 \
        GTEST_SKIP() << "assimp-testmodels is not at " << VSQ_TEST_MODELS; \
    }

/// The scene that a model file becomes.
struct ImportedModel : memhost::SceneBuilder {
    explicit ImportedModel(const std::string& path)
        : warnings(vsqexport::import_model(path, *this)) {}

    /// The first node of that name. A test fails where there is none.
    memhost::MemoryNode& find(const std::string& name) {
        for (const auto& node : host().nodes()) {
            if (memhost::utf8_from_units(node->GetName()) == name) {
                return *node;
            }
        }
        throw std::runtime_error("the model has no node " + name);
    }

    /// What the node of that name shows.
    template <typename ObjectKind>
    ObjectKind& object(const std::string& name) {
        return dynamic_cast<ObjectKind&>(*find(name).EvalWorldState(0).obj);
    }

    std::vector<std::string> warnings;
};
