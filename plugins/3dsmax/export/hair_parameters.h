#pragma once

#include "plugins/3dsmax/export/hair_attributes.h"
#include "plugins/3dsmax/export/host.h"

/// The attribute that marks splines as hair.
inline constexpr wchar_t kHairAttribute[] = L"velmora_hair_and_fur_data";

/// A parameter of that attribute: how the script declares and sets it, and which field it is read
/// into. Both field pointers are null for a parameter that isn't read.
struct HairParameter {
    const wchar_t* indent;
    const wchar_t* name;
    const wchar_t* declaration;
    const wchar_t* assignment_indent;
    const wchar_t* assignment;  ///< null if the script keeps the default
    float StrandLook::*number;
    Color StrandLook::*color;
};

/// In the order of declaration, which is the order of the host's parameter ids from 0.
inline constexpr HairParameter kHairParameters[] = {
    {L"\t\t", L"velmora_start_radius", L"  type:#float  default:1 ", L"    ", L" = root   ",
     &StrandLook::start_radius, nullptr},
    {L"\t  ", L"velmora_end_radius", L"    type:#float  default:1 ", L"\t  ", L" = tip",
     &StrandLook::end_radius, nullptr},
    // The clean-up script looks for this one.
    {L"\t\t", L"velmora_delete", L"  type:#boolean  default:True", L"", nullptr, nullptr, nullptr},
    {L"    ", L"velmora_root_color", L" type:#color", L"    ", L" = rc", nullptr,
     &StrandLook::root_color},
    {L"    ", L"velmora_tip_color", L" type:#color", L"    ", L" =  tc", nullptr,
     &StrandLook::tip_color},
    {L"    ", L"velmora_hue", L" type:#float default:10 ", L"    ", L" =  hv", &StrandLook::hue,
     nullptr},
    {L"    ", L"velmora_value", L" type:#float default:50 ", L"    ", L" =  vv", &StrandLook::value,
     nullptr},
};
