//===- vorParameterUpdateTrack.h - Which parameters changed -----*- C++ -*-===//
//
// While at least one vorParameterUpdateTrack exists, every parameter whose
// value text changes is recorded in one process-wide set; a host creates a
// tracker around an operation and reads afterwards what it changed. A
// parameter that is destroyed leaves the set.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PARAMETER_VORPARAMETERUPDATETRACK_H
#define VORPARAMETER_PARAMETER_VORPARAMETERUPDATETRACK_H

#include "vorparameter/platform/coTable.h"
#include "vorparameter/platform/vorExport.h"

#include <vector>

class vorParameter;

class VOR_API vorParameterUpdateTrack {
public:
    vorParameterUpdateTrack();
    ~vorParameterUpdateTrack();
    vorParameterUpdateTrack(const vorParameterUpdateTrack&) = delete;
    vorParameterUpdateTrack& operator=(const vorParameterUpdateTrack&) = delete;

    static void track_parameter(const vorParameter* p);
    static void untrack_parameter(const vorParameter* p);
    static bool in_use();
    /// Forgets every recorded parameter.
    static void reset();

    /// The changed parameters, in the order they first changed.
    std::vector<const vorParameter*> get_changed_params_list() const;
    int get_list_size() const;
    void copy_list_into(coSet<const vorParameter*>& out) const;
    void cleanup_list() { reset(); }
};

#endif // VORPARAMETER_PARAMETER_VORPARAMETERUPDATETRACK_H
