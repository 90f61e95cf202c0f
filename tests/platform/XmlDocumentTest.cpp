#include "platform/XmlDocument.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using platform::XmlDocument;

TEST(XmlDocument, WritesAFileInTheFormInWhichItWasRead)
{
    for (const QByteArray form :
         {"<a>\xC3\xBC</a>\n", "<?xml version=\"1.0\"?>\n<a>\xC3\xBC</a>\n",
          "<?xml version=\"1.0\" standalone=\"yes\"?>\r\n<a>\r\n</a>\r\n", "\xEF\xBB\xBF<a/>\n",
          "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<a/>\n"}) {
        EXPECT_EQ(XmlDocument::parse(form)->toBytes(), form);
    }
    EXPECT_EQ(XmlDocument::parse("<a>\r\n\n</a>")->toBytes(), "<a>\n\n</a>\n");
    const QString wide = u"\uFEFF<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<a>\u0A0D\n</a>\n"_s;
    const QByteArray bytes(reinterpret_cast<const char *>(wide.utf16()), wide.size() * 2);
    EXPECT_EQ(XmlDocument::parse(bytes)->toBytes(), bytes);
}

TEST(XmlDocument, RefusesWhatIsNotWellFormedAndEntitiesOfItsOwn)
{
    QByteArray bomb = "<!DOCTYPE a [<!ENTITY e0 \"ha\">";
    for (int level = 1; level < 40; ++level) {
        const QByteArray inner = "&e" + QByteArray::number(level - 1) + ";";
        bomb += "<!ENTITY e" + QByteArray::number(level) + " \"" + inner + inner + "\">";
    }
    bomb += "]><a>&e39;</a>";
    for (const char *text :
         {"", "<a>", "<a></b>", "<a/><b/>", "<a>\xFC</a>", "<a x=1/>", bomb.constData(),
          "<!DOCTYPE a [<!ENTITY f SYSTEM \"/etc/hostname\">]><a>&f;</a>"}) {
        EXPECT_FALSE(XmlDocument::parse(text)) << text;
    }
    EXPECT_TRUE(XmlDocument::parse("<!DOCTYPE a SYSTEM \"http://nowhere.invalid/a.dtd\"><a/>"));
}
