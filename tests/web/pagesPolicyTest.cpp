#include "support/ToolTest.h"
#include "web/clsWebSite.h"
#include "web/pages/PageText.h"

#include <map>
#include <set>

/// What the expression's first group matches.
static QStringList matches(const QString &page, const char *expression)
{
    const QRegularExpression pattern(QString::fromLatin1(expression),
                                     QRegularExpression::DotMatchesEverythingOption);
    QStringList found;
    for (auto match = pattern.globalMatch(page); match.hasNext();) {
        found.append(match.next().captured(1));
    }
    return found;
}

static QString hashOf(const QString &text)
{
    const QByteArray hash =
        QCryptographicHash::hash(text.toLatin1(), QCryptographicHash::Sha256).toBase64();
    return QStringLiteral("'sha256-%1'").arg(QString::fromLatin1(hash));
}

using pagesPolicyTest = ToolTest;

TEST_F(pagesPolicyTest, AllowsWhatThePagesHoldAndNothingElse)
{
    startIdle();
    std::map<QString, QString> pages{{u"1000"_s, page::text(1000)}, {u"1001"_s, page::text(1001)}};
    root->WebSite()->RefreshAllPages();
    for (const auto &[key, page] : root->WebSite()->Pages()) {
        pages[key] = QString::fromLatin1(page->HTML({}));
    }
    std::set<QString> allowed;
    std::set<QString> held;
    for (const auto &[key, page] : pages) {
        const QString policy =
            matches(page, "Content-Security-Policy\" content=\"([^\"]*)").value(0);
        for (const auto &[directive, expression] :
             {std::pair("style-src", "<style>(.*?)</style>"),
              std::pair("script-src", "<script>(.*?)</script>"),
              std::pair("script-src", "<[^>]* on[a-z]+=\"([^\"]*)\"")}) {
            const QString sources = policy.section(QLatin1String(directive), 1).section(u';', 0, 0);
            for (const QString &text : matches(page, expression)) {
                EXPECT_TRUE(sources.contains(hashOf(text))) << qPrintable(key + u": "_s + text);
                held.insert(hashOf(text));
            }
        }
        const QStringList hashes = matches(policy, "('sha256-[^']*')");
        allowed.insert(hashes.begin(), hashes.end());
        EXPECT_FALSE(policy.contains(u"unsafe-inline"_s)) << qPrintable(key);
    }
    EXPECT_EQ(allowed, held); // none left over from a text that has changed
}
