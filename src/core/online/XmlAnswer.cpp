#include "core/online/XmlAnswer.h"

#include <libxml/parser.h>
#include <libxml/xpath.h>

#include <QStringDecoder>

#include <memory>
#include <mutex>
#include <optional>

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

// A document type of any kind is refused when the parser meets it, before its internal
// subset is read: the server never sends one, and entity declarations live only there. The
// parser decides, so the refusal holds whatever the document's encoding.
struct Refusal {
    bool declared = false;
};

void refuse(void* ctx)
{
    auto* parser = static_cast<xmlParserCtxtPtr>(ctx);
    if (auto* refusal = static_cast<Refusal*>(parser->_private))
        refusal->declared = true;
    xmlStopParser(parser);
}

void refuseSubset(void* ctx, const xmlChar*, const xmlChar*, const xmlChar*)
{
    refuse(ctx);
}

void refuseEntity(void* ctx, const xmlChar*, int, const xmlChar*, const xmlChar*, xmlChar*)
{
    refuse(ctx);
}

// libxml2 misreads UTF-32 other than big-endian without a byte-order mark, so UTF-32 answers
// (told by their mark or by the zero bytes around the first "<") are given to it as UTF-8.
// nullopt: not UTF-32; an empty array: UTF-32 that does not decode.
std::optional<QByteArray> utf32AsUtf8(const QByteArray& xml)
{
    if (xml.size() < 4)
        return std::nullopt;
    const auto* b = reinterpret_cast<const unsigned char*>(xml.constData());
    std::optional<QStringConverter::Encoding> encoding;
    if ((b[0] == 0 && b[1] == 0 && b[2] == 0xFE && b[3] == 0xFF) ||
        (b[0] == 0 && b[1] == 0 && b[2] == 0 && b[3] == '<'))
        encoding = QStringConverter::Utf32BE;
    else if ((b[0] == 0xFF && b[1] == 0xFE && b[2] == 0 && b[3] == 0) ||
             (b[0] == '<' && b[1] == 0 && b[2] == 0 && b[3] == 0))
        encoding = QStringConverter::Utf32LE;
    if (!encoding)
        return std::nullopt;
    QStringDecoder decoder(*encoding);
    const QString text = decoder.decode(xml);
    if (decoder.hasError())
        return QByteArray();
    return text.toUtf8();
}

struct ParserFree {
    void operator()(xmlParserCtxt* c) const { xmlFreeParserCtxt(c); }
};
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
    initialiseOnce();
    std::unique_ptr<xmlParserCtxt, ParserFree> parser(xmlNewParserCtxt());
    if (!parser || !parser->sax)
        return fail("out of memory");
    Refusal refusal;
    parser->_private = &refusal;
    parser->sax->internalSubset = refuseSubset;
    parser->sax->externalSubset = refuseSubset;
    parser->sax->entityDecl = refuseEntity;
    // No XML_PARSE_NOENT, DTDLOAD, DTDATTR or DTDVALID: nothing is substituted or loaded.
    int options = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
    const std::optional<QByteArray> utf8 = utf32AsUtf8(xml);
    if (utf8)
        options |= XML_PARSE_IGNORE_ENC; // the declaration still names UTF-32
    const QByteArray& text = utf8 ? *utf8 : xml;
    std::unique_ptr<xmlDoc, DocFree> doc(xmlCtxtReadMemory(parser.get(), text.constData(),
                                                           int(text.size()), "answer.xml",
                                                           utf8 ? "UTF-8" : nullptr, options));
    const bool stopped = parser->errNo == XML_ERR_USER_STOP; // only refuse() stops it
    if (refusal.declared || stopped || (doc && (doc->intSubset || doc->extSubset)))
        return fail("the answer declares a document type");
    if (!doc || !parser->wellFormed)
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
