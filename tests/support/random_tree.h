// Random parameter trees for the tests that save trees and read them back.
#ifndef VORPARAMETER_TESTS_SUPPORT_RANDOM_TREE_H
#define VORPARAMETER_TESTS_SUPPORT_RANDOM_TREE_H

#include "prelude.h"

#include <random>

/// Builds random trees of every kind the saved form can carry: bare strings,
/// defined scalars, references, lists, vectors and shared lists, arrays with
/// empty slots, nested maps; texts with quotes, backslashes, line breaks,
/// interpolations and non-ASCII letters.
class TreeMaker {
public:
    explicit TreeMaker(unsigned seed)
        : m_random(seed) {}

    void fill(vorParameter& map, int depth) {
        const int members = pick(0, 8);
        for (int i = 0; i < members; ++i) {
            const utString name = "m" + std::to_string(i);
            map.add(name, make_member(depth));
        }
    }

private:
    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_random); }

    vorParameterPtr defined(vorParameterPtr par) {
        par->set_defined_from_file(true);
        if (pick(0, 1))
            par->set_desc(text_value());
        return par;
    }

    /// Text with the characters the format escapes, and an interpolation.
    utString text_value() {
        static const char* const pieces[] = {
            "a", "\"", "\\", " ", "x y", "${1+1}", "\n", "\xc3\xa9\xe2\x86\x92", "}"};
        utString text;
        for (int n = pick(0, 4); n > 0; --n)
            text += pieces[pick(0, 7)]; // never "}" alone: it would read as punctuation
        return text;
    }

    utString number_text() {
        static const char* const numbers[] = {"0", "1", "-2.5", "1e-3", "42", "3*4", "pi"};
        return numbers[pick(0, 6)];
    }

    vorParameterPtr numeric() {
        static const vorParameterSubType subtypes[] = {SUB_REAL, SUB_INT, SUB_BOOL, SUB_ANGLE};
        const vorParameterSubType subtype = subtypes[pick(0, 3)];
        const vorDimensions dimensions = subtype == SUB_REAL
                                             ? vorDimensions(pick(0, 1), pick(-2, 2), pick(-1, 1))
                                             : vorDimensions(0, 0, 0);
        vorParameterPtr par(new vorParameterNumeric(subtype, dimensions, 0.0));
        par->set_string(number_text());
        return par;
    }

    vorParameterPtr scalar() {
        switch (pick(0, 3)) {
        case 0:
            return vorParameterPtr(new vorParameterString(text_value()));
        case 1: {
            vorParameterPtr choice(new vorParameterEnum());
            choice->set_string(pick(0, 1) ? "offset" : "raster");
            return choice;
        }
        default:
            return numeric();
        }
    }

    vorParameterPtr make_member(int depth) {
        const int kind = depth >= 3 ? pick(0, 2) : pick(0, 7);
        switch (kind) {
        case 0: // a bare string: comes back as a string
            return vorParameterPtr(new vorParameterString(text_value()));
        case 1:
            return defined(scalar());
        case 2:
            return defined(vorParameterPtr(new vorParameterRef(pick(0, 1) ? "m0" : "nowhere")));
        case 3: { // a plain array with gaps (inactive elements) and nested maps
            vorParameterPtr array(new vorParameterArray());
            for (int n = pick(0, 4); n > 0; --n) {
                vorParameterPtr element = vorParameterPtr(new vorParameterString(text_value()));
                if (pick(0, 3) == 0) {
                    element = map();
                    fill(*element, depth + 1);
                }
                array->add(vorParameterKey(), element);
            }
            if (array->size() > 1)
                array->operator[](vorParameterKey(0, utString()))->set_active("0");
            return array;
        }
        case 4: {
            vorParameterPtr list = defined(
                vorParameterSerializer::get_par_from_type(pick(0, 1) ? "LI" : "LR[L]", utString()));
            for (int n = pick(0, 3); n > 0; --n)
                list->add(vorParameterKey(), numeric());
            return list;
        }
        case 5: {
            vorParameterPtr vector =
                defined(vorParameterPtr(new vorParameterVector(pick(1, 3), real(0.0, DIM_LENGTH))));
            vector->set_string("{1;2;3}");
            return vector;
        }
        case 6: {
            vorParameterPtr shared = defined(vorParameterPtr(
                new vorParameterSharedList(vorParameterPtr(new vorParameterString()))));
            shared->add(vorParameterKey(), vorParameterPtr(new vorParameterString(text_value())));
            return shared;
        }
        default: {
            vorParameterPtr map(new vorParameterMap());
            if (pick(0, 1))
                defined(map);
            fill(*map, depth + 1);
            return map;
        }
        }
    }

    std::mt19937 m_random;
};

#endif // VORPARAMETER_TESTS_SUPPORT_RANDOM_TREE_H
