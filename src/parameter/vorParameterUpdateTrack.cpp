//===- vorParameterUpdateTrack.cpp - Which parameters changed -------------===//

#include "vorparameter/parameter/vorParameterUpdateTrack.h"

namespace {

int g_trackers = 0;

coSet<const vorParameter*>& changed() {
    static coSet<const vorParameter*> set;
    return set;
}

} // namespace

vorParameterUpdateTrack::vorParameterUpdateTrack() {
    ++g_trackers;
}

vorParameterUpdateTrack::~vorParameterUpdateTrack() {
    if (--g_trackers == 0)
        reset();
}

void vorParameterUpdateTrack::track_parameter(const vorParameter* p) {
    if (in_use())
        changed().insert(p);
}

void vorParameterUpdateTrack::untrack_parameter(const vorParameter* p) {
    if (!changed().empty())
        changed().erase(p);
}

bool vorParameterUpdateTrack::in_use() {
    return g_trackers > 0;
}

void vorParameterUpdateTrack::reset() {
    changed().clear();
}

std::vector<const vorParameter*> vorParameterUpdateTrack::get_changed_params_list() const {
    return std::vector<const vorParameter*>(changed().begin(), changed().end());
}

int vorParameterUpdateTrack::get_list_size() const {
    return static_cast<int>(changed().size());
}

void vorParameterUpdateTrack::copy_list_into(coSet<const vorParameter*>& out) const {
    for (const vorParameter* p : changed())
        out.insert(p);
}
