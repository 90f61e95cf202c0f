#include "web/pages/UpdatePage.h"

#include "platform/CodePage.h"
#include "web/pages/PageText.h"

template <int Head, int Closing>
QByteArray UpdatePage<Head, Closing>::HTML(const QString &message)
{
    return m_head + platform::toCodePage(message + page::text(Closing));
}

template <int Head, int Closing>
void UpdatePage<Head, Closing>::Refresh()
{
    m_head = platform::toCodePage(page::adminFrame() + page::text(Head));
}

template class UpdatePage<3150, 3151>;
template class UpdatePage<3250, 3251>;
template class UpdatePage<3350, 3351>;
template class UpdatePage<3450, 3451>;
template class UpdatePage<3550, 3551>;
