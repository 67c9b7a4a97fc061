#include "tools/vsqinfo/checks/parameter_check.h"

#include <algorithm>
#include <string_view>

#include "tools/vsqinfo/vsq_tokens.h"

namespace vsqinfo {
namespace {

enum class Kind { kNumber, kSwitch, kText, kColour };

struct KnownParameter {
    std::string_view keyword;  // of the block
    std::string_view type;     // of the block; empty for any
    std::string_view name;
    Kind kind;
    std::size_t numbers;
};

constexpr KnownParameter kKnown[] = {
    {"camera", "", "projection", Kind::kText, 0},
    {"camera", "", "fov", Kind::kNumber, 1},
    {"camera", "", "position", Kind::kNumber, 3},
    {"camera", "", "direction", Kind::kNumber, 3},
    {"camera", "", "up", Kind::kNumber, 3},
    {"camera", "", "clipping", Kind::kNumber, 2},
    {"load", "", "meter_scale", Kind::kNumber, 1},
    {"load", "", "import_up_vector", Kind::kNumber, 1},
    {"load", "", "import_mode", Kind::kSwitch, 1},
    {"geometry", "triangles", "file", Kind::kText, 0},
    {"geometry", "instance", "id", Kind::kNumber, 1},
    {"geometry", "qor_curves", "radius", Kind::kNumber, 1},
    {"geometry", "qor_curves", "order", Kind::kNumber, 1},
    {"geometry", "qor_curves", "fitToCubic", Kind::kSwitch, 1},
    {"animation", "", "start_time", Kind::kNumber, 1},
    {"animation", "", "duration", Kind::kNumber, 1},
    {"animation", "", "duration_org", Kind::kNumber, 1},
    {"animation", "", "target_object_id", Kind::kNumber, 1},
    {"animation", "", "interpolate", Kind::kSwitch, 1},
    {"animation", "", "folder", Kind::kText, 0},
    {"shader", "", "diffuse", Kind::kColour, 3},
    {"shader", "", "specular", Kind::kColour, 3},
    {"shader", "", "color", Kind::kColour, 3},
    {"shader", "", "default_color", Kind::kColour, 3},
    {"shader", "", "texture", Kind::kText, 0},
    {"shader", "", "power", Kind::kNumber, 1},
    {"shader", "", "lumen", Kind::kSwitch, 1},
    {"shader", "", "roughness", Kind::kNumber, 1},
    {"shader", "", "uv_scale_u", Kind::kNumber, 1},
    {"shader", "", "uv_scale_v", Kind::kNumber, 1},
};

const KnownParameter* find_known(const VsqBlock& block, std::string_view name) {
    const auto fits = [&](const KnownParameter& known) {
        return known.name == name && known.keyword == block.keyword &&
               (known.type.empty() || known.type == block.type);
    };
    const auto* known = std::find_if(std::begin(kKnown), std::end(kKnown), fits);
    return known == std::end(kKnown) ? nullptr : known;
}

std::vector<std::string_view> words_of(std::string_view value) {
    std::vector<std::string_view> words;
    while (!value.empty()) {
        const std::size_t end = std::min(value.find(' '), value.size());
        words.push_back(value.substr(0, end));
        value.remove_prefix(std::min(end + 1, value.size()));
    }
    return words;
}

bool is_switch(std::string_view word) {
    return classify_value(word) == ValueWord::kSwitch;
}

bool is_kind(const std::vector<std::string_view>& words, ValueForm form, Kind kind) {
    switch (form) {
        case ValueForm::kText:
            return kind == Kind::kText;
        case ValueForm::kWords:
            return kind != Kind::kText &&
                   std::all_of(words.begin(), words.end(), [kind](std::string_view word) {
                       return is_switch(word) == (kind == Kind::kSwitch);
                   });
        case ValueForm::kShader:
            // A shader can stand in for any value of another shader.
            return kind != Kind::kText && kind != Kind::kSwitch;
        default:
            return false;
    }
}

// One to four numbers, or those of a matrix.
bool is_value_count(std::size_t count) {
    return count <= 4 || count == 16;
}

}  // namespace

void ParameterCheck::block_begins(const VsqBlock& block) {
    // An anonymous shader is the value of a parameter of the block around it.
    if (block.keyword == "shader" && !block.is_definition && !given_.empty() &&
        !block.name.empty() && path().around()->keyword != "material") {
        give('s', block.name, Check::kParameterTwice, block.place);
    }
    given_.emplace_back();
}

void ParameterCheck::parameter(const VsqParameter& parameter) {
    // A slot with a texture and a colour is written twice, as a shader and as a value.
    give(parameter.form == ValueForm::kShader ? 's' : 'v', parameter.name, Check::kParameterTwice,
         parameter.place);
    check_value(parameter);
}

bool ParameterCheck::array_begins(const VsqArray& array) {
    give('a', array.name, Check::kArrayTwice, array.place);
    return false;
}

void ParameterCheck::give(char form, std::string_view name, Check check, FilePlace place) {
    if (!given_.back().insert(form + std::string(name)).second) {
        found(check, place, shown(name) + " in " + path().shown());
    }
}

void ParameterCheck::check_value(const VsqParameter& parameter) {
    const std::string text = shown(parameter.name) + " in " + path().shown();
    const std::vector<std::string_view> words = parameter.form == ValueForm::kWords
                                                    ? words_of(parameter.value)
                                                    : std::vector<std::string_view>();
    const auto is_not_finite = [](std::string_view word) {
        return classify_value(word) == ValueWord::kNotFinite;
    };
    const bool is_finite = std::none_of(words.begin(), words.end(), is_not_finite);
    if (!is_finite) {
        found(Check::kNotFinite, parameter.place, text);
    }

    const KnownParameter* known = find_known(*path().innermost(), parameter.name);
    if (known && !is_kind(words, parameter.form, known->kind)) {
        found(Check::kParameterKind, parameter.place, text);
    } else if (known && parameter.name == "projection" && parameter.value != "perspective" &&
               parameter.value != "orthographic") {
        found(Check::kProjectionUnknown, parameter.place, text + " is " + shown(parameter.value));
    } else if (parameter.form != ValueForm::kWords) {
        return;
    } else if (known ? words.size() != known->numbers : !is_value_count(words.size())) {
        found(known && known->kind == Kind::kColour ? Check::kColourCount : Check::kParameterCount,
              parameter.place, text + " has " + std::to_string(words.size()) + " values");
    } else if (known && is_finite) {
        check_range(parameter);
    }
}

void ParameterCheck::check_range(const VsqParameter& parameter) {
    const std::string text =
        shown(parameter.name) + " " + std::string(parameter.value) + " in " + path().shown();
    const std::vector<std::string_view> words = words_of(parameter.value);
    if (is_switch(words[0])) {
        return;
    }
    const double first = number_value(words[0]);
    if (parameter.name == "fov" && !(first > 0 && first < 180)) {
        found(Check::kFovRange, parameter.place, text);
    } else if (parameter.name == "clipping" && !(first < number_value(words[1]))) {
        found(Check::kClipPlanes, parameter.place, text);
    } else if (parameter.name == "meter_scale" && !(first > 0)) {
        found(Check::kMeterScale, parameter.place, text);
    } else if (parameter.name == "duration" && first < 0) {
        found(Check::kDurationNegative, parameter.place, text);
    }
}

}  // namespace vsqinfo
