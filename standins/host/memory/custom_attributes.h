#pragma once

#include <memory>
#include <string>
#include <vector>

#include "standins/host/memory/checked_index.h"
#include "standins/host/memory/host_text.h"
#include "standins/host/memory/memory_param_block.h"
#include "standins/host/sdk/max.h"

namespace memhost {

/// An attribute with one block of parameters.
class MemoryCustAttrib final : public CustAttrib {
public:
    explicit MemoryCustAttrib(const std::wstring& name) : name_(units_from_wide(name)) {}

    MemoryParamBlock& block() { return block_; }

    const MCHAR* GetName(bool) override { return name_.c_str(); }
    int NumParamBlocks() override { return 1; }
    IParamBlock2* GetParamBlock(int i) override { return i == 0 ? &block_ : nullptr; }

private:
    std::wstring name_;
    MemoryParamBlock block_;
};

/// The custom attributes that an object owns.
class MemoryCustAttribs final : public ICustAttribContainer {
public:
    /// Adds an attribute and returns its block.
    MemoryParamBlock& add(const std::wstring& name) {
        attributes_.push_back(std::make_unique<MemoryCustAttrib>(name));
        return attributes_.back()->block();
    }

    int GetNumCustAttribs() override { return static_cast<int>(attributes_.size()); }
    CustAttrib* GetCustAttrib(int i) override {
        return attributes_[checked_index(i, attributes_.size(), "attribute")].get();
    }

private:
    std::vector<std::unique_ptr<MemoryCustAttrib>> attributes_;
};

}  // namespace memhost
