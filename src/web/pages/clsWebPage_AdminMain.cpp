#include "web/pages/clsWebPage_AdminMain.h"

#include "web/pages/PageText.h"

QString clsWebPage_AdminMain::build() const
{
    return page::adminFrame() + page::text(3001);
}
