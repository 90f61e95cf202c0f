#include "platform/XmlParser.h"

#include "platform/XmlCodePage.h"

#include <new>

namespace platform {

namespace {

/// Entities of a document's own can make a small file expand without bound.
void refuseEntity(void *parser, const xmlChar * /*name*/, int /*type*/,
                  const xmlChar * /*publicId*/, const xmlChar * /*systemId*/, xmlChar * /*content*/)
{
    auto *context = static_cast<xmlParserCtxt *>(parser);
    context->wellFormed = 0;
    xmlStopParser(context);
}

} // namespace

XmlParser newXmlParser()
{
    registerXmlCodePage();
    XmlParser parser(xmlNewParserCtxt(), xmlFreeParserCtxt);
    if (!parser) {
        throw std::bad_alloc();
    }
    refuseEntities(*parser->sax);
    return parser;
}

void refuseEntities(xmlSAXHandler &handler)
{
    handler.entityDecl = refuseEntity;
}

} // namespace platform
