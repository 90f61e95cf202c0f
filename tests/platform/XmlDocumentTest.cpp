#include "platform/XmlDocument.h"

#include <gtest/gtest.h>

using platform::XmlDocument;

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
