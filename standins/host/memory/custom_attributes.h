#pragma once

#include <memory>
#include <string>
#include <vector>

#include "standins/host/memory/checked_index.h"
#include "standins/host/memory/host_text.h"
#include "standins/host/memory/memory_param_block.h"
#include "standins/host/memory/strict_rules.h"
#include "standins/host/sdk/max.h"

namespace memhost {

/// An attribute with one block of parameters.
class MemoryCustAttrib final : public CustAttrib {
public:
    explicit MemoryCustAttrib(const std::wstring& name)
        : name_(units_from_wide(name)), translated_(translated_name(name_)) {}

    MemoryParamBlock& block() { return block_; }

    const MCHAR* GetName(bool localized) override {
        const bool translates = localized && host_obeys(StrictRule::kTranslatedNames);
        return translates ? translated_.c_str() : name_.c_str();
    }
    int NumParamBlocks() override { return 1; }
    IParamBlock2* GetParamBlock(int i) override { return i == 0 ? &block_ : nullptr; }

private:
    std::wstring name_;
    std::wstring translated_;
    MemoryParamBlock block_;
};

/// The custom attributes that an object owns. A strict host puts a null one before each of them.
class MemoryCustAttribs final : public ICustAttribContainer {
public:
    /// Adds an attribute and returns its block.
    MemoryParamBlock& add(const std::wstring& name) {
        attributes_.push_back(std::make_unique<MemoryCustAttrib>(name));
        return attributes_.back()->block();
    }

    int GetNumCustAttribs() override {
        const int count = static_cast<int>(attributes_.size());
        return host_obeys(StrictRule::kNullAttributes) ? 2 * count : count;
    }
    CustAttrib* GetCustAttrib(int i) override {
        if (!host_obeys(StrictRule::kNullAttributes)) {
            return attributes_[checked_index(i, attributes_.size(), "attribute")].get();
        }
        const std::size_t place = checked_index(i, 2 * attributes_.size(), "attribute");
        return place % 2 == 0 ? nullptr : attributes_[place / 2].get();
    }

private:
    std::vector<std::unique_ptr<MemoryCustAttrib>> attributes_;
};

}  // namespace memhost
