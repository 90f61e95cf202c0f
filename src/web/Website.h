#pragma once

#include "core/basTraps.h"

/// The web site as records name it.
inline constexpr Module Website{"Website", "Root Object"};
