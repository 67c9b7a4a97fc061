#include "standins/host/memory/memory_param_block.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "standins/host/memory/host_text.h"
#include "standins/host/memory/strict_rules.h"

namespace memhost {

MemoryParamBlock::Param& MemoryParamBlock::add(ParamID id, ParamType2 type,
                                               const std::wstring& name) {
    Param& added = params_.emplace_back();
    added.def.ID = id;
    added.def.type = type;
    added.name = name;
    added.local_name = name;
    return added;
}

MemoryParamBlock::Param* MemoryParamBlock::find(ParamID id) {
    const int index = IDtoIndex(id);
    return index < 0 ? nullptr : &params_[static_cast<std::size_t>(index)];
}

MemoryParamBlock::Param& MemoryParamBlock::param(ParamID id) {
    Param* found = find(id);
    if (found == nullptr) {
        std::fprintf(stderr, "a parameter block has no parameter with id %d\n", id);
        std::abort();
    }
    return *found;
}

MemoryParamBlock& MemoryParamBlock::number(ParamID id, const std::wstring& name,
                                           TimedNumber value) {
    add(id, TYPE_FLOAT, name).number = std::move(value);
    return *this;
}

MemoryParamBlock& MemoryParamBlock::integer(ParamID id, const std::wstring& name, int value) {
    add(id, TYPE_INT, name).integer = value;
    return *this;
}

MemoryParamBlock& MemoryParamBlock::color(ParamID id, const std::wstring& name, TimedColor value) {
    add(id, TYPE_RGBA, name).color = std::move(value);
    return *this;
}

MemoryParamBlock& MemoryParamBlock::map(ParamID id, const std::wstring& name, Texmap* value) {
    add(id, TYPE_TEXMAP, name).map = value;
    return *this;
}

MemoryParamBlock& MemoryParamBlock::local_name(ParamID id, const std::wstring& name) {
    param(id).local_name = name;
    return *this;
}

MemoryParamBlock& MemoryParamBlock::text(ParamID id, const std::wstring& name,
                                         const std::wstring& value) {
    add(id, TYPE_STRING, name).text = units_from_wide(value);
    return *this;
}

int MemoryParamBlock::IDtoIndex(ParamID id) {
    for (std::size_t i = 0; i < params_.size(); ++i) {
        if (params_[i].def.ID == id) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

ParamDef& MemoryParamBlock::GetParamDef(ParamID id) {
    // The name moves when the list of parameters grows, so the pointer is set anew.
    Param& found = param(id);
    found.def.int_name = found.name.data();
    return found.def;
}

MSTR MemoryParamBlock::GetLocalName(ParamID id, int, bool localized) {
    const std::wstring& name = param(id).local_name;
    const bool translates = localized && host_obeys(StrictRule::kTranslatedNames);
    return MSTR((translates ? translated_name(name) : name).c_str());
}

float MemoryParamBlock::GetFloat(ParamID id, TimeValue t, int) {
    return param(id).number.at(t);
}

int MemoryParamBlock::GetInt(ParamID id, TimeValue, int) {
    return param(id).integer;
}

Color MemoryParamBlock::GetColor(ParamID id, TimeValue t, int) {
    return param(id).color.at(t);
}

Texmap* MemoryParamBlock::GetTexmap(ParamID id, TimeValue, int) {
    return param(id).map;
}

const MCHAR* MemoryParamBlock::GetStr(ParamID id, TimeValue, int) {
    const Param& found = param(id);
    return found.def.type == TYPE_STRING ? found.text.c_str() : nullptr;
}

template <typename T>
BOOL MemoryParamBlock::value_of(ParamID id, ParamType2 type, T Param::*field, T& value) {
    const Param* found = find(id);
    if (found == nullptr || found->def.type != type) {
        return FALSE;
    }
    value = found->*field;
    return TRUE;
}

template <typename T>
BOOL MemoryParamBlock::value_of(ParamID id, ParamType2 type, TimedValue<T> Param::*field,
                                TimeValue t, T& value, Interval& valid) {
    TimedValue<T> timed{T()};
    const BOOL found = value_of(id, type, field, timed);
    value = timed.at(t, valid);
    return found;
}

BOOL MemoryParamBlock::GetValue(ParamID id, TimeValue t, float& value, Interval& valid, int) {
    return value_of(id, TYPE_FLOAT, &Param::number, t, value, valid);
}

BOOL MemoryParamBlock::GetValue(ParamID id, TimeValue, int& value, Interval&, int) {
    value = 0;
    return value_of(id, TYPE_INT, &Param::integer, value);
}

BOOL MemoryParamBlock::GetValue(ParamID id, TimeValue t, Color& value, Interval& valid, int) {
    return value_of(id, TYPE_RGBA, &Param::color, t, value, valid);
}

BOOL MemoryParamBlock::GetValue(ParamID id, TimeValue, Texmap*& value, Interval&, int) {
    value = nullptr;
    return value_of(id, TYPE_TEXMAP, &Param::map, value);
}

BOOL MemoryParamBlock::GetValue(ParamID id, TimeValue t, const MCHAR*& value, Interval&, int) {
    const Param* found = find(id);
    const bool is_text = found != nullptr && found->def.type == TYPE_STRING;
    value = is_text ? GetStr(id, t) : nullptr;
    return is_text;
}

}  // namespace memhost
