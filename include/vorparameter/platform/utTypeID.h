//===- utTypeID.h - Class identity for checked down-casts -------*- C++ -*-===//
//
// Every class of the library has a utTypeID naming it and its base. A class
// declares its identity with UT_DECLARE_TYPE in its body and defines it with
// UT_DEFINE_TYPE in its source file; then
//
//   Class::ut_static_type()        the identity of Class
//   obj.ut_dynamic_type()          the identity of the object's own class
//   obj.ut_is_kind_of(id)          true for the object's class and its bases
//   Class::ut_dynamic_cast(ptr)    ptr as a Class*, or null (null in, null out)
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_UTTYPEID_H
#define VORPARAMETER_PLATFORM_UTTYPEID_H

#include "vorparameter/platform/vorExport.h"

#include <type_traits>

class VOR_API utTypeID {
public:
    constexpr utTypeID(const char* name, const utTypeID* base)
        : m_name(name)
        , m_base(base) {}
    utTypeID(const utTypeID&) = delete;
    utTypeID& operator=(const utTypeID&) = delete;

    const char* name() const { return m_name; }
    const utTypeID* base() const { return m_base; }

    /// True when this is `other` or derives from it.
    bool is_kind_of(const utTypeID& other) const {
        for (const utTypeID* t = this; t; t = t->m_base)
            if (t == &other)
                return true;
        return false;
    }

private:
    const char* m_name;
    const utTypeID* m_base;
};

/// Checked down-cast through the class identities.
template <class Target, class Source>
Target* ut_cast(Source* object) {
    using Class = std::remove_cv_t<Target>;
    return object && object->ut_is_kind_of(Class::ut_static_type()) ? static_cast<Target*>(object)
                                                                    : nullptr;
}

/// Declares the identity of `Class`, whose hierarchy is rooted at `Root`.
#define UT_DECLARE_TYPE(Class, Root)                                                               \
public:                                                                                            \
    static const utTypeID& ut_static_type();                                                       \
    const utTypeID& ut_dynamic_type() const override {                                             \
        return ut_static_type();                                                                   \
    }                                                                                              \
    static Class* ut_dynamic_cast(Root* object) {                                                  \
        return ut_cast<Class>(object);                                                             \
    }                                                                                              \
    static const Class* ut_dynamic_cast(const Root* object) {                                      \
        return ut_cast<const Class>(object);                                                       \
    }

/// Defines the identity of `Class` as derived from `Base`.
#define UT_DEFINE_TYPE(Class, Base)                                                                \
    const utTypeID& Class::ut_static_type() {                                                      \
        static const utTypeID id(#Class, &Base::ut_static_type());                                 \
        return id;                                                                                 \
    }

#endif // VORPARAMETER_PLATFORM_UTTYPEID_H
