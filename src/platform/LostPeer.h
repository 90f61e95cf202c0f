#pragma once

#include <QtGlobal>

namespace platform {

/// Lets the system notice when the other end of a TCP connection is gone without a word: an
/// idle connection then fails after about two minutes.
void noticeLostPeer(qintptr socket);

} // namespace platform
