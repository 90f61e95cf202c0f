#pragma once

#include <libxml/parser.h>
#include <memory>

namespace platform {

/// What strict reading asks of the XML library: no network, no messages of its own, and no limit,
/// without which a log of more than 10 MB could not be read.
constexpr int XmlParserOptions =
    XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;

using XmlParser = std::unique_ptr<xmlParserCtxt, void (*)(xmlParserCtxt *)>;

/// A parser that knows our code page and refuses entities of a document's own. Only for the sources
/// that use the XML library.
XmlParser newXmlParser();
/// The same for who handles the parser's events himself.
void refuseEntities(xmlSAXHandler &handler);

} // namespace platform
