#pragma once

#include "core/basMain.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"
#include "ui/SettingControl.h"

#include <type_traits>

/// A setting of the options object that exists when it is asked, not of the one that exists now.
template <typename Member>
auto bound(Member clsOptions::*setting)
{
    using Type = std::decay_t<std::invoke_result_t<Member>>;
    return SettingValue<Type>{
        [setting] { return (gRoot->Options()->*setting)(); },
        [setting](const Type &value) { (gRoot->Options()->*setting).Let(value); }};
}
