//===- vorParameterXml.cpp - Parameters rendered as XML -------------------===//
//
// The rendering walks the tree with an explicit stack of open elements, so a
// deep tree costs no machine stack, and writes into one growing buffer. The
// containers whose elements are open are also kept in a set: a reference
// whose referent is one of them would repeat its ancestor without end.
//
//===----------------------------------------------------------------------===//

#include "vorparameter/persistence/vorParameterXml.h"

#include "vorparameter/containers/vorParameterArray.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/parameter/vorParameterData.h"
#include "vorparameter/parameter/vorParameterGuards.h"
#include "vorparameter/parameter/vorParameterMap.h"
#include "vorparameter/parameter/vorParameterRef.h"

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace {

//===----------------------------------------------------------------------===//
// Escaping
//===----------------------------------------------------------------------===//

/// Attribute values must keep tabs and line feeds as references too: parsers
/// turn literal ones into spaces there.
enum class Context { text, attribute };

/// U+FFFD, written in place of what XML cannot hold.
constexpr std::string_view replacement = "\xEF\xBF\xBD";

bool in_range(unsigned byte, unsigned lowest, unsigned highest) {
    return byte >= lowest && byte <= highest;
}

/// The length of the well-formed UTF-8 character at byte `i` of `text`, or 0
/// when the bytes there are malformed: a stray continuation byte, a sequence
/// cut short, an overlong form, a UTF-16 surrogate or a code point past
/// U+10FFFF.
std::size_t utf8_length(std::string_view text, std::size_t i) {
    const auto byte = [&](std::size_t k) -> unsigned {
        return i + k < text.size() ? static_cast<unsigned char>(text[i + k]) : 0u;
    };
    const unsigned lead = byte(0);
    if (lead < 0x80)
        return 1;
    if (in_range(lead, 0xC2, 0xDF))
        return in_range(byte(1), 0x80, 0xBF) ? 2 : 0;
    // The range of the second byte is what rules out overlong forms (E0, F0),
    // surrogates (ED) and code points past U+10FFFF (F4).
    unsigned lowest = 0x80, highest = 0xBF;
    if (lead == 0xE0)
        lowest = 0xA0;
    else if (lead == 0xED)
        highest = 0x9F;
    else if (lead == 0xF0)
        lowest = 0x90;
    else if (lead == 0xF4)
        highest = 0x8F;
    const bool second = in_range(byte(1), lowest, highest);
    if (in_range(lead, 0xE0, 0xEF))
        return second && in_range(byte(2), 0x80, 0xBF) ? 3 : 0;
    if (in_range(lead, 0xF0, 0xF4))
        return second && in_range(byte(2), 0x80, 0xBF) && in_range(byte(3), 0x80, 0xBF) ? 4 : 0;
    return 0;
}

/// The characters that XML 1.0 forbids even as references: the C0 controls
/// other than tab, line feed and carriage return, U+FFFE and U+FFFF.
bool forbidden(std::string_view character) {
    if (character.size() == 1) {
        const unsigned char c = static_cast<unsigned char>(character[0]);
        return c < 0x20 && c != '\t' && c != '\n' && c != '\r';
    }
    return character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF";
}

/// The entity or character reference that stands for `c`, or null when `c`
/// is written as it is.
const char* reference_for(char c, Context context) {
    switch (c) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\'':
        return "&apos;";
    case '\r': // parsers turn a literal one into a line feed
        return "&#13;";
    case '\t':
        return context == Context::attribute ? "&#9;" : nullptr;
    case '\n':
        return context == Context::attribute ? "&#10;" : nullptr;
    default:
        return nullptr;
    }
}

/// True for the printable ASCII characters that need no escaping: most of
/// any text, so they take the shortest path.
bool plain(char c) {
    const unsigned char byte = static_cast<unsigned char>(c);
    return byte >= 0x20 && byte < 0x80 && c != '&' && c != '<' && c != '>' && c != '"' && c != '\'';
}

