// The library's entry point on systems where a module has no resources of its own. The texts are in
// a table here.

#include "plugins/3dsmax/shell/resources.h"
#include "plugins/3dsmax/shell/string_resources.h"

namespace {

struct StringResource {
    UINT id;
    const wchar_t* text;
};

constexpr StringResource kStringResources[] = {
    {IDS_CLASS_NAME, L"" TEXT_CLASS_NAME},
    {IDS_CATEGORY, L"" TEXT_CATEGORY},
    {IDS_LIB_DESCRIPTION, L"" TEXT_LIB_DESCRIPTION},
    {IDS_UPDATE, L"" TEXT_UPDATE},
    {IDS_EXPORT, L"" TEXT_EXPORT},
    {IDS_SETTINGS, L"" TEXT_SETTINGS},
    {IDS_RENDER, L"" TEXT_RENDER},
    {IDS_EXPORT_ANIMATION, L"" TEXT_EXPORT_ANIMATION},
    {IDS_MENU_TITLE, L"" TEXT_MENU_TITLE},
};

const wchar_t* find_string(UINT id) {
    for (const StringResource& string : kStringResources) {
        if (string.id == id) {
            return string.text;
        }
    }
    return nullptr;
}

HINSTANCE__ this_module = {find_string};

// Runs when the library is loaded.
[[maybe_unused]] const bool is_attached = [] {
    module_handle = &this_module;
    return true;
}();

}  // namespace
