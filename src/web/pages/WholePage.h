#pragma once

#include "platform/CodePage.h"
#include "web/pages/iWebPage.h"

/// A page whose whole text is as old as its last refresh.
class WholePage : public iWebPage
{
public:
    QByteArray HTML(const QString & /*message*/) override { return m_text; }
    void Refresh() override { m_text = platform::toCodePage(build()); }

private:
    virtual QString build() const = 0;

    QByteArray m_text;
};
