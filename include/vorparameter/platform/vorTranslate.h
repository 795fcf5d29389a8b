//===- vorTranslate.h - Translation of user-visible messages ----*- C++ -*-===//
//
// Error messages and enumeration titles pass through one host-settable
// function before they are shown. The library's own texts are the keys; the
// default translator returns them unchanged.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_VORTRANSLATE_H
#define VORPARAMETER_PLATFORM_VORTRANSLATE_H

#include "vorparameter/platform/utString.h"
#include "vorparameter/platform/vorExport.h"

using vorMessageTranslator = utString (*)(const utString& key);

/// Translates one message key with the installed translator.
VOR_API utString vortranslate(const utString& key);
/// Installs `translator` (null restores the identity) and returns the previous one.
VOR_API vorMessageTranslator vorset_message_translator(vorMessageTranslator translator);

#endif // VORPARAMETER_PLATFORM_VORTRANSLATE_H
