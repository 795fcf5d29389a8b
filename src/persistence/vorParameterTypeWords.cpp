//===- vorParameterTypeWords.cpp - The type words of defined members ------===//
//
// A defined member names the kind of parameter to create with a type word:
// one letter for most kinds, "R" followed by the dimension ("R[L/T]"), and
// for lists, shared lists and vectors the letter ("L", "H", "V" with the
// vector's size) followed by the word of the element type ("LI", "V3R[L]").
// Element words nest at most max_nesting deep, and a vector word asks for at
// most max_vector_elements (4096) elements in all (a "V" inside a "V" multiplies),
// so no word can make the reader build a huge or endless parameter.
//
//===----------------------------------------------------------------------===//

#include "vorparameter/persistence/vorParameterSerializer.h"

#include "vorparameter/containers/vorParameterEnum.h"
#include "vorparameter/containers/vorParameterList.h"
#include "vorparameter/containers/vorParameterSharedList.h"
#include "vorparameter/containers/vorParameterVector.h"
#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/library/vorParameterFunction.h"
#include "vorparameter/parameter/vorParameterData.h"
#include "vorparameter/parameter/vorParameterRef.h"

namespace {

/// The most elements the vectors of one type word may hold together.
constexpr long long max_vector_elements = 4096;

vorParameterPtr unusable() {
    return vorParameterError::create(ERR_TYPE);
}

bool usable(const vorParameterPtr& par) {
    return par->type() != TYPE_ERROR || par->is_ref();
}

vorParameterPtr numeric(vorParameterSubType subtype, const vorDimensions& dimensions) {
    return vorParameterPtr(new vorParameterNumeric(subtype, dimensions, 0.0));
}

/// The parameter of `word` read from position `at`; `budget` is how many
/// elements the vectors met so far still allow per element.
vorParameterPtr make_from_word(std::string_view word, int depth, long long budget) {
    if (word.empty() || depth > vorParameterSerializer::max_nesting)
        return unusable();
    const std::string_view rest = word.substr(1);
    switch (word[0]) {
    case '&':
        return vorParameterPtr(new vorParameterRef());
    case 'M':
        return vorParameterPtr(new vorParameterMap());
    case 'S':
        return vorParameterPtr(new vorParameterString());
    case 'U':
        return vorParameterPtr(new vorParameterData("unknown"));
    case 'E':
        return vorParameterPtr(new vorParameterEnum());
    case 'F':
        return vorParameterPtr(new vorParameterFunction());
    case 'I':
        return numeric(SUB_INT, vorDimensions(0, 0, 0));
    case 'B':
        return numeric(SUB_BOOL, vorDimensions(0, 0, 0));
    case 'A':
        return numeric(SUB_ANGLE, vorDimensions(0, 0, 0));
    case 'R':
        return numeric(SUB_REAL, vorDimensions(utString(rest)));
    case 'L':
    case 'H': {
        vorParameterPtr element = make_from_word(rest, depth + 1, budget);
        if (!usable(element))
            return unusable();
        if (word[0] == 'L')
            return vorParameterPtr(new vorParameterList(element));
        return vorParameterPtr(new vorParameterSharedList(element));
    }
    case 'V': {
        std::size_t digits = 0;
        long long count = 0;
        while (digits < rest.size() && rest[digits] >= '0' && rest[digits] <= '9') {
            count = count * 10 + (rest[digits] - '0');
            if (count > budget)
                return unusable();
            ++digits;
        }
        if (count == 0)
            return unusable();
        vorParameterPtr element = make_from_word(rest.substr(digits), depth + 1, budget / count);
        if (!usable(element))
            return unusable();
        return vorParameterPtr(new vorParameterVector(static_cast<int>(count), element));
    }
    default:
        return unusable();
    }
}

utString word_of(const vorParameter& par, bool follow_refs, int depth) {
    if (depth > vorParameterSerializer::max_nesting)
        return utString();
    if (par.is_ref()) {
        if (!follow_refs)
            return "&";
        return par.get_ref() == &par ? utString() : word_of(*par.get_ref(), follow_refs, depth + 1);
    }
    switch (par.subtype()) {
    case SUB_MAP:
    case SUB_MAP_OTHER:
        return "M";
    case SUB_STRING:
        return "S";
    case SUB_DATA:
        return "U";
    case SUB_ENUM:
        return "E";
    case SUB_FUNCTION:
        return "F";
    case SUB_INT:
        return "I";
    case SUB_BOOL:
        return "B";
    case SUB_ANGLE:
        return "A";
    case SUB_REAL: {
        const vorParameterNumeric* number = vorParameterNumeric::ut_dynamic_cast(&par);
        return number ? utString("R") + number->get_dim().get_string().view() : utString();
    }
    case SUB_LIST:
        if (const vorParameterList* list = vorParameterList::ut_dynamic_cast(&par))
            return "L" + word_of(list->get_element_type(), follow_refs, depth + 1);
        return utString();
    case SUB_SHARED_LIST:
        if (const vorParameterSharedList* list = vorParameterSharedList::ut_dynamic_cast(&par))
            return "H" + word_of(list->get_element_type(), follow_refs, depth + 1);
        return utString();
    case SUB_VECTOR: {
        const vorParameterVector* vector = vorParameterVector::ut_dynamic_cast(&par);
        if (!vector || vector->size() == 0 || vector->at(0).is_null())
            return utString();
        return utString("V") + std::to_string(vector->size()) +
               word_of(*vector->at(0), follow_refs, depth + 1).view();
    }
    default:
        return utString();
    }
}

} // namespace

utString vorParameterSerializer::get_type_from_par(const vorParameter& par) const {
    return word_of(par, m_follow_refs != 0, 0);
}

vorParameterPtr vorParameterSerializer::get_par_from_type(const utString& word,
                                                          const utString& desc) {
    vorParameterPtr par = make_from_word(word.view(), 0, max_vector_elements);
    if (!desc.empty() && usable(par))
        par->set_desc(desc);
    return par;
}
