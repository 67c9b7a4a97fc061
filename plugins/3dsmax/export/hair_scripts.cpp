#include "plugins/3dsmax/export/hair_scripts.h"

#include "plugins/3dsmax/export/hair_parameters.h"
#include "plugins/3dsmax/export/host_script.h"

std::wstring HairScript() {
    const std::wstring attribute = kHairAttribute;
    std::wstring script = attribute + L" = attributes " + attribute +
                          L"\n"
                          L"(\n"
                          L"\tparameters data\n"
                          L"\t(\n";
    for (const HairParameter& parameter : kHairParameters) {
        script += parameter.indent;
        script += parameter.name;
        script += parameter.declaration;
        script += L"\n";
    }
    script +=
        L"\t)\n"
        L")\n"
        L" \n"
        L" for OBJ in Geometry where OBJ.modifiers[#Hair_and_Fur]!=undefined do \n"
        L" (\n"
        L"  if OBJ != undefined do (\n"
        L"    root = OBJ.modifiers[#Hair_and_Fur].HairRootThickness \n"
        L"    tip = OBJ.modifiers[#Hair_and_Fur].HairTipThickness \t\n"
        L"    name = OBJ.name\n"
        L"    tc = OBJ.modifiers[#Hair_and_Fur].MaterialTipColor \n"
        L"    rc = OBJ.modifiers[#Hair_and_Fur].MaterialRootColor \n"
        L"    hv = OBJ.modifiers[#Hair_and_Fur].MaterialHueVariation  \n"
        L"    vv = OBJ.modifiers[#Hair_and_Fur].MaterialValueVariation  \n"
        L"    obj = OBJ.modifiers[#Hair_and_Fur].ConvertHairsToSplines instance:OBJ\n"
        L"    obj.name = name\n"
        L"    custAttributes.add obj " +
        attribute + L"\n";
    for (const HairParameter& parameter : kHairParameters) {
        if (parameter.assignment != nullptr) {
            script += parameter.assignment_indent;
            script += L"obj.";
            script += parameter.name;
            script += parameter.assignment;
            script += L"\n";
        }
    }
    script +=
        L"   )\n"
        L" )\n";
    return script;
}

const wchar_t* const HairCleanupScript =
    L"for OBJ in Shapes where isProperty OBJ.baseObject #velmora_delete == true do "
    L"( if OBJ != undefined do delete OBJ )";

namespace {

bool RunScript(const wchar_t* script) {
    return ExecuteMAXScriptScript(script, MAXScript::ScriptSource::NonEmbedded, FALSE, nullptr,
                                  TRUE) != FALSE;
}

}  // namespace

bool RunHairScript() {
    return RunScript(HairScript().c_str());
}

bool RunHairCleanupScript() {
    return RunScript(HairCleanupScript);
}
