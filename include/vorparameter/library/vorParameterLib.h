//===- vorParameterLib.h - The standard function library --------*- C++ -*-===//
//
// A process-wide table maps function names to native operations with a
// one-line description. Expressions reach it through vorParameterLib
// parameters: indexing the library by a name ("sqrt") gives a parameter that
// stands for one function, and calling that parameter with "(" runs it on the
// argument array. Names are matched in lower case, so a name registered with
// capitals cannot be reached.
//
// Every operation checks its own arguments (with vorParameterArgDecoder) and
// answers an error value, as a rule ERR_INVALID_ARGUMENTS, when they do not
// fit. The behaviour of each function is described in docs/functions.md.
//
// Settings for the whole process: the angle unit of the trigonometric
// functions (degrees by default), the scope of the "evaluate" function and
// whether the host machines a port ("port_machining").
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_LIBRARY_VORPARAMETERLIB_H
#define VORPARAMETER_LIBRARY_VORPARAMETERLIB_H

#include "vorparameter/library/vorParameterFunction.h"
#include "vorparameter/platform/giAngle.h"

/// A native library operation: the argument array in, the result out.
using vorParameterLibFn = vorParameterPtr (*)(const vorParameterPtr& args);

struct vorParameterLibEntry {
    vorParameterLibFn fn = nullptr;
    utString desc;
};

class VOR_API vorParameterLib : public vorParameterFunction {
    UT_DECLARE_TYPE(vorParameterLib, vorParameter)
public:
    /// The whole library; fills the table's first group.
    vorParameterLib();
    /// One standard function, `name`, of `library`.
    vorParameterLib(const vorParameterLib& library, const utString& name);

    vorParameter* create_new() const override { return new vorParameterLib(*this); }
    /// SUB_LIBRARY for the whole library, SUB_LIBRARY_PART for one function.
    vorParameterSubType subtype() const override;
    /// "(STANDARD FUNCTION LIBRARY)" or "(STANDARD FUNCTION) " and the name,
    /// then a line feed.
    utString print(int indent) const override;
    /// The number of table entries for the whole library; 0 for one function.
    int size() const override;
    /// "_keys" lists every name; a registered name (in any case) gives a new
    /// object for its function, whose description is the function's.
    vorParameterPtr operator[](const vorParameterKey& key) const override;
    vorParameterPtr operator[](const vorParameterKey& key) override;
    /// "(" runs the function; ERR_INVALID_NAME for the whole library.
    vorParameterPtr operate_binary(const utString& op, const vorParameterPtr& args) const override;

    /// Registers (or replaces) `name`; returns the number of entries.
    static int add_entry(const utString& name, vorParameterLibFn fn, const utString& desc);
    /// The entry of exactly `name`, or null. Valid until the next add_entry.
    static const vorParameterLibEntry* find_entry(const utString& name);
    /// Registers the functions that are not registered at load time. Runs once
    /// per process (from the first default construction); later calls do
    /// nothing, so an entry that the host replaced stays replaced.
    static void init_table();
    /// The shared error value of `kind`; how every operation reports failure.
    static vorParameterPtr error(unsigned kind);
    /// The unit of the angles that functions take and give; read at each call.
    static void set_angle_unit(giAngleType unit);
    static giAngleType get_angle_unit();
    /// Where "evaluate" resolves names when the call names no scope; none
    /// (an empty handle) at first.
    static void set_eval_scope(vorParameterPtr scope);
    static const vorParameterPtr& get_eval_scope();
    /// Whether the host is machining a port, as the function "port_machining"
    /// tells expressions; false until the host says otherwise.
    static void set_port_machining(bool on);
    static bool get_port_machining();

    // Conversion and numeric.
    static vorParameterPtr to_int(const vorParameterPtr& args);
    static vorParameterPtr to_real(const vorParameterPtr& args);
    static vorParameterPtr to_bool(const vorParameterPtr& args);
    static vorParameterPtr to_string(const vorParameterPtr& args);
    static vorParameterPtr sum(const vorParameterPtr& args);
    static vorParameterPtr max(const vorParameterPtr& args);
    static vorParameterPtr min(const vorParameterPtr& args);
    static vorParameterPtr mean(const vorParameterPtr& args);
    static vorParameterPtr select(const vorParameterPtr& args);
    static vorParameterPtr active(const vorParameterPtr& args);
    static vorParameterPtr eval(const vorParameterPtr& args);
    static vorParameterPtr size(const vorParameterPtr& args);
    static vorParameterPtr locked(const vorParameterPtr& args);
    static vorParameterPtr round(const vorParameterPtr& args);
    static vorParameterPtr convert(const vorParameterPtr& args);
    static vorParameterPtr translate(const vorParameterPtr& args);
    static vorParameterPtr desc(const vorParameterPtr& args);
    static vorParameterPtr get_func_args(const vorParameterPtr& args);

    // Vector and geometry.
    static vorParameterPtr unit(const vorParameterPtr& args);
    static vorParameterPtr angle(const vorParameterPtr& args);
    static vorParameterPtr apparent_angle(const vorParameterPtr& args);
    static vorParameterPtr normal_of_vectors(const vorParameterPtr& args);
    static vorParameterPtr parallel(const vorParameterPtr& args);
    static vorParameterPtr set_vector(const vorParameterPtr& args);
    static vorParameterPtr set_point(const vorParameterPtr& args);

