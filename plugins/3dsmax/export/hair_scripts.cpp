#include "plugins/3dsmax/export/hair_scripts.h"

#include "plugins/3dsmax/export/scene_exporter.h"

// clang-format off
const wchar_t* const HairScript =
    L"velmora_hair_and_fur_data = attributes velmora_hair_and_fur_data\n"
    L"(\n"
    L"\tparameters data\n"
    L"\t(\n"
    L"\t\tvelmora_start_radius  type:#float  default:1 \n"
    L"\t  velmora_end_radius    type:#float  default:1 \n"
    L"\t\tvelmora_delete  type:#boolean  default:True\n"
    L"    velmora_root_color type:#color\n"
    L"    velmora_tip_color type:#color\n"
    L"    velmora_hue type:#float default:10 \n"
    L"    velmora_value type:#float default:50 \n"
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
    L"    custAttributes.add obj velmora_hair_and_fur_data\n"
    L"    obj.velmora_start_radius = root   \n"
    L"\t  obj.velmora_end_radius = tip\n"
    L"    obj.velmora_root_color = rc\n"
    L"    obj.velmora_tip_color =  tc\n"
    L"    obj.velmora_hue =  hv\n"
    L"    obj.velmora_value =  vv\n"
    L"   )\n"
    L" )\n";

const wchar_t* const HairCleanupScript =
    L"for OBJ in Shapes where isProperty OBJ.baseObject #velmora_delete == true do ( if OBJ != undefined do delete OBJ )";
// clang-format on

namespace {

void RunScript(const wchar_t* script) {
    ExecuteMAXScriptScript(script, MAXScript::ScriptSource::NonEmbedded, FALSE, nullptr, TRUE);
}

}  // namespace

// Where a script fails, the export goes on without hair.
void SceneExporter::RunHairScript() {
    RunScript(HairScript);
}

void SceneExporter::RunHairCleanupScript() {
    RunScript(HairCleanupScript);
}
