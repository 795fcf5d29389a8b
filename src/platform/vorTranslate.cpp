//===- vorTranslate.cpp - Translation of user-visible messages ------------===//

#include "vorparameter/platform/vorTranslate.h"

namespace {

vorMessageTranslator g_translator = nullptr;

} // namespace

utString vortranslate(const utString& key) {
    return g_translator ? g_translator(key) : key;
}

vorMessageTranslator vorset_message_translator(vorMessageTranslator translator) {
    vorMessageTranslator previous = g_translator;
    g_translator = translator;
    return previous;
}