    // String and path.
    static vorParameterPtr length(const vorParameterPtr& args);
    static vorParameterPtr slice(const vorParameterPtr& args);
    static vorParameterPtr position(const vorParameterPtr& args);
    static vorParameterPtr replace(const vorParameterPtr& args);
    static vorParameterPtr ucase(const vorParameterPtr& args);
    static vorParameterPtr lcase(const vorParameterPtr& args);
    static vorParameterPtr substring(const vorParameterPtr& args);
    static vorParameterPtr trim(const vorParameterPtr& args);
    static vorParameterPtr ltrim(const vorParameterPtr& args);
    static vorParameterPtr rtrim(const vorParameterPtr& args);
    static vorParameterPtr tokens(const vorParameterPtr& args);
    static vorParameterPtr basename(const vorParameterPtr& args);
    static vorParameterPtr dirname(const vorParameterPtr& args);

    // List, set and dictionary. "remove" and "get_typename" stand beside the
    // parameter operations of the same names, which stay visible.
    using vorParameterFunction::get_typename;
    using vorParameterFunction::remove;
    static vorParameterPtr add_first(const vorParameterPtr& args);
    static vorParameterPtr add_last(const vorParameterPtr& args);
    static vorParameterPtr remove_first(const vorParameterPtr& args);
    static vorParameterPtr remove_last(const vorParameterPtr& args);
    static vorParameterPtr remove(const vorParameterPtr& args);
    static vorParameterPtr remove_duplicates(const vorParameterPtr& args);
    static vorParameterPtr is_empty(const vorParameterPtr& args);
    static vorParameterPtr member(const vorParameterPtr& args);
    static vorParameterPtr set_union(const vorParameterPtr& args);
    static vorParameterPtr subtract(const vorParameterPtr& args);
    static vorParameterPtr intersection(const vorParameterPtr& args);
    static vorParameterPtr values(const vorParameterPtr& args);
    static vorParameterPtr get_typename(const vorParameterPtr& args);

    /// The name of the function this object stands for; empty for the library.
    const utString& name() const { return body(); }

private:
    vorParameterLib(const vorParameterLib& other) = default;
    vorParameterPtr lookup(const vorParameterKey& key) const;
};

/// The functions that are no members of vorParameterLib: the mathematical
/// functions and "compare", which register themselves when the library is
/// loaded, and further functions of every family.
namespace vorParameterLibFunctions {
VOR_API vorParameterPtr sin(const vorParameterPtr& args);
VOR_API vorParameterPtr cos(const vorParameterPtr& args);
VOR_API vorParameterPtr tan(const vorParameterPtr& args);
VOR_API vorParameterPtr asin(const vorParameterPtr& args);
VOR_API vorParameterPtr acos(const vorParameterPtr& args);
VOR_API vorParameterPtr atan(const vorParameterPtr& args);
VOR_API vorParameterPtr atan2(const vorParameterPtr& args);
VOR_API vorParameterPtr exp(const vorParameterPtr& args);
VOR_API vorParameterPtr ln(const vorParameterPtr& args);
VOR_API vorParameterPtr log(const vorParameterPtr& args);
VOR_API vorParameterPtr sqrt(const vorParameterPtr& args);
VOR_API vorParameterPtr abs(const vorParameterPtr& args);
VOR_API vorParameterPtr sign(const vorParameterPtr& args);
VOR_API vorParameterPtr compare(const vorParameterPtr& args);
VOR_API vorParameterPtr is_error(const vorParameterPtr& args);
VOR_API vorParameterPtr azimuth(const vorParameterPtr& args);
VOR_API vorParameterPtr elevation(const vorParameterPtr& args);
VOR_API vorParameterPtr distance(const vorParameterPtr& args);
VOR_API vorParameterPtr sanitize(const vorParameterPtr& args);
VOR_API vorParameterPtr strip_new_lines(const vorParameterPtr& args);
VOR_API vorParameterPtr join(const vorParameterPtr& args);
VOR_API vorParameterPtr map_key(const vorParameterPtr& args);
VOR_API vorParameterPtr fill(const vorParameterPtr& args);
VOR_API vorParameterPtr extract(const vorParameterPtr& args);
VOR_API vorParameterPtr filter(const vorParameterPtr& args);
VOR_API vorParameterPtr sort(const vorParameterPtr& args);
VOR_API vorParameterPtr reverse(const vorParameterPtr& args);
VOR_API vorParameterPtr dict_set_value(const vorParameterPtr& args);

/// The XML of the one argument as a string; docs/xml.md.
VOR_API vorParameterPtr to_xml(const vorParameterPtr& args);
/// Whether a state of an enumeration is active; docs/functions.md.
VOR_API vorParameterPtr state_active(const vorParameterPtr& args);

// System, time and sequence (docs/functions-system.md). Their limits:
// list_files reads at most 2^17 entries; calendar times run from year 1 to
// 9999; sequences count within the range of int, with at most 64 digits of
// padding. Beyond each, the answer is ERR_DOMAIN.
VOR_API vorParameterPtr home(const vorParameterPtr& args);
VOR_API vorParameterPtr pwd(const vorParameterPtr& args);
/// "list_files": the sorted names in a directory.
VOR_API vorParameterPtr ls(const vorParameterPtr& args);
VOR_API vorParameterPtr file_exists(const vorParameterPtr& args);
VOR_API vorParameterPtr dir_exists(const vorParameterPtr& args);
VOR_API vorParameterPtr port_machining(const vorParameterPtr& args);
VOR_API vorParameterPtr time(const vorParameterPtr& args);
VOR_API vorParameterPtr local_time(const vorParameterPtr& args);
VOR_API vorParameterPtr utc_time(const vorParameterPtr& args);
VOR_API vorParameterPtr time_to_string(const vorParameterPtr& args);
VOR_API vorParameterPtr make_sequence(const vorParameterPtr& args);
/// Changes its sequence argument in place.
VOR_API vorParameterPtr next_in_sequence(const vorParameterPtr& args);
} // namespace vorParameterLibFunctions

#endif // VORPARAMETER_LIBRARY_VORPARAMETERLIB_H
