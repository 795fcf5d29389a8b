//===- vorParameterGuards.h - Scoped process-wide switches ------*- C++ -*-===//
//
// Each guard raises a process-wide counter for its lifetime; the switch is on
// while any guard of its kind is alive. They are meant for the host's one
// thread (the counters are not locked).
//
//   vorBlockParUpdateCallbacks - no on-modify function is called
//   vorParameterNoLock         - is_locked() is false everywhere
//   vorParameterNoRefExpand    - the XML export does not expand references
//   vorParameterSetFromGui     - changes come from the user interface
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PARAMETER_VORPARAMETERGUARDS_H
#define VORPARAMETER_PARAMETER_VORPARAMETERGUARDS_H

#include "vorparameter/platform/vorExport.h"

class VOR_API vorBlockParUpdateCallbacks {
public:
    vorBlockParUpdateCallbacks();
    ~vorBlockParUpdateCallbacks();
    vorBlockParUpdateCallbacks(const vorBlockParUpdateCallbacks&) = delete;
    vorBlockParUpdateCallbacks& operator=(const vorBlockParUpdateCallbacks&) = delete;
    static bool block_parameter_update_callbacks();
};

class VOR_API vorParameterNoLock {
public:
    vorParameterNoLock();
    ~vorParameterNoLock();
    vorParameterNoLock(const vorParameterNoLock&) = delete;
    vorParameterNoLock& operator=(const vorParameterNoLock&) = delete;
    static bool no_lock();
};

class VOR_API vorParameterNoRefExpand {
public:
    vorParameterNoRefExpand();
    ~vorParameterNoRefExpand();
    vorParameterNoRefExpand(const vorParameterNoRefExpand&) = delete;
    vorParameterNoRefExpand& operator=(const vorParameterNoRefExpand&) = delete;
    /// True while no guard of this kind is alive.
    static bool expand();
};

class VOR_API vorParameterSetFromGui {
public:
    vorParameterSetFromGui();
    ~vorParameterSetFromGui();
    vorParameterSetFromGui(const vorParameterSetFromGui&) = delete;
    vorParameterSetFromGui& operator=(const vorParameterSetFromGui&) = delete;
    static bool from_gui();
};

#endif // VORPARAMETER_PARAMETER_VORPARAMETERGUARDS_H
