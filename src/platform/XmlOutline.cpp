#include "platform/XmlOutline.h"

#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/XmlParser.h"

#include <QFile>

#include <cstring>

namespace platform {

namespace {

class Look
{
public:
    Look(QFile &file, const char *name) : m_file(file), m_name(name)
    {
        *m_parser->sax = {};
        m_parser->sax->initialized = XML_SAX2_MAGIC;
        m_parser->sax->startElementNs = begins;
        m_parser->sax->endElementNs = ends;
        refuseEntities(*m_parser->sax);
        m_parser->_private = this;
    }

    XmlOutline run()
    {
        // A document type makes the library begin a document even where no tree is built.
        xmlFreeDoc(
            xmlCtxtReadIO(m_parser.get(), read, nullptr, this, nullptr, nullptr, XmlParserOptions));
        // A NUL behind the root counts as the end for the library.
        m_outline.wellFormed =
            m_parser->wellFormed != 0 && (!m_outline.inUtf8 || position() == m_file.size());
        return m_outline;
    }

private:
    static Look &of(void *parser)
    {
        return *static_cast<Look *>(static_cast<xmlParserCtxt *>(parser)->_private);
    }

    static int read(void *look, char *buffer, int length)
    {
        auto &self = *static_cast<Look *>(look);
        const qint64 count = self.m_file.read(buffer, length);
        self.m_taken += count;
        return static_cast<int>(count);
    }

    static void begins(void *parser, const xmlChar *name, const xmlChar * /*prefix*/,
                       const xmlChar *space, int /*spaceCount*/, const xmlChar ** /*spaces*/,
                       int /*attributeCount*/, int /*defaultedCount*/,
                       const xmlChar ** /*attributes*/)
    {
        Look &self = of(parser);
        ++self.m_depth;
        if (!self.m_outline.found && space == nullptr &&
            std::strcmp(reinterpret_cast<const char *>(name), self.m_name) == 0) {
            self.m_outline.found = true;
            self.m_outline.isRoot = self.m_depth == 1;
            self.m_outline.inUtf8 = self.m_parser->input->buf->encoder == nullptr;
            self.m_foundDepth = self.m_depth;
        }
    }

    static void ends(void *parser, const xmlChar * /*name*/, const xmlChar * /*prefix*/,
                     const xmlChar * /*space*/)
    {
        Look &self = of(parser);
        if (self.m_depth == self.m_foundDepth + 1) {
            self.m_outline.lastChildEnd = self.position();
            ++self.m_outline.children;
        } else if (self.m_depth == self.m_foundDepth) {
            self.m_outline.end = self.position();
            self.m_foundDepth = Elsewhere;
        }
        --self.m_depth;
    }

    /// What was taken from the file, without what the parser has not come to yet.
    qint64 position() const { return m_taken - (m_parser->input->end - m_parser->input->cur); }

    /// A depth that no element has, nor its children.
    static constexpr int Elsewhere = -1;

    QFile &m_file;
    const char *m_name;
    XmlParser m_parser = newXmlParser();
    XmlOutline m_outline;
    qint64 m_taken = 0;
    int m_depth = 0;
    int m_foundDepth = Elsewhere; ///< of the element, while it is open
};

} // namespace

XmlOutline outlineXml(const QString &path, const char *name)
{
    QFile file(path);
    XmlOutline result;
    if (file.open(QIODevice::ReadOnly)) {
        result = Look(file, name).run();
    }
    if (file.error() != QFileDevice::NoError) {
        throw fileFailure(file);
    }
    return result;
}

} // namespace platform
