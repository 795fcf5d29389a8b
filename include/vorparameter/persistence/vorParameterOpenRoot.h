//===- vorParameterOpenRoot.h - Opening any saved file ----------*- C++ -*-===//
//
// A file saved by a host names the host's root type and holds bare values
// for the parameters the host's classes create. Without those classes such a
// file would load into nothing. vorParameterOpenRoot opens it anyway: it takes
// the type and version the file's header gives, and its loader creates what
// the tree lacks where the file puts it:
//
//   a "{...}" block          a map,
//   a "(...)" block          an array,
//   a bare value             a string holding the text as it stands,
//   a defined member         the parameter its type word makes,
//   an empty array slot      an inactive empty string (saved as an empty
//                            slot again).
//
// Lock ids survive too: a parameter the file gives a lock id is locked, and
// reports that id, once the load is over. Saving such a tree again gives back
// the body it was loaded from (bar the header's time and any trailing empty
// array slot, which the format loses).
// Expressions evaluated under it reach the standard functions.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PERSISTENCE_VORPARAMETEROPENROOT_H
#define VORPARAMETER_PERSISTENCE_VORPARAMETEROPENROOT_H

#include "vorparameter/library/vorParameterLibRoot.h"
#include "vorparameter/persistence/vorParameterSerializer.h"

#include <iosfwd>
#include <memory>
#include <unordered_map>

class VOR_API vorParameterOpenRoot : public vorParameterLibRoot {
    UT_DECLARE_TYPE(vorParameterOpenRoot, vorParameter)
public:
    explicit vorParameterOpenRoot(const utString& root_type = utString(), int version = 0);
    /// Copies the tree; the copy's parameters are not locked by the file.
    vorParameterOpenRoot(const vorParameterOpenRoot& other)
        : vorParameterLibRoot(other)
        , m_version(other.m_version) {}

    vorParameter* create_new() const override { return new vorParameterOpenRoot(*this); }
    int version() const override { return m_version; }
    /// A loader that creates the maps, arrays and strings the tree lacks.
    std::unique_ptr<vorParameterLoader> create_loader(int version) override;
    /// The id the file gave the nearest locked parameter at or above `node`.
    vorRefToObjectId get_lock_id_imp(const vorParameter& node) const override;
    /// Locks the parameter at `key` under `id` (what a file's lock id does).
    void lock_with_id(const vorParameterKey& key, const vorUniqueIdPtr& id);

    /// Reads the whole of `in` into a new open root of the file's type and
    /// version, with `serializer`'s settings. `error` receives the result of
    /// the load; the root holds what was loaded, even after an error (an
    /// empty root when the header could not be read). The header is read
    /// first and the body again from the start: a stream that can seek (a
    /// file) is read in place, any other (a pipe) is copied into memory.
    static std::unique_ptr<vorParameterOpenRoot>
    load(std::istream& in, vorParameterSerializer& serializer, vorParameterSerialError& error);

private:
    int m_version;
    std::unordered_map<const vorParameter*, vorRefToObjectId> m_lock_ids;
};

#endif // VORPARAMETER_PERSISTENCE_VORPARAMETEROPENROOT_H