/// Appends `text` escaped to `out`; false, with `out` cut short, when `out`
/// would grow past `limit` bytes. Runs of characters that need nothing are
/// copied in one piece.
bool append_escaped(std::string& out, std::string_view text, Context context, std::size_t limit) {
    // Escaping never shortens a text.
    if (out.size() + text.size() > limit)
        return false;
    std::size_t run = 0;
    std::size_t i = 0;
    while (i < text.size()) {
        if (plain(text[i])) {
            ++i;
            continue;
        }
        const char* reference = reference_for(text[i], context);
        const std::size_t length = reference ? 1 : utf8_length(text, i);
        const bool replaced = length == 0 || forbidden(text.substr(i, length));
        if (!reference && !replaced) {
            i += length;
            continue;
        }
        out.append(text, run, i - run);
        if (reference)
            out += reference;
        else
            out += replacement;
        i += length == 0 ? 1 : length;
        run = i;
        if (out.size() > limit)
            return false;
    }
    out.append(text, run, text.size() - run);
    return out.size() <= limit;
}

utString escaped(std::string_view text, Context context) {
    std::string out;
    append_escaped(out, text, context, out.max_size());
    return utString(std::move(out));
}

//===----------------------------------------------------------------------===//
// What an element shows of a parameter
//===----------------------------------------------------------------------===//

const vorParameterRef* as_reference(const vorParameter& par) {
    return vorParameterRef::ut_dynamic_cast(&par);
}

/// The tag of a parameter that is not a reference: its kind.
const char* tag_of(const vorParameter& par) {
    if (par.type() != TYPE_ARRAY)
        return vorTypeWord(par.type());
    switch (par.subtype()) {
    case SUB_LIST:
        return "list";
    case SUB_SHARED_LIST:
        return "shared_list";
    case SUB_VECTOR:
        return "vector";
    default:
        return "array";
    }
}

/// The value text, unescaped (see xml_value).
utString value_text(const vorParameter& par) {
    if (as_reference(par))
        return utString();
    switch (par.type()) {
    case TYPE_STRING:
    case TYPE_NUMERIC:
    case TYPE_ENUM:
    case TYPE_FUNCTION:
        return par.get_string();
    case TYPE_ERROR:
        return par.get_expr();
    default:
        return utString();
    }
}

//===----------------------------------------------------------------------===//
// The walk
//===----------------------------------------------------------------------===//

class XmlWriter {
public:
    /// False when the output would pass xml_max_length.
    bool render(const vorParameter& top);
    utString take() { return utString(std::move(m_out)); }

private:
    /// An open element whose content is still being written: the members of
    /// a map or an array, or the referent of a reference.
    struct Frame {
        const char* tag;
        /// Keeps the container (or referent) alive while it is walked.
        vorParameterPtr node;
        const vorParameterMap* map = nullptr;
        vorParameterMap::Members::const_iterator next_member{};
        const vorParameterArray* array = nullptr;
        std::size_t next_element = 0;
        /// The referent still to write, for a reference.
        const vorParameter* referent = nullptr;
    };

    bool full() const { return m_overflow || m_out.size() > xml_max_length; }
    void append_text(std::string_view text, Context context);
    /// Writes the element of `par`, or opens it and pushes its frame.
    void visit(std::string_view name, const vorParameter& par);
    void visit_reference(std::string_view name, const vorParameterRef& ref);
    /// Hands out the frame's next child; false when it has none left.
    bool next_child(Frame& frame, utString& name, const vorParameter*& child);
    void close(const Frame& frame);

    void start_tag(const char* tag, std::string_view name);
    void attribute(const char* key, std::string_view value);
    /// Ends a start tag that is too deep to get content.
    void truncate();
    /// Ends the start tag and pushes a frame for its content.
    void open(Frame frame, const vorParameter* container);

    std::string m_out;
    bool m_overflow = false;
    std::vector<Frame> m_open;
    /// The containers whose elements are open.
    std::unordered_set<const vorParameter*> m_open_containers;
};

bool XmlWriter::render(const vorParameter& top) {
    visit(top.get_name(), top);
    utString name;
    const vorParameter* child = nullptr;
    while (!m_open.empty() && !full()) {
        if (next_child(m_open.back(), name, child)) {
            visit(name, *child);
        } else {
            close(m_open.back());
            m_open.pop_back();
        }
    }
    return !full();
}

