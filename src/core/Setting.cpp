#include "core/Setting.h"

#include "core/basMain.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"

void SettingBase::noteStored()
{
    if (clsOptions *const options = gRoot->Options()) {
        options->saveSoon();
    }
}

void SettingBase::noteLet() const
{
    if (const clsOptions *const options = gRoot->Options()) {
        options->notify(*this);
    }
}
