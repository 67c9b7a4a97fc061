#include "standins/host/memory/script_runner.h"

#include <cwchar>
#include <memory>
#include <utility>

#include "standins/host/memory/hair.h"
#include "standins/host/memory/memory_host.h"
#include "standins/host/memory/splines.h"

namespace memhost {
namespace {

constexpr wchar_t kMark[] = L"velmora_delete";

// Returns a copy, because a script may add and delete nodes as it goes through the scene.
std::vector<MemoryNode*> nodes_of_kind(const MemoryHost& host, SClass_ID kind) {
    std::vector<MemoryNode*> nodes;
    for (const auto& node : host.nodes()) {
        Object* object = node->EvalWorldState(host.time()).obj;
        if (object != nullptr && object->SuperClassID() == kind) {
            nodes.push_back(node.get());
        }
    }
    return nodes;
}

std::vector<Spline3D> hair_of(MemoryNode& node) {
    const TimeValue time = node.host().time();
    const Class_ID triangles(TRIOBJ_CLASS_ID, 0);
    Object* object = node.EvalWorldState(time).obj;
    Object* converted = object->ConvertToType(time, triangles);
    if (converted == nullptr) {
        return {};
    }
    std::vector<Spline3D> strands = grow_hair(
        *node.hair(), static_cast<TriObject*>(converted)->GetMesh(), node.GetObjTMAfterWSM(time));
    if (converted != object) {
        converted->DeleteMe();
    }
    return strands;
}

void convert_hair_to_splines(MemoryHost& host) {
    for (MemoryNode* node : nodes_of_kind(host, GEOMOBJECT_CLASS_ID)) {
        const HairModifier* hair = node->hair();
        if (hair == nullptr) {
            continue;
        }
        auto splines = std::make_shared<SplineObject>(hair_of(*node));
        splines->attribute(L"velmora_hair_and_fur_data")
            .number(0, L"velmora_start_radius", hair->root_thickness)
            .number(1, L"velmora_end_radius", hair->tip_thickness)
            .integer(2, kMark, TRUE)
            .color(3, L"velmora_root_color", hair->root_color)
            .color(4, L"velmora_tip_color", hair->tip_color)
            .number(5, L"velmora_hue", hair->hue_variation)
            .number(6, L"velmora_value", hair->value_variation);
        host.add_node(host.root(), node->name()).set_object(std::move(splines));
    }
}

bool has_parameter(Object& object, const wchar_t* name) {
    ICustAttribContainer* attributes = object.GetCustAttribContainer();
    for (int i = 0; attributes != nullptr && i < attributes->GetNumCustAttribs(); ++i) {
        CustAttrib* const attribute = attributes->GetCustAttrib(i);
        IParamBlock2* const block = attribute ? attribute->GetParamBlock(0) : nullptr;
        for (int k = 0; block != nullptr && k < block->NumParams(); ++k) {
            if (std::wcscmp(block->GetParamDef(block->IndextoID(k)).int_name, name) == 0) {
                return true;
            }
        }
    }
    return false;
}

// As in the script, the value of the mark doesn't matter.
void delete_marked_shapes(MemoryHost& host) {
    for (MemoryNode* node : nodes_of_kind(host, SHAPE_CLASS_ID)) {
        if (has_parameter(*node->EvalWorldState(host.time()).obj, kMark)) {
            host.delete_node(*node);
        }
    }
}

constexpr struct {
    const wchar_t* known_by;
    void (*act)(MemoryHost&);
} kScripts[] = {
    {L"ConvertHairsToSplines", convert_hair_to_splines},
    {L"#velmora_delete == true", delete_marked_shapes},
};

}  // namespace

bool ScriptRunner::run(MemoryHost& host, const Call& call) {
    calls_.push_back(call);
    if (failing_) {
        return false;
    }
    for (const auto& script : kScripts) {
        if (call.script.find(script.known_by) != std::wstring::npos) {
            script.act(host);
            return true;
        }
    }
    return false;
}

}  // namespace memhost

BOOL ExecuteMAXScriptScript(const MCHAR* script, MAXScript::ScriptSource source, BOOL quiet_errors,
                            FPValue*, BOOL log_quiet_errors) {
    memhost::MemoryHost* host = memhost::MemoryHost::current();
    return host != nullptr && host->scripts().run(*host, {script, source, quiet_errors != FALSE,
                                                          log_quiet_errors != FALSE});
}
