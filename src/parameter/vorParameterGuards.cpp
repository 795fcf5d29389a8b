//===- vorParameterGuards.cpp - Scoped process-wide switches --------------===//

#include "vorparameter/parameter/vorParameterGuards.h"

namespace {

int g_block_callbacks = 0;
int g_no_lock = 0;
int g_no_ref_expand = 0;
int g_from_gui = 0;

} // namespace

vorBlockParUpdateCallbacks::vorBlockParUpdateCallbacks() {
    ++g_block_callbacks;
}
vorBlockParUpdateCallbacks::~vorBlockParUpdateCallbacks() {
    --g_block_callbacks;
}
bool vorBlockParUpdateCallbacks::block_parameter_update_callbacks() {
    return g_block_callbacks > 0;
}

vorParameterNoLock::vorParameterNoLock() {
    ++g_no_lock;
}
vorParameterNoLock::~vorParameterNoLock() {
    --g_no_lock;
}
bool vorParameterNoLock::no_lock() {
    return g_no_lock > 0;
}

vorParameterNoRefExpand::vorParameterNoRefExpand() {
    ++g_no_ref_expand;
}
vorParameterNoRefExpand::~vorParameterNoRefExpand() {
    --g_no_ref_expand;
}
bool vorParameterNoRefExpand::expand() {
    return g_no_ref_expand == 0;
}

vorParameterSetFromGui::vorParameterSetFromGui() {
    ++g_from_gui;
}
vorParameterSetFromGui::~vorParameterSetFromGui() {
    --g_from_gui;
}
bool vorParameterSetFromGui::from_gui() {
    return g_from_gui > 0;
}
