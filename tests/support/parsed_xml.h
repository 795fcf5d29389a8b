// Reads what the library writes as XML with libxml2, strictly (no recovery),
// so that a test fails on anything a real parser would refuse.
#ifndef VORPARAMETER_TESTS_PARSED_XML_H
#define VORPARAMETER_TESTS_PARSED_XML_H

#include <libxml/parser.h>
#include <libxml/tree.h>

#include "prelude.h"

class ParsedXml {
public:
    /// Deep documents are allowed: the library nests up to 1000 containers.
    explicit ParsedXml(const std::string& text)
        : m_doc(xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, "UTF-8",
                              XML_PARSE_NONET | XML_PARSE_HUGE)) {}
    ~ParsedXml() { xmlFreeDoc(m_doc); }
    ParsedXml(const ParsedXml&) = delete;
    ParsedXml& operator=(const ParsedXml&) = delete;

    /// The document element; null when the text is not well-formed.
    xmlNode* root() const { return m_doc ? xmlDocGetRootElement(m_doc) : nullptr; }

private:
    xmlDoc* m_doc;
};

inline std::string xml_tag(const xmlNode* element) {
    return reinterpret_cast<const char*>(element->name);
}

/// The attribute's value as the parser reads it; "" when it is absent.
inline std::string xml_attribute(xmlNode* element, const char* name) {
    xmlChar* value = xmlGetProp(element, reinterpret_cast<const xmlChar*>(name));
    std::string text = value ? reinterpret_cast<const char*>(value) : "";
    xmlFree(value);
    return text;
}

/// The character data of an element, references resolved.
inline std::string xml_text(xmlNode* element) {
    xmlChar* value = xmlNodeGetContent(element);
    std::string text = value ? reinterpret_cast<const char*>(value) : "";
    xmlFree(value);
    return text;
}

inline std::vector<xmlNode*> xml_children(xmlNode* element) {
    std::vector<xmlNode*> children;
    for (xmlNode* child = element->children; child; child = child->next)
        if (child->type == XML_ELEMENT_NODE)
            children.push_back(child);
    return children;
}

#endif // VORPARAMETER_TESTS_PARSED_XML_H
