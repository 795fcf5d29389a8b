//===- vorParameterTypes.h - Kinds of parameters ----------------*- C++ -*-===//
//
// The two numberings every parameter reports: its type (what kind of value it
// holds) and its subtype (one numbering across all classes, which also carries
// the ten kinds of error). The values are fixed: hosts store and compare them.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PARAMETER_VORPARAMETERTYPES_H
#define VORPARAMETER_PARAMETER_VORPARAMETERTYPES_H

class vorParameter;

enum vorParameterType {
    TYPE_ERROR = 0,    ///< an error value, or a reference with no referent
    TYPE_MAP = 1,      ///< maps and roots
    TYPE_ARRAY = 2,    ///< arrays, lists, shared lists, temporary arrays, vectors
    TYPE_STRING = 3,   ///< text
    TYPE_NUMERIC = 4,  ///< numbers with dimensions
    TYPE_ENUM = 5,     ///< enumerations
    TYPE_FUNCTION = 6, ///< user functions, the function library, member functions
    TYPE_DATA = 7      ///< opaque host data
};

/// The word for a type in text meant for people: "error", "map", "array",
/// "string", "number", "enum", "function" or "data".
inline const char* vorTypeWord(vorParameterType type) {
    switch (type) {
    case TYPE_ERROR:
        break;
    case TYPE_MAP:
        return "map";
    case TYPE_ARRAY:
        return "array";
    case TYPE_STRING:
        return "string";
    case TYPE_NUMERIC:
        return "number";
    case TYPE_ENUM:
        return "enum";
    case TYPE_FUNCTION:
        return "function";
    case TYPE_DATA:
        return "data";
    }
    return "error";
}

enum vorParameterSubType {
    ERR_UNKNOWN = 0,           ///< "Unknown error"; also what an empty handle becomes
    ERR_SYNTAX = 1,            ///< "Syntax error"
    ERR_EXPRESSION = 2,        ///< "Expression/Reference error"
    ERR_INVALID_NAME = 3,      ///< "Invalid name"
    ERR_DOMAIN = 4,            ///< "Domain error"
    ERR_DIVIDE_BY_ZERO = 5,    ///< "Divide by zero"
    ERR_DIMENSIONS = 6,        ///< "Incompatible dimensions"
    ERR_TYPE = 7,              ///< "Type error"
    ERR_INVALID_ARGUMENTS = 8, ///< "Invalid arguments"
    ERR_INVALID_DATA = 9,      ///< "Invalid data"
    SUB_MAP = 10,              ///< plain map
    SUB_ROOT = 11,             ///< root of a tree
    SUB_MAP_OTHER = 12,        ///< a map made with an explicit subtype of the host's
    SUB_VECTOR = 13,           ///< vectors and temporary arrays
    SUB_LIST = 14,
    SUB_ARRAY = 15,
    SUB_SHARED_LIST = 16,
    SUB_STRING = 17,
    SUB_DATA = 18,
    SUB_NUMBER = 19, ///< a number without a specific kind (literals)
    SUB_REAL = 20,
    SUB_INT = 21,
    SUB_BOOL = 22,
    SUB_ANGLE = 23,
    SUB_ENUM = 24,
    SUB_FUNCTION = 25,
    SUB_LIBRARY_PART = 26, ///< one function of the standard library
    SUB_LIBRARY = 27,      ///< the whole standard library
    SUB_MEMBER_FUNCTION = 28
};

/// How the host measures a real or angle value. Only the zero value, "no
/// mode", has a meaning inside the library; the others are the host's.
enum vorParameterMeasureMode {
    MEASURE_NONE = 0,
    MEASURE_ABSOLUTE = 1,
    MEASURE_RELATIVE = 2,
    MEASURE_INCREMENTAL = 3
};

/// How a parameter changes when its subtree is mirrored in a plane.
enum vorParameterMirrorMode {
    MIRROR_NONE = 0,            ///< left alone
    MIRROR_NEGATE = 1,          ///< v becomes -v
    MIRROR_ADD_HALF_TURN = 2,   ///< v + 180, kept within one turn
    MIRROR_SUB_HALF_TURN = 3,   ///< v - 180
    MIRROR_SUPPLEMENT = 4,      ///< v becomes 180 - v
    MIRROR_LEFT_RIGHT = 5,      ///< the texts "left" and "right" swap
    MIRROR_DIRECTION = 6,       ///< a direction vector is reflected
    MIRROR_END_POINT = 7,       ///< works with the member "End" of the parent
    MIRROR_ARBITRARY_NORMAL = 8 ///< becomes "arbitary" with a reflected "Normal"
};

using vorParameterOnModifyFn = void (*)(vorParameter*);
using vorParameterOnReadFn = void (*)(const vorParameter*);
using vorParameterMirrorModeFn = vorParameterMirrorMode (*)(const vorParameter*);

#endif // VORPARAMETER_PARAMETER_VORPARAMETERTYPES_H