void XmlWriter::visit(std::string_view name, const vorParameter& par) {
    if (const vorParameterRef* ref = as_reference(par)) {
        visit_reference(name, *ref);
        return;
    }
    const char* tag = tag_of(par);
    start_tag(tag, name);
    const utString type = par.get_xml_typename();
    if (!type.empty())
        attribute("type", type);
    if (const vorParameterNumeric* number = vorParameterNumeric::ut_dynamic_cast(&par)) {
        const utString dim = number->get_dim().get_string();
        if (!dim.empty())
            attribute("dim", dim);
    }
    if (const vorParameterData* data = vorParameterData::ut_dynamic_cast(&par))
        attribute("datatype", data->get_data_type());
    if (par.type() != TYPE_FUNCTION && par.is_expr())
        attribute("expr", par.get_expr());

    Frame frame{tag, vorParameterPtr::share(const_cast<vorParameter*>(&par))};
    frame.map = vorParameterMap::ut_dynamic_cast(&par);
    frame.array = vorParameterArray::ut_dynamic_cast(&par);
    if (frame.map && frame.map->size() > 0) {
        frame.next_member = frame.map->members().begin();
        open(std::move(frame), &par);
        return;
    }
    if (frame.array && frame.array->size() > 0) {
        open(std::move(frame), &par);
        return;
    }
    const utString value = value_text(par);
    if (value.empty()) {
        m_out += "/>";
        return;
    }
    m_out += '>';
    append_text(value, Context::text);
    m_out += "</";
    m_out += tag;
    m_out += '>';
}

void XmlWriter::visit_reference(std::string_view name, const vorParameterRef& ref) {
    start_tag("ref", name);
    attribute("target", ref.get_ref_string());
    if (!vorParameterNoRefExpand::expand()) {
        m_out += "/>";
        return;
    }
    const vorParameter* referent = ref.get_ref();
    if (m_open_containers.count(referent)) {
        attribute("cycle", "true");
        m_out += "/>";
        return;
    }
    Frame frame{"ref", vorParameterPtr::share(const_cast<vorParameter*>(referent))};
    frame.referent = referent;
    open(std::move(frame), nullptr);
}

bool XmlWriter::next_child(Frame& frame, utString& name, const vorParameter*& child) {
    if (frame.referent) {
        child = frame.referent;
        name = child->get_name();
        frame.referent = nullptr;
        return true;
    }
    if (frame.map && frame.next_member != frame.map->members().end()) {
        name = frame.next_member->first.str();
        child = frame.next_member->second.get();
        ++frame.next_member;
        return true;
    }
    if (frame.array && frame.next_element < frame.array->elements().size()) {
        child = frame.array->elements()[frame.next_element++].get();
        name = child->get_name();
        return true;
    }
    return false;
}

void XmlWriter::close(const Frame& frame) {
    if (frame.map || frame.array)
        m_open_containers.erase(frame.node.get());
    m_out += "\n</";
    m_out += frame.tag;
    m_out += '>';
}

void XmlWriter::start_tag(const char* tag, std::string_view name) {
    if (!m_out.empty())
        m_out += '\n';
    m_out += '<';
    m_out += tag;
    if (!name.empty())
        attribute("name", name);
}

void XmlWriter::attribute(const char* key, std::string_view value) {
    m_out += ' ';
    m_out += key;
    m_out += "=\"";
    append_text(value, Context::attribute);
    m_out += '"';
}

void XmlWriter::append_text(std::string_view text, Context context) {
    if (!append_escaped(m_out, text, context, xml_max_length))
        m_overflow = true;
}

void XmlWriter::truncate() {
    attribute("truncated", "true");
    m_out += "/>";
}

void XmlWriter::open(Frame frame, const vorParameter* container) {
    if (m_open.size() >= static_cast<std::size_t>(vorParameter::max_tree_depth)) {
        truncate();
        return;
    }
    m_out += '>';
    if (container)
        m_open_containers.insert(container);
    m_open.push_back(std::move(frame));
}

} // namespace

utString xml_name(const vorParameter& par) {
    return escaped(par.get_name(), Context::attribute);
}

utString xml_value(const vorParameter& par) {
    return escaped(value_text(par), Context::text);
}

std::optional<utString> to_xml(const vorParameter& par) {
    XmlWriter writer;
    if (!writer.render(par))
        return std::nullopt;
    return writer.take();
}
