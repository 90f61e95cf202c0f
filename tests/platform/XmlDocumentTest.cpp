#include "platform/XmlDocument.h"

#include <gtest/gtest.h>

using platform::XmlDocument;

TEST(XmlDocument, FindsTheFirstElementOfAName)
{
    auto document = XmlDocument::parse(
        "<a><!-- <x>no</x> --><b><x>one <i>and</i> <![CDATA[<two>]]></x></b><x>three</x></a>");
    ASSERT_TRUE(document);
    EXPECT_EQ(document->findFirst("x")->text(), QStringLiteral("one and <two>"));
    EXPECT_FALSE(document->findFirst("X"));
    document->findFirst("x")->setText(QStringLiteral("&lt; is <"));
    EXPECT_EQ(document->findFirst("x")->text(), QStringLiteral("&lt; is <"));
    EXPECT_FALSE(document->findFirst("i"));
}

TEST(XmlDocument, RefusesWhatIsNotWellFormedAndEntitiesOfItsOwn)
{
    QByteArray bomb = "<!DOCTYPE a [<!ENTITY e0 \"ha\">";
    for (int level = 1; level < 40; ++level) {
        const QByteArray inner = "&e" + QByteArray::number(level - 1) + ";";
        bomb += "<!ENTITY e" + QByteArray::number(level) + " \"" + inner + inner + "\">";
    }
    for (const QByteArray &text :
         {QByteArray(""), QByteArray("<a>"), QByteArray("<a></b>"), QByteArray("<a/><b/>"),
          QByteArray("<a>\xFC</a>"), QByteArray("<a x=1/>"), bomb + "]><a>&e39;</a>",
          QByteArray("<!DOCTYPE a [<!ENTITY f SYSTEM \"/etc/hostname\">]><a>&f;</a>")}) {
        EXPECT_FALSE(XmlDocument::parse(text)) << text.left(60).constData();
    }
    EXPECT_TRUE(XmlDocument::parse("<!DOCTYPE a SYSTEM \"http://nowhere.invalid/a.dtd\"><a/>"));
}
