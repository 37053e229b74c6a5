#include "online/XmlAnswer.h"

#include <libxml/parser.h>
#include <libxml/xpath.h>

#include <memory>
#include <mutex>

namespace xmlanswer {
namespace {

xmlParserInputPtr refuseExternal(const char*, const char*, xmlParserCtxtPtr)
{
    return nullptr;
}

void quiet(void*, const char*, ...) {}

void initialiseOnce()
{
    static std::once_flag once;
    std::call_once(once, [] {
        xmlInitParser();
        xmlSetExternalEntityLoader(refuseExternal);
        xmlSetGenericErrorFunc(nullptr, quiet);
    });
}

struct DocFree {
    void operator()(xmlDoc* doc) const { xmlFreeDoc(doc); }
};
struct ContextFree {
    void operator()(xmlXPathContext* c) const { xmlXPathFreeContext(c); }
};
struct ObjectFree {
    void operator()(xmlXPathObject* o) const { xmlXPathFreeObject(o); }
};

} // namespace

QList<Element> select(const QByteArray& xml, const char* xpath, QString* error)
{
    auto fail = [error](const char* reason) {
        if (error)
            *error = QString::fromLatin1(reason);
        return QList<Element>();
    };
    if (xml.size() > kMaxXmlSize)
        return fail("the answer is too large");
    // The server never declares entities; a document that does is refused before parsing, so
    // no expansion can blow up.
    if (xml.contains("<!ENTITY"))
        return fail("the answer declares entities");
    initialiseOnce();
    std::unique_ptr<xmlDoc, DocFree> doc(
        xmlReadMemory(xml.constData(), int(xml.size()), "answer.xml", nullptr,
                      XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
    if (!doc)
        return fail("the answer is not well-formed XML");
    std::unique_ptr<xmlXPathContext, ContextFree> context(xmlXPathNewContext(doc.get()));
    if (!context)
        return fail("out of memory");
    std::unique_ptr<xmlXPathObject, ObjectFree> nodes(
        xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(xpath), context.get()));
    QList<Element> elements;
    if (!nodes || !nodes->nodesetval)
        return elements;
    for (int i = 0; i < nodes->nodesetval->nodeNr; ++i) {
        const xmlNode* node = nodes->nodesetval->nodeTab[i];
        if (!node || node->type != XML_ELEMENT_NODE)
            continue;
        Element element;
        for (const xmlAttr* attr = node->properties; attr; attr = attr->next) {
            xmlChar* value = xmlNodeListGetString(doc.get(), attr->children, 1);
            element.attributes.insert(
                QString::fromUtf8(reinterpret_cast<const char*>(attr->name)),
                QString::fromUtf8(value ? reinterpret_cast<const char*>(value) : ""));
            xmlFree(value);
        }
        elements.append(element);
    }
    return elements;
}

} // namespace xmlanswer
