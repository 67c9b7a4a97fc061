#pragma once

#include <string>
#include <vector>

#include "standins/host/memory/checked_index.h"
#include "standins/host/memory/timed_value.h"
#include "standins/host/sdk/max.h"

namespace memhost {

/// A parameter block in memory. As in the genuine host, functions that don't check an id end the
/// program if the block hasn't got it.
class MemoryParamBlock final : public IParamBlock2 {
public:
    MemoryParamBlock& number(ParamID id, const std::wstring& name, TimedNumber value);
    MemoryParamBlock& integer(ParamID id, const std::wstring& name, int value);
    MemoryParamBlock& color(ParamID id, const std::wstring& name, TimedColor value);
    MemoryParamBlock& map(ParamID id, const std::wstring& name, Texmap* value);
    MemoryParamBlock& text(ParamID id, const std::wstring& name, const std::wstring& value);
    /// Sets the name that the user sees. Without it that is the internal name.
    MemoryParamBlock& local_name(ParamID id, const std::wstring& name);

    int NumParams() override { return static_cast<int>(params_.size()); }
    ParamID IndextoID(int i) override {
        return params_[checked_index(i, params_.size(), "parameter")].def.ID;
    }
    int IDtoIndex(ParamID id) override;
    ParamDef& GetParamDef(ParamID id) override;
    ParamType2 GetParameterType(ParamID id) override { return param(id).def.type; }
    MSTR GetLocalName(ParamID id, int tab_index = -1, bool localized = true) override;
    float GetFloat(ParamID id, TimeValue t = 0, int tab_index = 0) override;
    int GetInt(ParamID id, TimeValue t = 0, int tab_index = 0) override;
    Color GetColor(ParamID id, TimeValue t = 0, int tab_index = 0) override;
    Texmap* GetTexmap(ParamID id, TimeValue t = 0, int tab_index = 0) override;
    const MCHAR* GetStr(ParamID id, TimeValue t = 0, int tab_index = 0) override;
    BOOL GetValue(ParamID id, TimeValue t, float& value, Interval& valid,
                  int tab_index = 0) override;
    BOOL GetValue(ParamID id, TimeValue t, int& value, Interval& valid, int tab_index = 0) override;
    BOOL GetValue(ParamID id, TimeValue t, Color& value, Interval& valid,
                  int tab_index = 0) override;
    BOOL GetValue(ParamID id, TimeValue t, Texmap*& value, Interval& valid,
                  int tab_index = 0) override;
    BOOL GetValue(ParamID id, TimeValue t, const MCHAR*& value, Interval& valid,
                  int tab_index = 0) override;

private:
    struct Param {
        ParamDef def;
        std::wstring name;
        std::wstring local_name;
        TimedNumber number = 0.0f;
        int integer = 0;
        TimedColor color = Color();
        Texmap* map = nullptr;
        std::wstring text;
    };

    Param& add(ParamID id, ParamType2 type, const std::wstring& name);
    Param* find(ParamID id);
    Param& param(ParamID id);
    template <typename T>
    BOOL value_of(ParamID id, ParamType2 type, T Param::*field, T& value);
    template <typename T>
    BOOL value_of(ParamID id, ParamType2 type, TimedValue<T> Param::*field, TimeValue t, T& value,
                  Interval& valid);

    std::vector<Param> params_;  // in the order of their indices
};

}  // namespace memhost
