//===- vorParameterEnumSynonyms.cpp - Old spellings of state names --------===//
//
// Data saved by older versions of the host names enumeration states in their
// old spelling. The table below maps each old name to the current one, so
// that such values still select the right state. It is fixed: hosts rely on
// every entry, including the ones that look odd. Two old names map to
// "finishing" ("drilling" and "semi" were merged into it), and the three
// "tube" names map to names beginning with "port_".
//
//===----------------------------------------------------------------------===//

#include "vorparameter/containers/vorParameterEnum.h"

#include <unordered_map>

namespace {

using SynonymTable = std::unordered_map<utString, utString>;

const SynonymTable& state_synonyms() {
    static const SynonymTable table = {
        {"alongcorner", "along_corner"},
        {"automaticcorner", "automatic_corner"},
        {"ballnosed", "ball_nosed"},
        {"bliskblade", "blisk_blade"},
        {"bliskhub", "blisk_hub"},
        {"comboundary", "com_boundary"},
        {"compattern", "com_pattern"},
        {"curveprojection", "curve_projection"},
        {"diag1", "diag_1"},
        {"diag2", "diag_2"},
        {"diag1z", "diag_1_z"},
        {"diag2z", "diag_2_z"},
        {"drilling", "finishing"},
        {"endmill", "end_mill"},
        {"everyz", "every_z"},
        {"fulldiameter", "full_diameter"},
        {"heli2cw", "heli_2_cw"},
        {"helicw", "heli_cw"},
        {"interconstz", "inter_constz"},
        {"lastz", "last_z"},
        {"leadlean", "lead_lean"},
        {"lineprojection", "line_projection"},
        {"multipencilcorner", "multi_pencil_corner"},
        {"offcentretiprad", "off_centre_tip_rad"},
        {"offset3d", "offset_3d"},
        {"offsetareaclear", "offset_area_clear"},
        {"offsetflat", "offset_flat"},
        {"opticonstz", "opti_constz"},
        {"parametricoffset", "parametric_offset"},
        {"pencilcorner", "pencil_corner"},
        {"planeprojection", "plane_projection"},
        {"pointprojection", "point_projection"},
        {"profileareaclear", "profile_area_clear"},
        {"profilecw", "profile_cw"},
        {"rasterareaclear", "raster_area_clear"},
        {"rasterflat", "raster_flat"},
        {"semi", "finishing"},
        {"stitchcorner", "stitch_corner"},
        {"surfacemachine", "surface_machine"},
        {"surfacenormal_arc", "surface_normal_arc"},
        {"surfaceproj", "surface_proj"},
        {"tap2cw", "tap_2_cw"},
        {"taperspherical", "taper_spherical"},
        {"tapertipped", "taper_tipped"},
        {"tippeddisc", "tipped_disc"},
        {"tipradiused", "tip_radiused"},
        {"toolaxis", "tool_axis"},
        {"tubeclear", "port_area_clear"},
        {"tubeplunge", "port_plunge"},
        {"tubespiral", "port_spiral"},
        {"wireframeswarf", "wireframe_swarf"},
        {"zheights", "z_heights"},
    };
    return table;
}

} // namespace

utString vorParameterEnum::lookup_state_synonym(const utString& name) {
    const SynonymTable& table = state_synonyms();
    auto found = table.find(name);
    return found == table.end() ? name : found->second;
}
