#include "standins/host/memory/memory_param_block.h"

#include "standins/host/memory/host_text.h"

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

MemoryParamBlock::Param& MemoryParamBlock::find(ParamID id) {
    for (Param& param : params_) {
        if (param.def.ID == id) {
            return param;
        }
    }
    return unset_;
}

MemoryParamBlock& MemoryParamBlock::number(ParamID id, const std::wstring& name, float value) {
    add(id, TYPE_FLOAT, name).number = value;
    return *this;
}

MemoryParamBlock& MemoryParamBlock::integer(ParamID id, const std::wstring& name, int value) {
    add(id, TYPE_INT, name).integer = value;
    return *this;
}

MemoryParamBlock& MemoryParamBlock::color(ParamID id, const std::wstring& name,
                                          const Color& value) {
    add(id, TYPE_RGBA, name).color = value;
    return *this;
}

MemoryParamBlock& MemoryParamBlock::map(ParamID id, const std::wstring& name, Texmap* value) {
    add(id, TYPE_TEXMAP, name).map = value;
    return *this;
}

MemoryParamBlock& MemoryParamBlock::local_name(ParamID id, const std::wstring& name) {
    find(id).local_name = name;
    return *this;
}

MemoryParamBlock& MemoryParamBlock::text(ParamID id, const std::wstring& name,
                                         const std::wstring& value) {
    add(id, TYPE_STRING, name).text = units_from_wide(value);
    return *this;
}

ParamDef& MemoryParamBlock::GetParamDef(ParamID id) {
    // The text moves when the list of parameters grows.
    Param& param = find(id);
    param.def.int_name = param.name.data();
    return param.def;
}

MSTR MemoryParamBlock::GetLocalName(ParamID id, int, bool) {
    return find(id).local_name.c_str();
}

float MemoryParamBlock::GetFloat(ParamID id, TimeValue, int) {
    return find(id).number;
}

int MemoryParamBlock::GetInt(ParamID id, TimeValue, int) {
    return find(id).integer;
}

Color MemoryParamBlock::GetColor(ParamID id, TimeValue, int) {
    return find(id).color;
}

Texmap* MemoryParamBlock::GetTexmap(ParamID id, TimeValue, int) {
    return find(id).map;
}

const MCHAR* MemoryParamBlock::GetStr(ParamID id, TimeValue, int) {
    const Param& param = find(id);
    return param.def.type == TYPE_STRING ? param.text.c_str() : nullptr;
}

template <typename T>
BOOL MemoryParamBlock::value_of(ParamID id, ParamType2 type, T Param::*field, T& value) {
    const Param& param = find(id);
    if (&param == &unset_ || param.def.type != type) {
        return FALSE;
    }
    value = param.*field;
    return TRUE;
}

BOOL MemoryParamBlock::GetValue(ParamID id, TimeValue, float& value, Interval&, int) {
    return value_of(id, TYPE_FLOAT, &Param::number, value);
}

BOOL MemoryParamBlock::GetValue(ParamID id, TimeValue, Color& value, Interval&, int) {
    return value_of(id, TYPE_RGBA, &Param::color, value);
}

BOOL MemoryParamBlock::GetValue(ParamID id, TimeValue, Texmap*& value, Interval&, int) {
    return value_of(id, TYPE_TEXMAP, &Param::map, value);
}

}  // namespace memhost
