//===- vorLibXmlFunction.cpp - The function "to_xml" ----------------------===//
//
// to_xml(p): the XML element of the parameter p with everything below it, as
// a string (see vorParameterXml.h and docs/xml.md).
//
//===----------------------------------------------------------------------===//

#include "library/vorLibSupport.h"

#include "vorparameter/library/vorParameterArgDecoder.h"
#include "vorparameter/persistence/vorParameterXml.h"

vorParameterPtr vorParameterLibFunctions::to_xml(const vorParameterPtr& args) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() != 1)
        return vorLibSupport::invalid_arguments();
    // An error value is what a misspelt name gives: rendering it would hide
    // the mistake in a well-formed answer.
    const vorParameterPtr arg = decoder.next_argument();
    if (arg->is_error())
        return vorLibSupport::invalid_arguments();
    const std::optional<utString> xml = ::to_xml(*arg);
    if (!xml)
        return vorParameterLib::error(ERR_DOMAIN);
    return vorLibSupport::make_string(*xml);
}
