#pragma once

#include <QtGlobal>

namespace platform {

/// Lets the system notice when the other end of a connection is gone without a word, for those that
/// a listening socket accepts from now on: an idle one then fails after about two minutes.
void noticeLostPeer(qintptr listener);

} // namespace platform
