//===- vorParameterXml.h - Parameters rendered as XML -----------*- C++ -*-===//
//
// Renders a parameter, with everything below it, as one XML element: an
// element per parameter whose tag tells its kind, its name and type word
// (get_xml_typename) as attributes, its value as text, and the members of
// maps and arrays as nested elements, in order. docs/xml.md describes every
// element and attribute with examples.
//
//   <map name="tool" type="map">
//   <number name="diameter" type="real" dim="[L]">6</number>
//   <string name="name" type="string">End mill 6mm</string>
//   </map>
//
// The output is always well-formed XML 1.0 in UTF-8, whatever the names and
// values hold: names go in attributes, never in tags; "<", "&", ">", '"'
// and "'" are written as entities; a carriage return (and in attributes a
// tab or line feed) as a character reference, so that parsers keep it; a
// character that XML 1.0 forbids (the control characters other than tab,
// line feed and carriage return, U+FFFE and U+FFFF) and every byte that is
// not part of well-formed UTF-8 become U+FFFD, the replacement character.
//
// References are expanded: a "ref" element holds the element of its
// referent, unless a vorParameterNoRefExpand guard is alive, or the referent
// is a container already being rendered (a cycle of references), which gives
// an empty "ref" element marked cycle="true". Elements are one per line,
// without indentation, so the size of the output is linear in the size of
// the tree; `xmllint --format` indents it for reading.
//
// Limits: containers nest at most vorParameter::max_tree_depth deep; a
// container below that is written without its members and marked
// truncated="true". A rendering longer than xml_max_length (what references
// expanded many times over can produce) is refused as a whole. The walk is
// iterative and costs time linear in its output. The tree must not change
// while it is rendered (from an on-read callback, say).
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PERSISTENCE_VORPARAMETERXML_H
#define VORPARAMETER_PERSISTENCE_VORPARAMETERXML_H

#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/parameter/vorParameter.h"

#include <cstddef>
#include <optional>

/// The longest rendering, in bytes: the longest text that evaluation builds
/// (64 MiB), so that "to_xml" can always return it as a string.
inline constexpr std::size_t xml_max_length = vorParameterString::max_text_length;

/// The name of `par` as its element writes it in the "name" attribute: its
/// own name, escaped for an attribute value.
VOR_API utString xml_name(const vorParameter& par);

/// The value of `par` as its element writes it between its tags, escaped
/// for character data: the value text of a number, string or enumeration
/// (evaluated, for an expression), the body of a function, the message of an
/// error; empty for maps, arrays, references and data, whose content, if
/// any, is elements.
VOR_API utString xml_value(const vorParameter& par);

/// `par` and everything below it as one XML element, without an XML
/// declaration (the text is UTF-8, the default encoding). Empty (no value)
/// when the rendering would pass xml_max_length.
VOR_API std::optional<utString> to_xml(const vorParameter& par);

#endif // VORPARAMETER_PERSISTENCE_VORPARAMETERXML_H
