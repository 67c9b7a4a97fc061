#pragma once

// The ids and texts of the plug-in's resources. The resource script and the code share them, so
// this file has only macros. All texts are narrow; L"" in front of one makes it wide.

// String resources.
#define IDS_CLASS_NAME 1
#define IDS_CATEGORY 2
#define IDS_LIB_DESCRIPTION 9
#define IDS_UPDATE 10
#define IDS_EXPORT 12
#define IDS_SETTINGS 15
#define IDS_RENDER 102
#define IDS_EXPORT_ANIMATION 103
#define IDS_MENU_TITLE 105

#define TEXT_CLASS_NAME "VSQExp"
#define TEXT_CATEGORY "Normal"
#define TEXT_LIB_DESCRIPTION "Velmora VSQ File Exporter for 3D Studio Max"
#define TEXT_UPDATE "Update"
#define TEXT_EXPORT "Export"
#define TEXT_SETTINGS "Settings"
#define TEXT_RENDER "Render"
#define TEXT_EXPORT_ANIMATION "Export Animation "
#define TEXT_MENU_TITLE "Velmora"

// The settings dialog and its controls.
#define IDD_OPTIONS 116

#define IDC_CURVES_GROUP 1024
#define IDC_HAIR_AND_FUR 1025
#define IDC_GENERAL_GROUP 1027
#define IDC_GENERAL_CURVES 1028
#define IDC_RADIUS_TRACKBAR 1029
#define IDC_RADIUS_LABEL 1031
#define IDC_CAMERAS 1032
#define IDC_LIGHTS_GROUP 1033
#define IDC_PHOTOMETRIC_LIGHTS 1034
#define IDC_BONES 1035
#define IDC_TRANSFORM_ANIMATIONS 1036
#define IDC_CAMERA_ANIMATIONS 1037
#define IDC_LAYERS 1038
#define IDC_ANIMATIONS_GROUP 1039
#define IDC_DEFORMABLE 1040

#define TEXT_OPTIONS_TITLE "Velmora Vsq Export"
#define TEXT_HAIR_AND_FUR "Export Hair and Fur as curves"
#define TEXT_GENERAL_CURVES "Export general curves"
#define TEXT_RADIUS "Curve radius multiplier"
#define TEXT_CAMERAS "Export Cameras"
#define TEXT_PHOTOMETRIC_LIGHTS "Export photometric lights"
#define TEXT_BONES "Export bones"
#define TEXT_TRANSFORM_ANIMATIONS "Export transform animations"
#define TEXT_CAMERA_ANIMATIONS "Export camera animations"
#define TEXT_LAYERS "Export Layers"
#define TEXT_DEFORMABLE "Export Deformable Geometry"
