#pragma once

#include <bitset>
#include <cstddef>
#include <iterator>
#include <string>

namespace memhost {

/// What a genuine host may do and this one does only if it is told to. docs/host-contract.md tells
/// what the plug-in does about each.
enum class StrictRule {
    kDroppedNormals,
    kSingularInverseNan,
    kSingularInverseZero,
    kConvertNewObject,
    kNullAttributes,
    kNullReferences,
    kCancelStays,
    kCancelAtUpdates,
    kProgressRefused,
    kLateActions,
    kFindTableNull,
    kLateMenus,
    kRepeatedNotifications,
    kMapNeedsUpdate,
    kLowerCasePaths,
    kCameraStateFails,
    kShapeFillsFewer,
    kConvertNull,
    kViewNull,
    kBitmapOpenFails,
    kMapDrawFails,
    kBitmapWriteFails,
    kTranslatedNames,
    kParentLayersHide,
    kCategoriesHide,

};

struct StrictRuleInfo {
    StrictRule rule;
    const char* name;
    bool keeps_answer;     ///< an export of any scene has the same bytes with the rule
    const char* sentence;  ///< what the host does
};

/// In the order of the enumeration.
inline constexpr StrictRuleInfo kStrictRules[] = {
    {StrictRule::kDroppedNormals, "dropped-normals", true,
     "A copy of an object's mesh has no specified normals."},
    {StrictRule::kSingularInverseNan, "singular-inverse-nan", true,
     "The inverse of a singular matrix is all NaN."},
    {StrictRule::kSingularInverseZero, "singular-inverse-zero", true,
     "The inverse of a singular matrix is all zero; with the rule above, they take turns."},
    {StrictRule::kConvertNewObject, "convert-new-object", true,
     "Each conversion makes a new object, even to the object's own class."},
    {StrictRule::kNullAttributes, "null-attributes", true,
     "Some of an object's custom attributes are null."},
    {StrictRule::kNullReferences, "null-references", true,
     "Some of a light's references are null."},
    {StrictRule::kCancelStays, "cancel-stays", true,
     "A cancel stays until SetCancel clears it; the start of a progress bar doesn't."},
    {StrictRule::kCancelAtUpdates, "cancel-at-updates", true,
     "A cancel is noticed only while the progress bar is updated."},
    {StrictRule::kProgressRefused, "progress-refused", true,
     "The progress bar can't be started, as if another one were open."},
    {StrictRule::kLateActions, "late-actions", true,
     "The plug-in's actions become known after it has started, and the menus are loaded then."},
    {StrictRule::kFindTableNull, "find-table-null", true, "FindTable finds no table of actions."},
    {StrictRule::kLateMenus, "late-menus", true,
     "A menu file is loaded before the plug-in starts, and another one afterwards."},
    {StrictRule::kRepeatedNotifications, "repeated-notifications", true,
     "Each notification comes twice, the latest registration first."},
    {StrictRule::kMapNeedsUpdate, "map-needs-update", true,
     "A map draws itself only after Update and LoadMapFiles for the same time."},
    {StrictRule::kLowerCasePaths, "lower-case-paths", false,
     "Resolved paths of assets are in lower case."},
    {StrictRule::kCameraStateFails, "camera-state-fails", false,
     "EvalCameraState fails and leaves useless numbers behind."},
    {StrictRule::kShapeFillsFewer, "shape-fills-fewer", false,
     "GetShape tells the number of points but fills in only half of them."},
    {StrictRule::kConvertNull, "convert-null", false,
     "Each conversion fails, although CanConvertToType has promised it."},
    {StrictRule::kViewNull, "view-null", false,
     "There is no active view, and objects leave boxes untouched."},
    {StrictRule::kBitmapOpenFails, "bitmap-open-fails", false, "No image file can be opened."},
    {StrictRule::kMapDrawFails, "map-draw-fails", false, "Maps draw nothing."},
    {StrictRule::kBitmapWriteFails, "bitmap-write-fails", false,
     "No image file can be written, which only the results of OpenOutput and Write tell."},
    {StrictRule::kTranslatedNames, "translated-names", false,
     "Localised names of map slots, parameters and attributes are in another language."},
    {StrictRule::kParentLayersHide, "parent-layers-hide", false,
     "A hidden layer also hides the nodes on the layers below it."},
    {StrictRule::kCategoriesHide, "categories-hide", false,
     "The user has hidden the categories of lights, shapes and cameras."},
};

/// The rules that a host obeys.
class StrictRules {
public:
    /// `list` has names, separated by commas; "all" stands for every rule that keeps the answer,
    /// and a "-" before a name takes that rule out again. Throws `std::invalid_argument` with one
    /// line that lists the names if one is unknown.
    static StrictRules parse(const std::string& list);

    StrictRules& set(StrictRule rule, bool on = true) {
        rules_.set(static_cast<std::size_t>(rule), on);
        return *this;
    }
    StrictRules& add(const StrictRules& others) {
        rules_ |= others.rules_;
        return *this;
    }
    bool has(StrictRule rule) const { return rules_.test(static_cast<std::size_t>(rule)); }

private:
    std::bitset<std::size(kStrictRules)> rules_;
};

/// `name` as another language of the host's user interface might have it.
std::wstring translated_name(const std::wstring& name);

/// Whether the newest host obeys `rule`. False if there is no host.
bool host_obeys(StrictRule rule);

/// The rules that the environment variable `VSQ_STRICT_HOST` lists. Tests set it to run a whole
/// program, or another test, with a strict host.
StrictRules strict_rules_of_environment();

/// One line for each rule: two blanks, the name, and the sentence.
std::string list_of_strict_rules();

}  // namespace memhost
