#include "platform/XmlDocument.h"

#include <QByteArrayList>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <libxml/c14n.h>
#include <libxml/parser.h>
#include <memory>

using platform::XmlDocument;

// NOLINTNEXTLINE(cert-dcl50-cpp): so libxml2 calls it
static void beSilent(void * /*context*/, const char * /*message*/, ...) {}

/// What the document says, whatever its encoding. Empty for one that is not well-formed.
static QByteArray tree(const QByteArray &bytes)
{
    const std::unique_ptr<xmlDoc, void (*)(xmlDoc *)> document(
        xmlReadMemory(bytes.constData(), static_cast<int>(bytes.size()), nullptr, nullptr,
                      XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
        xmlFreeDoc);
    xmlChar *text = nullptr;
    const int length =
        xmlC14NDocDumpMemory(document.get(), nullptr, XML_C14N_1_0, nullptr, 1, &text);
    QByteArray result(reinterpret_cast<const char *>(text), qMax(length, 0));
    xmlFree(text);
    return result;
}

/// Documents of any content and in any encoding: one that is read and written is the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    xmlSetGenericErrorFunc(nullptr, beSilent);
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    QByteArrayList documents{bytes};
    for (const char *encoding : {"windows-1252", "CP1252", "ISO-8859-1", "US-ASCII", "UTF-8",
                                 "ISO-8859-15", "windows-1251", "Shift_JIS", "GB18030"}) {
        documents.append(QByteArray(R"(<?xml version="1.0" encoding=")") + encoding + "\"?>" +
                         bytes);
    }
    for (const QByteArray &document : documents) {
        if (auto read = XmlDocument::parse(document)) {
            const QByteArray written = read->toBytes();
            if (!XmlDocument::parse(written) || tree(written) != tree(document)) {
                std::abort();
            }
        }
    }
    return 0;
}
