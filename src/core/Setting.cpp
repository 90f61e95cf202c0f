#include "core/Setting.h"

#include "core/basMain.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"

void RefreshPages(const char *pages)
{
    if (pages != NoPage) {
        gRoot->RefreshPages(QString::fromLatin1(pages));
    }
}

void NoteChangedSetting()
{
    if (clsOptions *const options = gRoot->Options()) {
        options->SaveSoon();
    }
}
