//===- vorLibRegistry.cpp - The functions of every library object ---------===//
//
// The names that the first library object registers, in the order of the
// table. The mathematical functions, "compare" and "state_active" register
// themselves when the library is loaded (vorLibMathFunctions.cpp,
// vorLibStateActive.cpp).
//
//===----------------------------------------------------------------------===//

#include "vorparameter/library/vorParameterLib.h"

#include "library/vorLibSupport.h"

namespace {

struct Entry {
    const char* name;
    vorParameterLibFn fn;
    const char* desc;
};

// The descriptions are shown to users as they stand.
const Entry first_group[] = {
    {"int", &vorParameterLib::to_int, "Convert to integer value."},
    {"real", &vorParameterLib::to_real, "Convert to real value."},
    {"bool", &vorParameterLib::to_bool, "Convert to boolean value."},
    {"string", &vorParameterLib::to_string, "Convert to string."},
    {"sum", &vorParameterLib::sum, "Adds a list of numbers."},
    {"max", &vorParameterLib::max, "Find the largest value in a list of numbers."},
    {"min", &vorParameterLib::min, "Find the smallest value in a list of numbers."},
    {"mean", &vorParameterLib::mean, "Calculates the mean (average) value of a list of numbers."},
    {"select", &vorParameterLib::select,
     "If the value of the first parameter is non zero returns the second parameter, otherwise the "
     "third parameter."},
    {"if", &vorParameterLib::select,
     "If the value of the first parameter is non zero returns the second parameter, otherwise the "
     "third parameter."},
    {"active", &vorParameterLib::active, "Returns true if the parameter is active."},
    {"evaluate", &vorParameterLib::eval, "Returns result of evaluating string argument."},
    {"size", &vorParameterLib::size, "Returns the number of items that the parameter has."},
    {"locked", &vorParameterLib::locked, "Returns true if the parameter is locked."},
    {"error", &vorParameterLibFunctions::is_error,
     "Returns true if the given parameter is an error"},
    {"round", &vorParameterLib::round, "Round value to the specified number of decimal places."},
    {"convert", &vorParameterLib::convert, "Convert value to specified units."},
    {"translate", &vorParameterLib::translate, "Translate value to local language if possible."},
    {"desc", &vorParameterLib::desc, "Get description of parameter."},
    {"get_func_args", &vorParameterLib::get_func_args, "Get function arguments as an array."},
    {"to_xml", &vorParameterLibFunctions::to_xml, "Outputs the given parameter as xml string"},
    {"unit", &vorParameterLib::unit, "Get the unit vector of the vector."},
    {"angle", &vorParameterLib::angle, "Get unsigned angle between two vectors."},
    {"apparent_angle", &vorParameterLib::apparent_angle,
     "Given a reference vector, get signed angle between two vectors."},
    {"normal", &vorParameterLib::normal_of_vectors,
     "Get the normal of the plane containing the two vectors."},
    {"parallel", &vorParameterLib::parallel, "Returns true if vectors are (anti)parallel."},
    {"set_vector", &vorParameterLib::set_vector, "Set the vector."},
    {"azimuth", &vorParameterLibFunctions::azimuth, "Get Azimuth from vector"},
    {"elevation", &vorParameterLibFunctions::elevation, "Get Elevation from vector"},
    {"set_point", &vorParameterLib::set_point, "Set the point."},
    {"distance", &vorParameterLibFunctions::distance,
     "distance(pt1, pt2) : Returns the distance between two 3d points"},
    {"length", &vorParameterLib::length, "Get length of string or vector."},
    {"slice", &vorParameterLib::slice, "Slice string or vector."},
    {"position", &vorParameterLib::position,
     "position(str, target[,start]) : Get position of 'target' in 'str'"},
    {"replace", &vorParameterLib::replace,
     "position(str, oldsubstr,newsubstr) : Replace all occurrences of oldsubstr with newsubstr."},
    {"ucase", &vorParameterLib::ucase, "ucase(str) : Returns the uppercase version of the string."},
    {"lcase", &vorParameterLib::lcase, "lcase(str) : Returns the lowercase version of the string."},
    {"substring", &vorParameterLib::substring,
     "substring(str, start, length) : Returns the substring of length characters from start."},
    {"trim", &vorParameterLib::trim, "ltrim(str) : Removes leading and trailing spaces from str."},
    {"ltrim", &vorParameterLib::ltrim,
     "ltrim(str) : Removes leading spaces from the start of str."},
    {"rtrim", &vorParameterLib::rtrim, "rtrim(str) : Removes trailing spaces from the end of str."},
    {"tokens", &vorParameterLib::tokens, "tokens(str) : Returns a list of delimited tokens str."},
    {"sanitize", &vorParameterLibFunctions::sanitize,
     "sanitize(string) : Returns sanitized version of string."},
    {"strip_new_lines", &vorParameterLibFunctions::strip_new_lines,
     "strip_new_lines(string) : Returns a version of the string with carriage returns removed."},
    {"add_first", &vorParameterLib::add_first,
     "add_first(list, item) : Add item into start of list."},
    {"add_last", &vorParameterLib::add_last, "add_last(list, item) : Add item onto end of list."},
    {"remove_first", &vorParameterLib::remove_first,
     "remove_first(list) : Removes and returns first item of list."},
    {"remove_last", &vorParameterLib::remove_last,
     "remove_last(list) : Removes and returns last item of list."},
    {"remove", &vorParameterLib::remove,
     "remove(list, value) : If value is in list, removes first instance of value, returning true; "
     "else, returns false."},
    {"remove_duplicates", &vorParameterLib::remove_duplicates,
     "remove_duplicates(list) : Removes all duplicate items from the list, returning the number of "
     "items removed."},
    {"is_empty", &vorParameterLib::is_empty,
     "is_empty(list|array) : If the list contains no items, returns 1; else, returns 0"},
    {"member", &vorParameterLib::member,
     "member(list|array, value) : If value is in list, returns 1; else, returns 0."},
    {"set_union", &vorParameterLib::set_union,
     "set_union(list1|array1, list2|array2) : Returns the set of items in list1 and/or list2."},
    {"subtract", &vorParameterLib::subtract,
     "subtract(list1|array1, list2|array2) : Returns the set of items unique to list1."},
    {"intersection", &vorParameterLib::intersection,
     "intersection(list1|array1, list2|array2) : Returns the set of items that are in both lists."},
    {"values", &vorParameterLib::values, "values(enum) : returns a list of the values in an enum"},
    {"fill", &vorParameterLibFunctions::fill,
     "fill(size, value) : returns a list of size elements with specified value"},
    {"basename", &vorParameterLib::basename, "Strip directory from filepath strings."},
    {"dirname", &vorParameterLib::dirname, "Strip non-directory suffix from filepath strings."},
    {"get_typename", &vorParameterLib::get_typename,
     "get_typename(obj) : Get an object's typename."},
    {"make_sequence", &vorParameterLibFunctions::make_sequence,
     "make_sequence(INT start_value[, INT increment[, INT padding]]) : Create a new sequence "
     "object."},
    {"next_in_sequence", &vorParameterLibFunctions::next_in_sequence,
     "next_in_sequence(OBJECT sequence) : Increment the sequence object."},
    {"home", &vorParameterLibFunctions::home,
     "home() : Return the pathname defined in the windows HOME variable."},
    {"time", &vorParameterLibFunctions::time,
     "time() : Return the system calendar time in seconds."},
    {"local_time", &vorParameterLibFunctions::local_time,
     "local_time(int) : Given the system calendar time, return a time object in the system's local "
     "time zone."},
    {"utc_time", &vorParameterLibFunctions::utc_time,
     "utc_time(int) : Given the system calendar time, return a time object in Coordinated "
     "Universal Time."},
    {"time_to_string", &vorParameterLibFunctions::time_to_string,
     "Returns a formatted time string hh:mm:ss from a given int time()"},
    {"extract", &vorParameterLibFunctions::extract,
     "extract(list, par_name) : Given a list of maps extract a list containing the named element "
     "from each list item."},
    {"filter", &vorParameterLibFunctions::filter,
     "filter(list, expression) : Given a list of maps extract a list that matches the given "
     "expression."},
    {"join", &vorParameterLibFunctions::join,
     "joint(list, string delim) : Returns a string representing the list items delimited by delim"},
    {"pwd", &vorParameterLibFunctions::pwd,
     "pwd() : Returns the path of the current working directory."},
    {"list_files", &vorParameterLibFunctions::ls,
     "file_list([path]) : Returns a list of the files and directories in path. If path is not "
     "supplied use the current working directory."},
    {"file_exists", &vorParameterLibFunctions::file_exists,
     "file_list(filepath) : Returns whether the given file exists or not."},
    {"dir_exists", &vorParameterLibFunctions::dir_exists,
     "dir_exists(dirpath) : Returns whether the given directory exists or not."},
    {"sort", &vorParameterLibFunctions::sort,
     "sort(list, expression) : Return the list sorted by expression."},
    {"reverse", &vorParameterLibFunctions::reverse,
     "reverse(list) : Return a list with the elements of the input list reversed."},
    {"port_machining", &vorParameterLibFunctions::port_machining,
     "Return true if it is port machining"},
    {"dict_set_value", &vorParameterLibFunctions::dict_set_value,
     "dict_set_value(dict, key_string, value_string) : Sets a key/value in a dictionary - create "
     "if missing."},
    {"map_key", &vorParameterLibFunctions::map_key,
     "map_key(key_string) : Transforms key_string to a valid map key"},
};

} // namespace

void vorParameterLib::init_table() {
    // Once per process: a host's later replacement of an entry must survive
    // the construction of further library objects.
    static const bool registered = [] {
        for (const Entry& e : first_group)
            add_entry(e.name, e.fn, e.desc);
        return true;
    }();
    (void)registered;
}
